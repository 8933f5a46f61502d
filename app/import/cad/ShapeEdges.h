// The edges of a triangulated body: where its faces are sewn together, and what line drawings draw.

#pragma once

#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS_Shape.hxx>
#include <cstdint>
#include <span>
#include <vector>

#include "app/import/Assembly.h"
#include "app/import/cad/VertexWeld.h"

namespace zrsheet {

/// The faces of a body, each with the number of the first node of its triangles among those of all.
struct MeshedFaces {
    TopTools_IndexedMapOfShape shapes;
    std::vector<std::uint32_t> firstNodes;
};

/// An edge through the triangles of every face that it bounds.
struct ShapeEdge {
    std::vector<std::vector<std::uint32_t>> rows;  // nodes along the edge, one row per face and side
    double tolerance = 0.0;                        // of the file: how far the faces may be apart there
    bool isSmooth = false;
    bool isSeam = false;   // where one face meets itself
    bool isPoint = false;  // such as the tip of a cone: all nodes are one
    int firstCorner = 0;   // numbers of the body's corners
    int lastCorner = 0;
};

/// In the body's order. Requires: the shape is triangulated.
[[nodiscard]] std::vector<ShapeEdge> ShapeEdgesOf(const TopoDS_Shape& shape, const MeshedFaces& faces);

/// Makes nodes of different faces one where their edge is one; nodes further apart than the edge's tolerance
/// and `tolerance` stay two.
void WeldAlong(std::span<const ShapeEdge> edges, double tolerance, VertexWeld& weld);

/// The edges of the part whose vertices stand for the nodes; seams and points are none.
[[nodiscard]] std::vector<AssemblyEdge> PartEdges(std::span<const ShapeEdge> edges,
                                                  std::span<const std::uint32_t> vertexOfNode);

}  // namespace zrsheet
