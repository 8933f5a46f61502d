// Boxes around boxes around the triangles of a shape, to find those that may meet triangles of another.

#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "app/lineart/EdgeMesh.h"
#include "dg/DMat44.h"

namespace zrsheet {

/// Never changes once made, so any thread may ask.
class TriangleTree {
public:
    /// Cost: n log n of the triangles. The mesh must outlive it.
    explicit TriangleTree(const EdgeMesh& mesh);

    /// Told which triangle of this tree may meet which of the other; returns false to be told no more.
    using PairSink = std::function<bool(std::uint32_t, std::uint32_t)>;

    /// Finds the pairs whose boxes overlap. `toThis` takes the other's coordinates to those of this tree. The
    /// order is always the same.
    void FindPairs(const TriangleTree& other, const dg::DMat44& toThis, const PairSink& sink) const;

private:
    /// Middle and half extent.
    struct Box {
        dg::DPoint3D middle;
        dg::DVec3 half;
    };
    /// A leaf is a triangle; any other node has two children: the one behind it and `second`.
    struct Node {
        Box box;
        std::uint32_t first = 0;
        bool isLeaf = false;
        std::uint32_t second = 0;
    };

    std::uint32_t Build(const EdgeMesh& mesh, std::uint32_t first, std::uint32_t last);
    Box BoxAround(const EdgeMesh& mesh, std::uint32_t first, std::uint32_t last) const;

    std::vector<std::uint32_t> m_triangles;
    std::vector<Node> m_nodes;
};

}  // namespace zrsheet
