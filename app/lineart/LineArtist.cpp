#include "app/lineart/LineArtist.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

#include "app/lineart/AreaMap.h"
#include "app/lineart/Crossings.h"
#include "app/lineart/CurveSight.h"
#include "app/lineart/LineMerge.h"
#include "app/lineart/PartRaster.h"
#include "app/lineart/TriangleTree.h"
#include "app/render/ParallelFor.h"

namespace zrsheet {
namespace {

// Shares of the first part's size to which the second may be elsewhere.
constexpr double kGrain = 1e-6;
// Share of the scene's size: surfaces nearer to each other coincide.
constexpr double kCoincident = 4e-6;
constexpr int kSamples = 2;  // of areas, per pixel and axis

using Layout = std::array<std::int64_t, 12>;

/// How the second part stands to the first. Of a product that is there many times, what its parts have in
/// common needs finding once.
Layout LayoutOf(const PlacedMesh& a, const PlacedMesh& b) {
    const dg::DMat44 toFirst = b.ToWorld() * a.ToWorld().Invert();
    const double unit = kGrain * std::max(a.Mesh().Size(), 1e-300);
    Layout layout{};
    for (std::size_t i = 0; i < layout.size(); ++i) {
        const double reach = i < 9 ? b.Mesh().Size() : 1.0;
        layout[i] = std::llround(toFirst(i / 3, i % 3) * reach / unit);
    }
    return layout;
}

std::vector<Curve> Moved(std::vector<Curve> curves, const dg::DMat44& move) {
    for (Curve& curve : curves) {
        for (CurvePoint& point : curve.points) point.place = point.drawn = point.place * move;
    }
    return curves;
}

template <class T>
std::vector<T> Flattened(std::vector<std::vector<T>> lists) {
    std::vector<T> all;
    for (std::vector<T>& list : lists) {
        all.insert(all.end(), std::make_move_iterator(list.begin()), std::make_move_iterator(list.end()));
    }
    return all;
}

}  // namespace

LineArtist::LineArtist(const zrg::RayScene& scene, const LineRule& rule, unsigned threads)
    : m_scene(scene), m_rule(rule), m_threads(threads) {
    std::map<const zrg::Shape*, std::uint32_t> numbers;
    std::vector<const zrg::Shape*> shapes;
    for (std::uint32_t i = 0; i < scene.GetPlacementCount(); ++i) {
        const zrg::Shape* shape = &scene.GetShape(i);
        const auto [place, isNew] = numbers.try_emplace(shape, static_cast<std::uint32_t>(shapes.size()));
        if (isNew) shapes.push_back(shape);
        m_meshNumbers.push_back(place->second);
    }
    std::vector<std::optional<EdgeMesh>> meshes(shapes.size());
    ParallelFor(shapes.size(), threads,
                [&](std::size_t i) { meshes[i].emplace(*shapes[i], rule.creaseAngle); });
    m_meshes.reserve(meshes.size());
    for (auto& mesh : meshes) m_meshes.push_back(std::move(*mesh));
    dg::DPoint3D low(1e300, 1e300, 1e300);
    dg::DPoint3D high(-1e300, -1e300, -1e300);
    for (std::uint32_t i = 0; i < m_meshNumbers.size(); ++i) {
        const PlacedMesh& placed = m_placed.emplace_back(m_meshes[m_meshNumbers[i]], scene.GetToWorld(i));
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = std::min(low[axis], placed.Low()[axis]);
            high[axis] = std::max(high[axis], placed.High()[axis]);
        }
    }
    if (!m_placed.empty()) m_size = (high - low).Length();
    if (rule.withCrossings) FindCrossings();
}

void LineArtist::FindCrossings() {
    const auto pairs = OverlappingPairs(m_placed);
    std::vector<bool> isNeeded(m_meshes.size(), false);
    for (const auto& [a, b] : pairs) isNeeded[m_meshNumbers[a]] = isNeeded[m_meshNumbers[b]] = true;
    std::vector<std::unique_ptr<TriangleTree>> trees(m_meshes.size());
    ParallelFor(trees.size(), m_threads, [&](std::size_t i) {
        if (isNeeded[i]) trees[i] = std::make_unique<TriangleTree>(m_meshes[i]);
    });
    std::map<std::tuple<std::uint32_t, std::uint32_t, Layout>, std::size_t> places;
    std::vector<std::size_t> firsts;  // of the pairs: the first that is alike
    std::vector<std::size_t> different;
    for (const auto& [a, b] : pairs) {
        const std::tuple key(m_meshNumbers[a], m_meshNumbers[b], LayoutOf(m_placed[a], m_placed[b]));
        const auto [place, isNew] = places.try_emplace(key, firsts.size());
        if (isNew) different.push_back(firsts.size());
        firsts.push_back(place->second);
    }
    m_crossings.resize(pairs.size());
    ParallelFor(different.size(), m_threads, [&](std::size_t i) {
        const auto [a, b] = pairs[different[i]];
        m_crossings[different[i]].curves =
            CrossingCurves(m_placed[a], *trees[m_meshNumbers[a]], m_placed[b], *trees[m_meshNumbers[b]]);
    });
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const std::uint32_t a = pairs[i].first;
        m_crossings[i].placement = a;
        if (firsts[i] == i) continue;
        const dg::DMat44 move = m_placed[pairs[firsts[i]].first].ToWorld().Invert() * m_placed[a].ToWorld();
        m_crossings[i].curves = Moved(m_crossings[firsts[i]].curves, move);
    }
    std::erase_if(m_crossings, [](const CrossingSet& set) { return set.curves.empty(); });
}

LineArt LineArtist::Draw(const dg::Camera3D& camera) const {
    const Viewer viewer(camera);
    const PartRaster raster(m_placed, viewer, kSamples, kCoincident * m_size, m_threads);
    const SceneCurves curves(m_placed, m_crossings, viewer, raster, m_rule, m_size, m_threads);
    const auto list = curves.List();
    const CurveSight sight(m_scene, viewer);
    std::vector<std::vector<SeenPiece>> seen(list.size());
    ParallelFor(list.size(), m_threads,
                [&](std::size_t i) { sight.Look(list[i], m_rule.withHidden, seen[i]); });
    const std::vector<SeenPiece> pieces = WithoutDuplicates(Flattened(std::move(seen)));
    const std::vector<double> sizes = AreaSizes(raster, m_placed.size());
    return {JoinedLines(pieces, sizes), AreaOutlines(raster, m_placed.size(), m_threads)};
}

}  // namespace zrsheet
