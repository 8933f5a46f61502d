// The geometry of a part: triangles in the part's local coordinates.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "dg/FBox.h"
#include "du/RefCounted.h"

namespace zrg {

/// Never changes once made, so any thread may read it.
class Shape : public virtual du::RefCounted {
public:
    /// `positions` holds x, y, z of each vertex, `indices` three of them a triangle. Requires: every index
    /// names a vertex.
    Shape(std::vector<float> positions, std::vector<std::uint32_t> indices);
    ~Shape() override;

    /// The box around the vertices; false when there are none.
    bool ComputeDefaultBBox(dg::FBox& box) const;

    std::span<const float> GetPositions() const { return m_positions; }
    std::span<const std::uint32_t> GetIndices() const { return m_indices; }
    std::size_t GetTriangleCount() const { return m_indices.size() / 3; }

private:
    std::vector<float> m_positions;
    std::vector<std::uint32_t> m_indices;
    dg::FBox m_box;
};

}  // namespace zrg
