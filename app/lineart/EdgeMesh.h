// A shape's triangles with their edges: which faces meet where, which edges are sharp, and how the surface
// runs smoothly over the others.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "dg/DPoint3D.h"
#include "dg/DVec3.h"
#include "zrg/Shape.h"

namespace zrsheet {

/// Never changes once made, so any thread may read it. Local coordinates of the shape.
class EdgeMesh {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFU;

    struct Edge {
        std::uint32_t from = 0;  // vertices; the order is that of the first face
        std::uint32_t to = 0;
        std::array<std::uint32_t, 2> faces{kNone, kNone};  // the second is kNone at a border
        bool isSharp = false;
        bool isTwisted = false;  // its faces wind against each other
        bool isMany = false;     // more than two faces meet
    };
    struct Face {
        std::array<std::uint32_t, 3> vertices{};
        std::array<std::uint32_t, 3> edges{};  // the first from the first vertex to the second
    };
    /// Sharp edges that follow each other. `vertices` are one more than `edges`, also where the chain is
    /// closed: there the first is repeated.
    struct Chain {
        std::vector<std::uint32_t> vertices;
        std::vector<std::uint32_t> edges;
        bool IsClosed() const { return vertices.size() > 2 && vertices.front() == vertices.back(); }
    };

    /// `creaseAngle` in degrees: smooth edges turn less, unless the shape tells which edges are creases.
    /// Cost: n log n of the triangles.
    EdgeMesh(const zrg::Shape& shape, double creaseAngle);

    const std::vector<dg::DPoint3D>& Vertices() const { return m_vertices; }
    const std::vector<Face>& Faces() const { return m_faces; }
    const std::vector<Edge>& Edges() const { return m_edges; }
    const std::vector<Chain>& SharpChains() const { return m_chains; }
    /// Of length 1, outwards where IsSolid().
    const dg::DVec3& FaceNormal(std::uint32_t face) const { return m_faceNormals[face]; }
    /// Of the smooth surface around the face's corner; of length 1.
    const dg::DVec3& CornerNormal(std::uint32_t face, std::size_t corner) const {
        return m_cornerNormals[3 * face + corner];
    }
    /// Closed on all sides and wound one way, so that there is an inside.
    bool IsSolid() const { return m_isSolid; }
    /// Has no smooth edges that turn at all.
    bool IsFaceted() const { return m_isFaceted; }
    /// The diagonal of the box around it.
    double Size() const { return m_size; }

private:
    using VertexNumbers = std::vector<std::uint32_t>;

    /// Returns the number of the vertex that stands for each of the shape's.
    VertexNumbers TakeFaces(const zrg::Shape& shape);
    void FindEdges();
    void CloseCracks(VertexNumbers& numbers);
    void LevelSlivers();
    void TakeSharpEdges(const zrg::Shape::Creases& creases, const VertexNumbers& numbers);
    void GuessSharpEdges(double creaseAngle);
    void TurnOutwards();
    void SmoothNormals(double creaseAngle);
    void ChainSharpEdges();
    std::pair<std::uint32_t, std::uint32_t> CornersAt(const Edge& edge, std::uint32_t vertex) const;

    std::vector<dg::DPoint3D> m_vertices;
    std::vector<Face> m_faces;
    std::vector<Edge> m_edges;
    std::vector<dg::DVec3> m_faceNormals;
    std::vector<double> m_faceAreas;
    std::vector<dg::DVec3> m_cornerNormals;
    std::vector<Chain> m_chains;
    double m_size = 0.0;
    bool m_isSolid = false;
    bool m_isFaceted = true;
};

}  // namespace zrsheet
