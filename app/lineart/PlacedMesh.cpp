#include "app/lineart/PlacedMesh.h"

#include <algorithm>
#include <cmath>

namespace zrsheet {
namespace {

// Sine of the angle below which a face is seen edge-on.
constexpr double kEdgeOn = 1e-6;
// Cosine of the angle to the look below which the normal of a corner counts as turned to the eye.
constexpr double kSquare = 1e-7;

}  // namespace

PlacedMesh::PlacedMesh(const EdgeMesh& mesh, const dg::DMat44& toWorld)
    : m_mesh(&mesh), m_toWorld(toWorld), m_toLocal(toWorld.Invert()) {
    if (mesh.Vertices().empty()) return;
    m_low = m_high = Vertex(0);
    for (std::uint32_t i = 1; i < mesh.Vertices().size(); ++i) {
        const dg::DPoint3D vertex = Vertex(i);
        for (int axis = 0; axis < 3; ++axis) {
            m_low[axis] = std::min(m_low[axis], vertex[axis]);
            m_high[axis] = std::max(m_high[axis], vertex[axis]);
        }
    }
}

// A normal turns by the inverse transposed.
dg::DVec3 PlacedMesh::Turned(const dg::DVec3& n) const {
    const dg::DMat44& m = m_toLocal;
    return dg::DVec3(n.x * m(0, 0) + n.y * m(0, 1) + n.z * m(0, 2),
                     n.x * m(1, 0) + n.y * m(1, 1) + n.z * m(1, 2),
                     n.x * m(2, 0) + n.y * m(2, 1) + n.z * m(2, 2))
        .Normalized();
}

PlacedMesh::Corner PlacedMesh::CornerOf(std::uint32_t face, std::size_t corner, const Viewer& viewer) const {
    const dg::DPoint3D place = Vertex(m_mesh->Faces()[face].vertices[corner]);
    const dg::DVec3 normal = Turned(m_mesh->CornerNormal(face, corner));
    const double facing = normal.Dot(viewer.TowardsEye(place));
    return {place, normal, std::abs(facing) < kSquare ? kSquare : facing};
}

bool PlacedMesh::IsFront(std::uint32_t face, const Viewer& viewer) const {
    const dg::DPoint3D corner = Vertex(m_mesh->Faces()[face].vertices[0]);
    return Turned(m_mesh->FaceNormal(face)).Dot(viewer.TowardsEye(corner)) > kEdgeOn;
}

}  // namespace zrsheet
