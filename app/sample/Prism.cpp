#include "app/sample/Prism.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <set>

#include "app/sample/Triangulation.h"

namespace zrsheet {
namespace {

using Edge = std::pair<Point2, Point2>;

void Quad(SolidMesh& mesh, const Point3& a, const Point3& b, const Point3& c, const Point3& d) {
    mesh.Triangle(a, b, c);
    mesh.Triangle(a, c, d);
}

void AddWalls(SolidMesh& mesh, const Station& low, const Station& high) {
    for (std::size_t k = 0; k < low.region.size(); ++k) {
        const Contour& below = low.region[k];
        const Contour& above = high.region[k];
        for (std::size_t i = 0; i < below.size(); ++i) {
            const std::size_t j = (i + 1) % below.size();
            Quad(mesh, {below[i][0], below[i][1], low.z}, {below[j][0], below[j][1], low.z},
                 {above[j][0], above[j][1], high.z}, {above[i][0], above[i][1], high.z});
        }
    }
}

void ForEachEdge(const Region& region, auto&& use) {
    for (const Contour& contour : region) {
        for (std::size_t i = 0; i < contour.size(); ++i) use(contour[i], contour[(i + 1) % contour.size()]);
    }
}

// The boundary of what lies in `outer` and not in `inner`: both boundaries, the inner one backwards, without
// the edges that they have in common.
std::map<Point2, Point2> BoundaryOfDifference(const Region& outer, const Region& inner) {
    std::set<Edge> edges;
    ForEachEdge(outer, [&](const Point2& a, const Point2& b) { edges.emplace(a, b); });
    ForEachEdge(inner, [&](const Point2& a, const Point2& b) {
        if (edges.erase({a, b}) == 0) edges.emplace(b, a);
    });
    return {edges.begin(), edges.end()};
}

Region Chain(std::map<Point2, Point2> next) {
    Region contours;
    while (!next.empty()) {
        Contour contour;
        for (auto step = next.begin(); step != next.end(); step = next.find(contour.back())) {
            if (contour.empty()) contour.push_back(step->first);
            contour.push_back(step->second);
            next.erase(step);
        }
        contour.pop_back();  // the start again
        contours.push_back(std::move(contour));
    }
    return contours;
}

// Each outline with the holes in it; of outlines inside one another, a hole belongs to the innermost.
std::vector<Region> Sort(const Region& contours) {
    std::vector<Region> regions;
    for (const Contour& contour : contours) {
        if (DoubleArea(contour) > 0) regions.push_back({contour});
    }
    std::ranges::sort(regions, {}, [](const Region& region) { return DoubleArea(region.front()); });
    for (const Contour& contour : contours) {
        if (DoubleArea(contour) > 0) continue;
        const auto around = std::ranges::find_if(
            regions, [&](const Region& region) { return IsInside(region.front(), contour.front()); });
        if (around != regions.end()) around->push_back(contour);
    }
    return regions;
}

void AddFace(SolidMesh& mesh, const Region& outer, const Region& inner, double z, bool facesUp) {
    for (const Region& region : Sort(Chain(BoundaryOfDifference(outer, inner)))) {
        for (const auto& [a, b, c] : Triangulate(region)) {
            const Point3 last{c[0], c[1], z};
            const Point3 middle{b[0], b[1], z};
            mesh.Triangle({a[0], a[1], z}, facesUp ? middle : last, facesUp ? last : middle);
        }
    }
}

double Area(const Region& region) {
    double area = 0;
    for (const Contour& contour : region) area += DoubleArea(contour);
    return area;
}

}  // namespace

SolidMesh BuildPrism(const std::vector<Station>& stations) {
    SolidMesh mesh;
    AddFace(mesh, stations.front().region, {}, stations.front().z, false);
    for (std::size_t i = 1; i < stations.size(); ++i) {
        const Station& low = stations[i - 1];
        const Station& high = stations[i];
        if (low.z < high.z) {
            AddWalls(mesh, low, high);
        } else if (Area(low.region) > Area(high.region)) {
            AddFace(mesh, low.region, high.region, low.z, true);
        } else {
            AddFace(mesh, high.region, low.region, low.z, false);
        }
    }
    AddFace(mesh, stations.back().region, {}, stations.back().z, true);
    return mesh;
}

SolidMesh Revolve(const Contour& profile, int steps) {
    SolidMesh mesh;
    const auto at = [&](const Point2& point, int step) {
        const double angle = 2 * std::numbers::pi * (step % steps) / steps;
        return Point3{point[0] * std::cos(angle), point[0] * std::sin(angle), point[1]};
    };
    for (int step = 0; step < steps; ++step) {
        for (std::size_t i = 0; i < profile.size(); ++i) {
            const Point2& a = profile[i];
            const Point2& b = profile[(i + 1) % profile.size()];
            if (a[0] == 0 && b[0] == 0) continue;  // along the axis
            Quad(mesh, at(a, step), at(a, step + 1), at(b, step + 1), at(b, step));
        }
    }
    return mesh;
}

}  // namespace zrsheet
