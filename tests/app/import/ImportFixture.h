// Makes model files in a folder of their own and imports them through the reader's process.

#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/import/process/ImportModel.h"
#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet {

using Json = nlohmann::ordered_json;

/// The bytes of the values, for buffers.
template <class T>
std::string BytesOf(const std::vector<T>& values) {
    return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T)};
}

class ImportFixture : public testing::Test {
protected:
    ImportFixture();

    std::filesystem::path Write(const std::string& name, const std::string& bytes) const {
        test::PutFile(m_folder / name, bytes);
        return m_folder / name;
    }

    /// A model of one tetrahedron: mesh "Tetra", node "Leaf", bytes in tetra.bin beside it.
    Json Tetrahedron() const;

    /// A view of new bytes at the end of tetra.bin; returns its number.
    std::size_t AddView(Json& model, const std::string& bytes);
    std::size_t AddAccessor(Json& model, const std::string& bytes, int componentType, const std::string& type,
                            std::size_t count);

    std::filesystem::path Save(const Json& model, const std::string& name = "model.gltf") const;
    Assembly Import(const Json& model) const { return ImportModel(Save(model)); }

    /// What the import complains of; checks that it does, in one line that begins with the file's name.
    std::string Complaint(const std::filesystem::path& file, const ImportLimits& limits = {}) const;

private:
    const test::TemporaryFolder m_folder;
    std::string m_bytes;
};

}  // namespace zrsheet
