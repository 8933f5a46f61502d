#include "tests/app/import/ImportFixture.h"

#include "app/import/ImportError.h"
#include "tests/support/ErrorOf.h"

namespace zrsheet {

ImportFixture::ImportFixture() {
    m_bytes = BytesOf<float>({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}) +
              BytesOf<std::uint16_t>({0, 2, 1, 0, 1, 3, 1, 2, 3, 0, 3, 2});
    Write("tetra.bin", m_bytes);
}

Json ImportFixture::Tetrahedron() const {
    return Json::parse(R"({"asset": {"version": "2.0"}, "scene": 0,
        "scenes": [{"nodes": [0]}], "nodes": [{"mesh": 0, "name": "Leaf"}],
        "meshes": [{"name": "Tetra", "primitives": [{"attributes": {"POSITION": 0}, "indices": 1}]}],
        "accessors": [{"bufferView": 0, "componentType": 5126, "count": 4, "type": "VEC3"},
                      {"bufferView": 1, "componentType": 5123, "count": 12, "type": "SCALAR"}],
        "bufferViews": [{"buffer": 0, "byteLength": 48}, {"buffer": 0, "byteOffset": 48, "byteLength": 24}],
        "buffers": [{"uri": "tetra.bin", "byteLength": 72}]})");
}

std::size_t ImportFixture::AddView(Json& model, const std::string& bytes) {
    model["bufferViews"].push_back(
        {{"buffer", 0}, {"byteOffset", m_bytes.size()}, {"byteLength", bytes.size()}});
    m_bytes += bytes;
    model["buffers"][0]["byteLength"] = m_bytes.size();
    Write("tetra.bin", m_bytes);
    return model["bufferViews"].size() - 1;
}

std::size_t ImportFixture::AddAccessor(Json& model, const std::string& bytes, int componentType,
                                       const std::string& type, std::size_t count) {
    const std::size_t view = AddView(model, bytes);
    model["accessors"].push_back(
        {{"bufferView", view}, {"componentType", componentType}, {"count", count}, {"type", type}});
    return model["accessors"].size() - 1;
}

std::filesystem::path ImportFixture::Save(const Json& model, const std::string& name) const {
    return Write(name, model.dump(-1, ' ', false, Json::error_handler_t::ignore));
}

std::string ImportFixture::Complaint(const std::filesystem::path& file, const ImportLimits& limits) const {
    const std::string line =
        zrtest::ErrorOf<ImportError>([&] { static_cast<void>(ImportModel(file, limits)); });
    EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    EXPECT_TRUE(line.starts_with(file.string() + ": ")) << line;
    return line;
}

}  // namespace zrsheet
