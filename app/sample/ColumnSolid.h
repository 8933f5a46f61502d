// Solids whose faces are upright, or heights over a plan: housings with bores lying in their parting plane,
// domes, ribs. The plan is cut into triangles; over each of them the solid is a stack of columns.

#pragma once

#include <functional>
#include <vector>

#include "app/sample/Contour.h"
#include "app/sample/SolidMesh.h"

namespace zrsheet {

/// A height over the plan; linear over each cell of the plan.
using Height = std::function<double(const Point2&)>;

struct PlanBox {
    Point2 low;
    Point2 high;
};

class ColumnSolid {
public:
    /// The plan's cells lie between these lines. Every edge and every bend of what is added must lie on a
    /// line.
    ColumnSolid(std::vector<double> xs, std::vector<double> ys);

    /// Marks a round hole through everything. Requires: inside one cell, and not a second one there.
    void Drill(const Point2& centre, double radius);

    /// Fills, or empties, all between two heights. Requires: neither crosses another's height inside a cell.
    void Add(const PlanBox& box, const Height& bottom, const Height& top);
    void Cut(const PlanBox& box, const Height& bottom, const Height& top);

    [[nodiscard]] SolidMesh Build() const;

private:
    struct Change {
        bool adds;
        PlanBox box;
        Height bottom;
        Height top;
    };
    struct Drilling {
        Point2 centre;
        double radius;
    };

    std::vector<double> m_xs;
    std::vector<double> m_ys;
    std::vector<Drilling> m_drillings;
    std::vector<Change> m_changes;

    friend class ColumnSurface;
};

}  // namespace zrsheet
