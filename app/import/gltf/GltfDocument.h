// A glTF 2.0 document as far as geometry goes: plain data, indices checked to lie inside their tables, bytes
// not looked at.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/import/Assembly.h"

namespace zrsheet {

struct GltfBuffer {
    std::optional<std::string> uri;  // none: the binary chunk of the container, or a placeholder
    std::size_t length = 0;
};

/// Where and how the bytes of a view are packed (EXT_meshopt_compression).
struct GltfPacking {
    std::size_t buffer = 0;
    std::size_t offset = 0;
    std::size_t length = 0;
    std::size_t stride = 0;
    std::size_t count = 0;
    std::string mode;
    std::string filter;
};

struct GltfBufferView {
    std::size_t buffer = 0;
    std::size_t offset = 0;
    std::size_t length = 0;
    std::size_t stride = 0;  // 0: elements lie close together
    std::optional<GltfPacking> packing;
};

/// An array of numbers inside a view.
struct GltfSlice {
    std::size_t view = 0;
    std::size_t offset = 0;
    unsigned componentType = 0;
};

/// Elements that differ from the base array: places and values.
struct GltfSparse {
    std::size_t count = 0;
    GltfSlice places;
    GltfSlice values;
};

struct GltfAccessor {
    std::optional<GltfSlice> base;  // none: zeros
    unsigned componentType = 0;     // one of GL's numbers, 5120 to 5126
    std::size_t components = 0;     // per element, 1 to 4
    std::size_t count = 0;
    bool normalized = false;
    std::optional<GltfSparse> sparse;
};

/// Geometry packed by Draco: the view with its bytes and the id of the positions inside.
struct GltfDraco {
    std::size_t view = 0;
    std::uint32_t positions = 0;
};

struct GltfPrimitive {
    unsigned mode = 4;
    std::optional<std::size_t> positions;
    std::optional<std::size_t> indices;
    std::optional<GltfDraco> draco;
};

struct GltfMesh {
    std::string name;
    std::vector<GltfPrimitive> primitives;
    std::optional<AssemblyColor> color;  // of its first primitive
};

struct GltfNode {
    std::string name;
    std::optional<std::size_t> mesh;
    std::vector<std::size_t> children;
    std::array<double, 16> matrix = kIdentityMatrix;
    std::vector<std::pair<std::string, std::string>> properties;
};

struct GltfDocument {
    std::vector<GltfBuffer> buffers;
    std::vector<GltfBufferView> views;
    std::vector<GltfAccessor> accessors;
    std::vector<std::optional<AssemblyColor>> materials;  // their colours, none where a picture has them
    std::vector<GltfMesh> meshes;
    std::vector<GltfNode> nodes;
    std::vector<std::size_t> roots;  // of the scene to show
};

}  // namespace zrsheet
