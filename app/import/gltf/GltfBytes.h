// The bytes behind a document's buffers: the container's binary chunk, data URIs, files beside it; unpacked
// where packed.

#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/import/gltf/GltfDocument.h"

namespace zrsheet {

/// Loads and unpacks on first use and keeps what it made. One thread.
class GltfBytes {
public:
    /// `binaryChunk` is the container's, if it has one; `folder` is where relative URIs start.
    /// Requires: document and chunk outlive this.
    GltfBytes(const GltfDocument& document, std::optional<std::string_view> binaryChunk,
              std::filesystem::path folder);

    /// The bytes of a view, unpacked. Valid as long as this. Throws ImportError if they are not all there.
    [[nodiscard]] std::string_view View(std::size_t view);

    /// The bytes of an array of `count` elements of `elementSize` bytes each, and the distance from one to
    /// the next. The last element ends inside the bytes. Throws ImportError if it would not.
    struct Array {
        std::string_view bytes;
        std::size_t stride = 0;
    };
    [[nodiscard]] Array Elements(const GltfSlice& slice, std::size_t elementSize, std::size_t count);

private:
    std::string_view Buffer(std::size_t buffer);
    std::string LoadUri(std::size_t buffer, const std::string& uri) const;
    std::string_view Part(std::size_t buffer, std::size_t offset, std::size_t length, std::size_t view);

    const GltfDocument& m_document;
    std::optional<std::string_view> m_binaryChunk;
    std::filesystem::path m_folder;
    std::vector<std::optional<std::string>> m_loaded;    // per buffer
    std::vector<std::optional<std::string>> m_unpacked;  // per view
};

}  // namespace zrsheet
