// A shape's mesh where it stands in the world.

#pragma once

#include <cstdint>

#include "app/lineart/EdgeMesh.h"
#include "app/lineart/Viewer.h"
#include "dg/DMat44.h"

namespace zrsheet {

/// The mesh must outlive it. Never changes once made, so any thread may read it.
class PlacedMesh {
public:
    PlacedMesh(const EdgeMesh& mesh, const dg::DMat44& toWorld);

    const EdgeMesh& Mesh() const { return *m_mesh; }
    const dg::DMat44& ToWorld() const { return m_toWorld; }
    dg::DPoint3D Vertex(std::uint32_t vertex) const { return m_mesh->Vertices()[vertex] * m_toWorld; }
    /// A normal of the mesh, in the world, of length 1.
    dg::DVec3 Turned(const dg::DVec3& normal) const;
    /// A corner of a face, with the normal of the smooth surface there.
    struct Corner {
        dg::DPoint3D place;
        dg::DVec3 normal;
        double facing = 0.0;  // cosine to the look; never 0, so that ties are not chance
    };
    Corner CornerOf(std::uint32_t face, std::size_t corner, const Viewer& viewer) const;

    /// Faces seen edge-on do not look this way. Of meshes without inside: as the face is wound.
    bool IsFront(std::uint32_t face, const Viewer& viewer) const;

    /// The corners of the box around it, in the world.
    const dg::DPoint3D& Low() const { return m_low; }
    const dg::DPoint3D& High() const { return m_high; }
    /// The diagonal of that box.
    double Size() const { return (m_high - m_low).Length(); }

private:
    const EdgeMesh* m_mesh;
    dg::DMat44 m_toWorld;
    dg::DMat44 m_toLocal;
    dg::DPoint3D m_low;
    dg::DPoint3D m_high;
};

}  // namespace zrsheet
