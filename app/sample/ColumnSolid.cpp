#include "app/sample/ColumnSolid.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "app/sample/Triangulation.h"

namespace zrsheet {
namespace {

// Heights at the three corners of a cell; ordered by their sum, since those of one cell never cross.
using Level = std::array<double, 3>;

double Sum(const Level& level) { return level[0] + level[1] + level[2]; }

struct Column {
    Level bottom;
    Level top;
};

struct Cell {
    std::array<Point2, 3> corners;
    bool isDrilled = false;
    std::vector<Column> columns;  // from the bottom up, apart from each other
};

// Heights along one edge of the plan.
struct Span {
    std::array<double, 2> bottom;
    std::array<double, 2> top;
};

Point2 Centre(const Cell& cell) {
    const auto& [a, b, c] = cell.corners;
    return {(a[0] + b[0] + c[0]) / 3, (a[1] + b[1] + c[1]) / 3};
}

bool Contains(const PlanBox& box, const Point2& point) {
    return point[0] > box.low[0] && point[0] < box.high[0] && point[1] > box.low[1] && point[1] < box.high[1];
}

// Rounded, so that heights meant to meet do.
Level Heights(const Cell& cell, const Height& height) {
    constexpr double kPlaces = 1e4;
    Level level{};
    for (std::size_t i = 0; i < 3; ++i) level[i] = std::round(height(cell.corners[i]) * kPlaces) / kPlaces;
    return level;
}

Level Higher(const Level& a, const Level& b) { return Sum(a) < Sum(b) ? b : a; }
Level Lower(const Level& a, const Level& b) { return Sum(b) < Sum(a) ? b : a; }

void AddColumn(std::vector<Column>& columns, Column added) {
    std::vector<Column> result;
    for (const Column& column : columns) {
        if (Sum(column.top) < Sum(added.bottom) || Sum(added.top) < Sum(column.bottom)) {
            result.push_back(column);
        } else {
            added = {Lower(column.bottom, added.bottom), Higher(column.top, added.top)};
        }
    }
    result.push_back(added);
    std::ranges::sort(result, {}, [](const Column& column) { return Sum(column.bottom); });
    columns = std::move(result);
}

void CutColumn(std::vector<Column>& columns, const Column& cut) {
    std::vector<Column> result;
    for (const Column& column : columns) {
        const Column below{column.bottom, Lower(column.top, cut.bottom)};
        const Column above{Higher(column.bottom, cut.top), column.top};
        if (Sum(below.bottom) < Sum(below.top)) result.push_back(below);
        if (Sum(above.bottom) < Sum(above.top)) result.push_back(above);
    }
    columns = std::move(result);
}

}  // namespace

// Makes the surface of one solid; lives for one Build.
class ColumnSurface {
public:
    explicit ColumnSurface(const ColumnSolid& solid) : m_solid(solid) {}

    SolidMesh Run() {
        MakeCells();
        for (Cell& cell : m_cells) Fill(cell);
        for (const Cell& cell : m_cells) Remember(cell);
        for (const Cell& cell : m_cells) AddCell(cell);
        return std::move(m_mesh);
    }

private:
    using Edge = std::pair<Point2, Point2>;

    void MakeCells() {
        for (std::size_t i = 1; i < m_solid.m_xs.size(); ++i) {
            for (std::size_t j = 1; j < m_solid.m_ys.size(); ++j) {
                MakeCells({m_solid.m_xs[i - 1], m_solid.m_ys[j - 1]}, {m_solid.m_xs[i], m_solid.m_ys[j]});
            }
        }
    }

    void MakeCells(const Point2& low, const Point2& high) {
        constexpr int kHoleCorners = 24;
        Region region{Rectangle(low, high)};
        for (const auto& [centre, radius] : m_solid.m_drillings) {
            if (!Contains({low, high}, centre)) continue;
            const Contour circle = Circle(radius, kHoleCorners, centre);
            region.push_back(Hole(circle));
            for (const auto& corners : Triangulate({circle})) m_cells.push_back({corners, true, {}});
        }
        for (const auto& corners : Triangulate(region)) m_cells.push_back({corners, false, {}});
    }

    void Fill(Cell& cell) const {
        if (cell.isDrilled) return;
        const Point2 centre = Centre(cell);
        for (const auto& change : m_solid.m_changes) {
            if (!Contains(change.box, centre)) continue;
            const Column column{Heights(cell, change.bottom), Heights(cell, change.top)};
            if (change.adds) {
                AddColumn(cell.columns, column);
            } else {
                CutColumn(cell.columns, column);
            }
        }
    }

    static std::vector<Span> Spans(const Cell& cell, std::size_t from, std::size_t to) {
        std::vector<Span> spans;
        for (const auto& [bottom, top] : cell.columns) {
            spans.push_back({{bottom[from], bottom[to]}, {top[from], top[to]}});
        }
        return spans;
    }

