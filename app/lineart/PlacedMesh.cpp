#include "app/lineart/PlacedMesh.h"

#include <algorithm>

namespace zrsheet {
namespace {

// Sine of the angle below which a face is seen edge-on.
constexpr double kEdgeOn = 1e-6;

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

bool PlacedMesh::IsFront(std::uint32_t face, const Viewer& viewer) const {
    const dg::DPoint3D corner = Vertex(m_mesh->Faces()[face].vertices[0]);
    return Turned(m_mesh->FaceNormal(face)).Dot(viewer.TowardsEye(corner)) > kEdgeOn;
}

}  // namespace zrsheet
