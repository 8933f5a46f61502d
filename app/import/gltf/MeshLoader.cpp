#include "app/import/gltf/MeshLoader.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>

#include "app/import/ImportError.h"
#include "app/import/gltf/DracoMesh.h"
#include "app/import/gltf/GltfAccessors.h"
#include "app/import/reading/PartBuilder.h"

namespace zrsheet {
namespace {

constexpr unsigned kTriangles = 4;
constexpr unsigned kStrip = 5;
constexpr unsigned kFan = 6;

// Every second triangle of a strip is turned over to keep its front in front.
std::vector<std::uint32_t> AsTriangles(unsigned mode, std::vector<std::uint32_t> indices) {
    if (mode == kTriangles) return indices;
    std::vector<std::uint32_t> triangles;
    for (std::size_t i = 2; i < indices.size(); ++i) {
        const std::uint32_t first = mode == kFan ? indices[0] : indices[i - 2];
        const bool turn = mode == kStrip && i % 2 == 1;
        triangles.insert(triangles.end(), {first, indices[turn ? i : i - 1], indices[turn ? i - 1 : i]});
    }
    return triangles;
}

void RequireInRange(const std::vector<std::uint32_t>& indices, std::size_t vertices) {
    const auto most = std::ranges::max_element(indices);
    if (most != indices.end() && *most >= vertices) {
        throw ImportError(
            fmt::format("vertex {} does not exist, there are {}; export the file again", *most, vertices));
    }
}

}  // namespace

MeshLoader::MeshLoader(const GltfDocument& document, GltfBytes& bytes)
    : m_document(document), m_bytes(bytes), m_loaded(document.meshes.size()) {}

std::optional<int> MeshLoader::PartOf(std::size_t mesh) {
    if (!m_loaded[mesh]) m_loaded[mesh] = Load(mesh);
    return *m_loaded[mesh];
}

std::optional<int> MeshLoader::Load(std::size_t mesh) {
    const GltfMesh& from = m_document.meshes[mesh];
    PartBuilder builder;
    for (std::size_t i = 0; i < from.primitives.size(); ++i) {
        try {
            builder.Add(LoadPrimitive(from.primitives[i]));
        } catch (const ImportError& error) {
            throw ImportError(
                fmt::format("mesh {} \"{}\", primitive {}: {}", mesh, from.name, i, error.what()));
        }
    }
    AssemblyPart part = builder.Take();
    if (part.indices.empty()) return std::nullopt;
    part.name = from.name;
    return m_parts.Add(std::move(part));
}

TriangleList MeshLoader::LoadPrimitive(const GltfPrimitive& primitive) {
    if (primitive.mode < kTriangles) return {};  // points and lines
    if (primitive.mode > kFan) throw ImportError("its mode is unknown; export the file again");
    if (primitive.draco) return LoadDraco(*primitive.draco);
    if (!primitive.positions) return {};
    TriangleList list{ReadPositions(m_document, m_bytes, *primitive.positions), {}};
    const std::size_t vertices = list.positions.size() / 3;
    std::vector<std::uint32_t> indices;
    if (primitive.indices) {
        indices = ReadIndices(m_document, m_bytes, *primitive.indices);
    } else {
        indices.resize(vertices);
        std::iota(indices.begin(), indices.end(), 0U);
    }
    RequireInRange(indices, vertices);
    list.indices = AsTriangles(primitive.mode, std::move(indices));
    return list;
}

const TriangleList& MeshLoader::LoadDraco(const GltfDraco& draco) {
    const auto found = m_draco.find(draco.view);
    if (found != m_draco.end()) return found->second;
    return m_draco.emplace(draco.view, UnpackDraco(m_bytes.View(draco.view), draco.positions)).first->second;
}

}  // namespace zrsheet