    // What the walls need to know of the other side, and of all others at their corners.
    void Remember(const Cell& cell) {
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t j = (i + 1) % 3;
            m_spans[{cell.corners[i], cell.corners[j]}] = Spans(cell, i, j);
            for (const auto& [bottom, top] : cell.columns) {
                m_heights[cell.corners[i]].insert({bottom[i], top[i]});
            }
        }
    }

    void AddCell(const Cell& cell) {
        const auto& [a, b, c] = cell.corners;
        for (const auto& [bottom, top] : cell.columns) {
            m_mesh.Triangle({a[0], a[1], top[0]}, {b[0], b[1], top[1]}, {c[0], c[1], top[2]});
            m_mesh.Triangle({a[0], a[1], bottom[0]}, {c[0], c[1], bottom[2]}, {b[0], b[1], bottom[1]});
        }
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t j = (i + 1) % 3;
            const auto other = m_spans.find({cell.corners[j], cell.corners[i]});
            AddWalls(cell.corners[i], cell.corners[j], Spans(cell, i, j),
                     other == m_spans.end() ? std::vector<Span>{} : other->second);
        }
    }

    // Sweeps upwards along the edge: a wall stands where this side is solid and the other is not.
    void AddWalls(const Point2& a, const Point2& b, const std::vector<Span>& mine,
                  const std::vector<Span>& others) {
        struct Step {
            std::array<double, 2> heights;
            bool isMine;
            bool enters;
        };
        std::vector<Step> steps;
        for (const auto& [bottom, top] : mine)
            steps.insert(steps.end(), {{bottom, true, true}, {top, true, false}});
        for (const auto& [bottom, top] : others) {  // seen from the other side the edge runs backwards
            steps.push_back({{bottom[1], bottom[0]}, false, true});
            steps.push_back({{top[1], top[0]}, false, false});
        }
        std::ranges::stable_sort(steps, {},
                                 [](const Step& step) { return step.heights[0] + step.heights[1]; });
        bool inMine = false;
        bool inOther = false;
        for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
            (steps[i].isMine ? inMine : inOther) = steps[i].enters;
            if (inMine && !inOther) AddWall(a, b, steps[i].heights, steps[i + 1].heights);
        }
    }

    // The corners of a wall above one end of its edge, from the bottom up, with those that its neighbours
    // have there.
    std::vector<Point3> Chain(const Point2& at, double low, double high) const {
        std::vector<Point3> chain{{at[0], at[1], low}};
        const std::set<double>& heights = m_heights.at(at);
        for (auto z = heights.upper_bound(low); z != heights.end() && *z < high; ++z) {
            chain.push_back({at[0], at[1], *z});
        }
        if (high > low) chain.push_back({at[0], at[1], high});
        return chain;
    }

    void AddWall(const Point2& a, const Point2& b, const std::array<double, 2>& low,
                 const std::array<double, 2>& high) {
        const std::vector<Point3> left = Chain(a, low[0], high[0]);
        const std::vector<Point3> right = Chain(b, low[1], high[1]);
        std::size_t i = 0;
        std::size_t j = 0;
        while (i + 1 < left.size() || j + 1 < right.size()) {
            const bool climbsLeft =
                j + 1 == right.size() || (i + 1 < left.size() && left[i + 1][2] < right[j + 1][2]);
            if (climbsLeft) {
                m_mesh.Triangle(left[i], right[j], left[i + 1]);
                ++i;
            } else {
                m_mesh.Triangle(left[i], right[j], right[j + 1]);
                ++j;
            }
        }
    }

    const ColumnSolid& m_solid;
    std::vector<Cell> m_cells;
    std::map<Edge, std::vector<Span>> m_spans;
    std::map<Point2, std::set<double>> m_heights;
    SolidMesh m_mesh;
};

ColumnSolid::ColumnSolid(std::vector<double> xs, std::vector<double> ys)
    : m_xs(std::move(xs)), m_ys(std::move(ys)) {
    for (std::vector<double>* lines : {&m_xs, &m_ys}) {
        constexpr double kSame = 1e-3;
        std::ranges::sort(*lines);
        const auto isSame = [](double a, double b) { return b - a < kSame; };
        lines->erase(std::unique(lines->begin(), lines->end(), isSame), lines->end());
    }
}

void ColumnSolid::Drill(const Point2& centre, double radius) { m_drillings.push_back({centre, radius}); }

void ColumnSolid::Add(const PlanBox& box, const Height& bottom, const Height& top) {
    m_changes.push_back({true, box, bottom, top});
}

void ColumnSolid::Cut(const PlanBox& box, const Height& bottom, const Height& top) {
    m_changes.push_back({false, box, bottom, top});
}

SolidMesh ColumnSolid::Build() const { return ColumnSurface(*this).Run(); }

}  // namespace zrsheet
