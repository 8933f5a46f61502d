#include "app/import/gltf/MeshoptView.h"

#include <fmt/format.h>
#include <meshoptimizer.h>

#include "app/import/ImportError.h"

namespace zrsheet {
namespace {

// Far above any real view, and small enough that a few damaged bytes cannot ask for all memory.
constexpr std::size_t kMostBytes = std::size_t{1} << 30;

// The library asserts what is refused here.
void RequireUnpackable(const GltfPacking& packing) {
    const bool attributes = packing.mode == "ATTRIBUTES";
    const bool triangles = packing.mode == "TRIANGLES";
    if (!attributes && !triangles && packing.mode != "INDICES") {
        throw ImportError(
            fmt::format("packing mode \"{}\" is unknown; export the file without compression", packing.mode));
    }
    const bool goodStride = attributes
                                ? packing.stride % 4 == 0 && packing.stride > 0 && packing.stride <= 256
                                : packing.stride == 2 || packing.stride == 4;
    const bool goodCount = packing.count <= kMostBytes / 256 && (!triangles || packing.count % 3 == 0);
    if (!goodStride || !goodCount) {
        throw ImportError(fmt::format("{} packed elements of {} bytes cannot be; export the file again",
                                      packing.count, packing.stride));
    }
}

int Decode(const GltfPacking& packing, const unsigned char* bytes, std::size_t size, std::string& unpacked) {
    if (packing.mode == "ATTRIBUTES") {
        return meshopt_decodeVertexBuffer(unpacked.data(), packing.count, packing.stride, bytes, size);
    }
    if (packing.mode == "TRIANGLES") {
        return meshopt_decodeIndexBuffer(unpacked.data(), packing.count, packing.stride, bytes, size);
    }
    return meshopt_decodeIndexSequence(unpacked.data(), packing.count, packing.stride, bytes, size);
}

// The other filters pack normals and rotations, which nobody asks for.
void Filter(const GltfPacking& packing, std::string& unpacked) {
    if (packing.filter.empty() || packing.filter == "NONE") return;
    if (packing.filter != "EXPONENTIAL" || packing.mode != "ATTRIBUTES") {
        throw ImportError(fmt::format("packing filter \"{}\" is unknown; export the file without compression",
                                      packing.filter));
    }
    meshopt_decodeFilterExp(unpacked.data(), packing.count, packing.stride);
}

}  // namespace

std::string UnpackMeshopt(const GltfPacking& packing, std::string_view bytes) {
    RequireUnpackable(packing);
    std::string unpacked(packing.count * packing.stride, '\0');
    if (Decode(packing, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), unpacked) != 0) {
        throw ImportError("packed bytes are damaged; export the file again");
    }
    Filter(packing, unpacked);
    return unpacked;
}

}  // namespace zrsheet
