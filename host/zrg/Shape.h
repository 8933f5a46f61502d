// The geometry of a part: triangles in the part's local coordinates, and where its faces meet in creases.

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "dg/FBox.h"
#include "du/RefCounted.h"

namespace zrg {

/// Never changes once made, so any thread may read it.
class Shape : public virtual du::RefCounted {
public:
    /// The vertices at both ends of each piece of the lines where faces end or meet in a crease. Pieces are
    /// sides of triangles.
    using Creases = std::vector<std::uint32_t>;

    /// `positions` holds x, y, z of each vertex, `indices` three of them a triangle; `creases` is none where
    /// nothing but the triangles is known. Requires: every index names a vertex.
    Shape(std::vector<float> positions, std::vector<std::uint32_t> indices,
          std::optional<Creases> creases = std::nullopt);
    ~Shape() override;

    /// The box around the vertices; false when there are none.
    bool ComputeDefaultBBox(dg::FBox& box) const;

    std::span<const float> GetPositions() const { return m_positions; }
    std::span<const std::uint32_t> GetIndices() const { return m_indices; }
    /// None: the angles between triangles are all that tells creases.
    const std::optional<Creases>& GetCreases() const { return m_creases; }
    std::size_t GetTriangleCount() const { return m_indices.size() / 3; }

private:
    std::vector<float> m_positions;
    std::vector<std::uint32_t> m_indices;
    std::optional<Creases> m_creases;
    dg::FBox m_box;
};

}  // namespace zrg
