#include <gmock/gmock.h>

#include <functional>
#include <limits>

#include "app/sample/GlbWriter.h"
#include "tests/app/import/ImportFixture.h"

namespace zrsheet {
namespace {

using testing::HasSubstr;

class DamagedFile : public ImportFixture {
protected:
    static std::string SmallGlb() {
        Assembly assembly;
        assembly.parts.push_back({"Plate", {0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}});
        assembly.nodes.push_back({"Plate", -1, kIdentityMatrix, 0, {}});
        return WriteGlb(assembly);
    }
    static Json Chain(std::size_t length) {
        Json nodes = Json::array();
        for (std::size_t i = 1; i < length; ++i) nodes.push_back({{"children", {i}}});
        nodes.push_back({{"mesh", 0}});
        return nodes;
    }
};

TEST_F(DamagedFile, IsRefusedWhenItsBytesAreWrong) {
    const std::string glb = SmallGlb();
    std::string longChunk = glb;
    longChunk[12] = '\x7F';
    longChunk[14] = '\x7F';
    std::string oldVersion = glb;
    oldVersion[4] = 1;
    struct Case {
        const char* name;
        std::string bytes;
        const char* complaint;
    };
    const std::vector<Case> cases{
        {"empty.glb", "", "is empty"},
        {"text.glb", "some text", "no glTF (.glb, .gltf), STEP"},
        {"cut.glb", glb.substr(0, glb.size() - 8), "cut off"},
        {"header.glb", glb.substr(0, 7), "cut off"},
        {"chunk.glb", longChunk, "a chunk is longer"},
        {"version.glb", oldVersion, "version 1"},
        {"corrupt.gltf", R"({"asset": {"version": "2.0", })", "JSON text is damaged"},
        {"nested.gltf", std::string(100'000, '[').insert(0, R"({"a":)"), "JSON text is damaged"},
        {"nothing.gltf", "{}", "has no asset"},
    };
    for (const Case& each : cases)
        EXPECT_THAT(Complaint(Write(each.name, each.bytes)), HasSubstr(each.complaint));
    EXPECT_EQ(ImportModel(Write("good.glb", glb)).parts[0].indices.size(), 3U);
    EXPECT_THAT(Complaint("missing.glb"), HasSubstr("no such file"));
    EXPECT_THAT(Complaint(std::filesystem::temp_directory_path()), HasSubstr("this is no file"));
}

// One change to a good model makes each.
TEST_F(DamagedFile, IsRefusedWhenItsDocumentIsWrong) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    struct Case {
        std::string pointer;
        Json value;
        const char* complaint;
    };
    const std::vector<Case> cases{
        {"/asset/version", "1.0", "version"},
        {"/scene", 3, "scene 3 does not exist"},
        {"/scenes/0/nodes/0", 1, "nodes 1 does not exist"},
        {"/nodes/0/mesh", 7, "mesh 7 does not exist"},
        {"/nodes/0/mesh", -1, "no whole number"},
        {"/nodes/0/children", {0}, "reached twice"},
        {"/scenes/0/nodes", {0, 0}, "reached twice"},
        {"/nodes/0/matrix", {1, 2, 3}, "of 3 numbers"},
        {"/nodes/0/scale", {1e200, 1e308, "x"}, "holds no number"},
        {"/nodes/0",
         {{"mesh", 0}, {"scale", {1e308, 1, 1}}, {"rotation", {1e10, 1e10, 0, 0}}},
         "beyond all numbers"},
        {"/meshes/0/primitives/0/mode", 0, "no triangles"},
        {"/meshes/0/primitives/0/mode", 9, "mode is unknown"},
        {"/meshes/0/primitives/0/attributes/POSITION", 1, "three coordinates"},
        {"/meshes/0/primitives/0/indices", 0, "no unsigned numbers"},
        {"/accessors/0/count", 3, "mesh 0 \"Tetra\", primitive 0: vertex 3 does not exist, there are 3"},
        {"/accessors/0/count", 5, "do not fit"},
        {"/accessors/0/byteOffset", 4, "do not fit"},
        {"/accessors/0/byteOffset", 40, "do not fit"},
        {"/accessors/0/byteOffset", std::uint64_t{1} << 63, "do not fit"},
        {"/accessors/0/count", std::uint64_t{1} << 62, "do not fit"},
        {"/accessors/0/componentType", 5124, "component type 5124"},
        {"/accessors/0",
         {{"componentType", 5126}, {"type", "VEC3"}, {"count", std::uint64_t{1} << 40}},
         "no bytes"},
        {"/accessors/0/bufferView", 9, "bufferView 9 does not exist"},
        {"/bufferViews/0/byteStride", 2, "do not fit"},
        {"/bufferViews/1/byteLength", 25, "reaches beyond buffer 0"},
        {"/bufferViews/0/byteOffset", ~std::uint64_t{0}, "reaches beyond buffer 0"},
        {"/buffers/0/byteLength", 100, "cut off"},
        {"/buffers/0", {{"byteLength", 72}}, "are missing"},
        {"/buffers/0/uri", "gone.bin", "\"gone.bin\": there is no such file"},
        {"/buffers/0/uri", "https://example.org/a.bin", "put it beside"},
        {"/buffers/0/uri", "data:;base64,A-B-", "data of buffer 0 is damaged"},
        {"/extensionsRequired", {"KHR_materials_unlit", "ACME_secret"}, "\"ACME_secret\""},
    };
    for (const Case& each : cases) {
        Json model = Tetrahedron();
        model[Json::json_pointer(each.pointer)] = each.value;
        EXPECT_THAT(Complaint(Save(model)), HasSubstr(each.complaint)) << each.pointer;
    }
    Json model = Tetrahedron();
    const std::size_t corners =
        AddAccessor(model, BytesOf<float>({0, 0, 0, 1, 0, 0, 0, nan, 0, 0, 0, 1}), 5126, "VEC3", 4);
    model["meshes"][0]["primitives"][0]["attributes"]["POSITION"] = corners;
    EXPECT_THAT(Complaint(Save(model)), HasSubstr("position of vertex 2"));
}

TEST_F(DamagedFile, IsRefusedWhenASparsePlaceLiesOutside) {
    Json model = Tetrahedron();
    const std::size_t places = AddView(model, BytesOf<std::uint16_t>({4}));
    model["accessors"][0]["sparse"] = {{"count", 1},
                                       {"indices", {{"bufferView", places}, {"componentType", 5123}}},
                                       {"values", {{"bufferView", 0}}}};
    EXPECT_THAT(Complaint(Save(model)), HasSubstr("sparse place"));
}

TEST_F(DamagedFile, MayNestAsDeepAsIsPromised) {
    Json model = Tetrahedron();
    model["nodes"] = Chain(10'000);
    EXPECT_EQ(Import(model).nodes.size(), 10'000U);
    model["nodes"] = Chain(10'001);
    EXPECT_THAT(Complaint(Save(model)), HasSubstr("deeper than 10000"));
}

}  // namespace
}  // namespace zrsheet
