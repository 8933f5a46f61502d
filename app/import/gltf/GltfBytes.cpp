#include "app/import/gltf/GltfBytes.h"

#include <fmt/format.h>

#include <charconv>

#include "app/import/ImportError.h"
#include "app/import/Utf8Text.h"
#include "app/import/gltf/Base64.h"
#include "app/import/gltf/MeshoptView.h"
#include "app/import/reading/ReadFile.h"

namespace zrsheet {
namespace {

std::string WithoutPercents(std::string_view uri) {
    std::string text;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        unsigned char code = 0;
        const char* const digits = uri.data() + i + 1;
        if (uri[i] == '%' && i + 2 < uri.size() &&
            std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
            text += static_cast<char>(code);
            i += 2;
        } else {
            text += uri[i];
        }
    }
    return text;
}

}  // namespace

GltfBytes::GltfBytes(const GltfDocument& document, std::optional<std::string_view> binaryChunk,
                     std::filesystem::path folder)
    : m_document(document),
      m_binaryChunk(binaryChunk),
      m_folder(std::move(folder)),
      m_loaded(document.buffers.size()),
      m_unpacked(document.views.size()) {}

std::string_view GltfBytes::View(std::size_t view) {
    const GltfBufferView& from = m_document.views[view];
    if (!from.packing) return Part(from.buffer, from.offset, from.length, view);
    std::optional<std::string>& unpacked = m_unpacked[view];
    if (!unpacked) {
        const GltfPacking& packing = *from.packing;
        unpacked = UnpackMeshopt(packing, Part(packing.buffer, packing.offset, packing.length, view));
    }
    return *unpacked;
}

GltfBytes::Array GltfBytes::Elements(const GltfSlice& slice, std::size_t elementSize, std::size_t count) {
    const std::string_view bytes = View(slice.view);
    const std::size_t given = m_document.views[slice.view].stride;
    const std::size_t stride = given == 0 ? elementSize : given;
    if (count == 0) return {{}, stride};
    const bool fits = stride >= elementSize && slice.offset <= bytes.size() &&
                      bytes.size() - slice.offset >= elementSize &&
                      (bytes.size() - slice.offset - elementSize) / stride >= count - 1;
    if (!fits) {
        throw ImportError(
            fmt::format("{} elements from byte {} do not fit into buffer view {} of {} bytes; export the "
                        "file again",
                        count, slice.offset, slice.view, bytes.size()));
    }
    return {bytes.substr(slice.offset, (count - 1) * stride + elementSize), stride};
}

std::string_view GltfBytes::Buffer(std::size_t buffer) {
    const GltfBuffer& from = m_document.buffers[buffer];
    if (from.uri && !m_loaded[buffer]) m_loaded[buffer] = LoadUri(buffer, *from.uri);
    if (!from.uri && (buffer != 0 || !m_binaryChunk)) {
        throw ImportError(fmt::format("the bytes of buffer {} are missing; export the file again", buffer));
    }
    const std::string_view bytes = from.uri ? std::string_view(*m_loaded[buffer]) : *m_binaryChunk;
    if (bytes.size() < from.length) {
        throw ImportError(
            fmt::format("buffer {} has {} bytes of {}, the file is cut off; copy or export it again", buffer,
                        bytes.size(), from.length));
    }
    return bytes.substr(0, from.length);
}

std::string GltfBytes::LoadUri(std::size_t buffer, const std::string& uri) const {
    if (uri.starts_with("data:")) {
        const std::size_t comma = uri.find(";base64,");
        std::optional<std::string> bytes;
        if (comma != std::string::npos) bytes = DecodeBase64(std::string_view(uri).substr(comma + 8));
        if (!bytes)
            throw ImportError(fmt::format("the data of buffer {} is damaged; export the file again", buffer));
        return *std::move(bytes);
    }
    if (uri.find("://") != std::string::npos || uri.starts_with('/')) {
        throw ImportError(
            fmt::format("buffer {} lies at \"{}\"; put it beside the file", buffer, OneLine(uri)));
    }
    try {
        return ReadFile(m_folder / WithoutPercents(uri));
    } catch (const ImportError& error) {
        throw ImportError(fmt::format("its part \"{}\": {}", OneLine(uri), error.what()));
    }
}

std::string_view GltfBytes::Part(std::size_t buffer, std::size_t offset, std::size_t length,
                                 std::size_t view) {
    const std::string_view bytes = Buffer(buffer);
    if (offset > bytes.size() || length > bytes.size() - offset) {
        throw ImportError(
            fmt::format("buffer view {} reaches beyond buffer {}; export the file again", view, buffer));
    }
    return bytes.substr(offset, length);
}

}  // namespace zrsheet
