#include "app/import/gltf/DracoMesh.h"

#include <draco/compression/decode.h>
#include <fmt/format.h>

#include <cmath>

#include "app/import/ImportError.h"

namespace zrsheet {
namespace {

std::vector<float> Positions(const draco::Mesh& mesh, const draco::PointAttribute& attribute) {
    std::vector<float> positions(std::size_t{mesh.num_points()} * 3);
    for (std::uint32_t i = 0; i < mesh.num_points(); ++i) {
        const draco::AttributeValueIndex value = attribute.mapped_index(draco::PointIndex(i));
        float* const point = &positions[std::size_t{i} * 3];
        const bool converted =
            value.value() < attribute.size() && attribute.ConvertValue<float, 3>(value, point);
        if (!converted || !std::isfinite(point[0] + point[1] + point[2])) {
            throw ImportError(fmt::format(
                "the packed position of vertex {} is no finite number; export the file again", i));
        }
    }
    return positions;
}

std::vector<std::uint32_t> Indices(const draco::Mesh& mesh) {
    std::vector<std::uint32_t> indices;
    indices.reserve(std::size_t{mesh.num_faces()} * 3);
    for (std::uint32_t i = 0; i < mesh.num_faces(); ++i) {
        for (const draco::PointIndex& point : mesh.face(draco::FaceIndex(i))) {
            if (point.value() >= mesh.num_points())
                throw ImportError("packed indices are damaged; export the file again");
            indices.push_back(point.value());
        }
    }
    return indices;
}

}  // namespace

TriangleList UnpackDraco(std::string_view bytes, std::uint32_t positions) {
    draco::DecoderBuffer buffer;
    buffer.Init(bytes.data(), bytes.size());
    draco::Decoder decoder;
    const auto mesh = decoder.DecodeMeshFromBuffer(&buffer);
    if (!mesh.ok()) {
        throw ImportError(
            fmt::format("packed geometry is damaged ({}); export the file again", mesh.status().error_msg()));
    }
    const draco::PointAttribute* const attribute = mesh.value()->GetAttributeByUniqueId(positions);
    if (attribute == nullptr || attribute->num_components() != 3) {
        throw ImportError("packed geometry has no positions; export the file again");
    }
    return {Positions(*mesh.value(), *attribute), Indices(*mesh.value())};
}

}  // namespace zrsheet
