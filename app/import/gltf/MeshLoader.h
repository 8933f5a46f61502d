// Turns the meshes of a document into parts, each when it is first asked for.

#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "app/import/gltf/GltfBytes.h"
#include "app/import/gltf/GltfDocument.h"
#include "app/import/reading/PartTable.h"
#include "app/import/reading/TriangleList.h"

namespace zrsheet {

/// One thread. Requires: document and bytes outlive this.
class MeshLoader {
public:
    MeshLoader(const GltfDocument& document, GltfBytes& bytes);

    /// The number of the mesh's part; nothing if it has no triangles. Throws ImportError, which names the
    /// mesh.
    [[nodiscard]] std::optional<int> PartOf(std::size_t mesh);

    [[nodiscard]] std::vector<AssemblyPart> TakeParts() { return m_parts.Take(); }

private:
    std::optional<int> Load(std::size_t mesh);
    TriangleList LoadPrimitive(const GltfPrimitive& primitive);
    const TriangleList& LoadDraco(const GltfDraco& draco);

    const GltfDocument& m_document;
    GltfBytes& m_bytes;
    PartTable m_parts;
    std::vector<std::optional<std::optional<int>>> m_loaded;  // per mesh: not yet, no triangles, or the part
    std::map<std::size_t, TriangleList> m_draco;  // per view: many meshes may share one packed body
};

}  // namespace zrsheet
