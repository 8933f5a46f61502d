#include <draco/compression/encode.h>
#include <draco/mesh/triangle_soup_mesh_builder.h>
#include <gmock/gmock.h>
#include <meshoptimizer.h>

#include <cmath>

#include "tests/app/import/ImportFixture.h"

namespace zrsheet {
namespace {

class GltfReader : public ImportFixture {
protected:
    // "name@parent:part" of every node.
    static std::vector<std::string> Tree(const Assembly& assembly) {
        std::vector<std::string> tree;
        for (const AssemblyNode& node : assembly.nodes) {
            tree.push_back(node.name + "@" + std::to_string(node.parent) + ":" + std::to_string(node.part));
        }
        return tree;
    }
    using Names = std::vector<std::string>;
    const std::vector<float> m_corners{0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
};

// A body with children, an empty branch, and a leaf that only its mesh names.
TEST_F(GltfReader, KeepsTheTreeAndLeavesOutWhatHasNoTriangles) {
    Json model = Tetrahedron();
    model["nodes"] =
        Json::parse(R"([{"name": "Top", "children": [3, 1]}, {"mesh": 0, "name": "Body", "children": [2]},
        {"mesh": 0}, {"name": "Empty", "children": [4]}, {"name": "Plane"}])");
    EXPECT_EQ(Tree(Import(model)), (Names{"Top@-1:-1", "Body@0:-1", "Tetra@1:0", "Tetra@1:0"}));
}

TEST_F(GltfReader, NamesEveryNode) {
    Json model = Tetrahedron();
    model["meshes"][0].erase("name");
    model["nodes"] = Json::parse(
        R"([{"name": "Top", "children": [1, 2]}, {"mesh": 0}, {"name": "Wrapper", "children": [3]},
        {"mesh": 0}])");
    EXPECT_EQ(Tree(Import(model)), (Names{"Top@-1:-1", "Part 1@0:0", "Wrapper@0:-1", "Wrapper@2:0"}));
    model["nodes"][1]["name"] = "a\u0001\nb \xFF";
    const std::string text = model.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::string latin = text;
    latin.replace(latin.find("\xEF\xBF\xBD"), 3, "\xFC");  // not UTF-8
    EXPECT_EQ(ImportModel(Write("latin.gltf", latin)).nodes[1].name, "a  b \xEF\xBF\xBD");
}

// Linear light in the file, sRGB here; a picture on the surface says more than the colour below it.
TEST_F(GltfReader, PaintsInstancesAsTheirMaterials) {
    Json model = Tetrahedron();
    model["materials"] = Json::parse(R"([{"pbrMetallicRoughness": {"baseColorFactor": [0.2140, 1, 7, 0.5]}},
        {"pbrMetallicRoughness": {"baseColorFactor": [1, 0, 0, 1], "baseColorTexture": {"index": 0}}}])");
    EXPECT_FALSE(Import(model).nodes[0].color);
    model["meshes"][0]["primitives"][0]["material"] = 0;
    const auto color = Import(model).nodes[0].color;
    ASSERT_TRUE(color);
    EXPECT_NEAR((*color)[0], 0.5, 0.001);
    EXPECT_FLOAT_EQ((*color)[1], 1);
    EXPECT_FLOAT_EQ((*color)[2], 1);
    model["meshes"][0]["primitives"][0]["material"] = 1;
    EXPECT_FALSE(Import(model).nodes[0].color);
}

// Scale first, then the quarter turn about z that takes x to y, then the move.
TEST_F(GltfReader, ComposesTransforms) {
    Json model = Tetrahedron();
    const double half = std::sqrt(0.5);
    model["nodes"][0].update(
        {{"translation", {5, 6, 7}}, {"rotation", {0.0, 0.0, half, half}}, {"scale", {2, 3, -4}}});
    const std::array<double, 16> expected{0, 2, 0, 0, -3, 0, 0, 0, 0, 0, -4, 0, 5, 6, 7, 1};
    const std::array<double, 16> composed = Import(model).nodes[0].matrix;
    for (std::size_t i = 0; i < 16; ++i) EXPECT_NEAR(composed[i], expected[i], 1e-12) << i;
    Json given = Tetrahedron();
    given["nodes"][0]["matrix"] = expected;
    EXPECT_EQ(Import(given).nodes[0].matrix, expected);
}

// The second mesh is the same body from other bytes, with an unused vertex in front.
TEST_F(GltfReader, TakesEqualGeometryForOnePart) {
    Json model = Tetrahedron();
    std::vector<float> corners{9, 9, 9};
    corners.insert(corners.end(), m_corners.begin(), m_corners.end());
    AddAccessor(model, BytesOf(corners), 5126, "VEC3", 5);
    AddAccessor(model, BytesOf<std::uint8_t>({1, 3, 2, 1, 2, 4, 2, 3, 4, 1, 4, 3}), 5121, "SCALAR", 12);
    model["meshes"].push_back(
        Json::parse(R"({"name": "Twin", "primitives": [{"attributes": {"POSITION": 2}, "indices": 3}]})"));
    model["nodes"] = Json::parse(R"([{"mesh": 0, "children": [1]}, {"mesh": 1}])");
    Assembly assembly = Import(model);
    EXPECT_EQ(Tree(assembly), (Names{"Assembly 1@-1:-1", "Tetra@0:0", "Twin@0:0"}));
    EXPECT_EQ(assembly.parts.size(), 1U);
    model["meshes"][1]["primitives"][0]["mode"] = 6;  // the same bytes as a fan are another body
    EXPECT_EQ(Import(model).parts.size(), 2U);
}

TEST_F(GltfReader, JoinsPrimitivesAndTurnsStripsAndFansIntoTriangles) {
    struct Case {
        int mode;
        std::vector<std::uint16_t> indices;
        std::vector<std::uint32_t> triangles;
    };
    const std::vector<Case> cases{{4, {0, 1, 2, 3, 3, 1}, {0, 1, 2}},  // the second has no area
                                  {5, {0, 1, 2, 3}, {0, 1, 2, 1, 3, 2}},
                                  {6, {0, 1, 2, 3}, {0, 1, 2, 0, 2, 3}}};
    for (const Case& each : cases) {
        Json model = Tetrahedron();
        const std::size_t indices =
            AddAccessor(model, BytesOf(each.indices), 5123, "SCALAR", each.indices.size());
        Json primitive{{"attributes", {{"POSITION", 0}}}, {"indices", indices}, {"mode", each.mode}};
        Json lines{{"attributes", {{"POSITION", 0}}}, {"mode", 1}};
        model["meshes"][0]["primitives"] = Json::array({primitive, lines});
        EXPECT_EQ(Import(model).parts[0].indices, each.triangles) << "mode " << each.mode;
        model["meshes"][0]["primitives"].push_back(primitive);
        EXPECT_EQ(Import(model).parts[0].indices.size(), 2 * each.triangles.size());
        EXPECT_LE(Import(model).parts[0].positions.size(), 12U);  // vertices at one place are one
    }
}

TEST_F(GltfReader, PutsSparseElementsIn) {
    Json model = Tetrahedron();
    const std::size_t places = AddView(model, BytesOf<std::uint16_t>({1, 3}));
    const std::size_t values = AddView(model, BytesOf<float>({8, 0, 0, 0, 0, 9}));
    model["accessors"][0]["sparse"] = {{"count", 2},
                                       {"indices", {{"bufferView", places}, {"componentType", 5123}}},
                                       {"values", {{"bufferView", values}}}};
    EXPECT_EQ(Import(model).parts[0].positions, (std::vector<float>{0, 0, 0, 0, 1, 0, 8, 0, 0, 0, 0, 9}));
}

TEST_F(GltfReader, UnpacksMeshopt) {
    Json model = Tetrahedron();
    const std::vector<std::uint16_t> corners{0, 0, 0, 0, 5, 0, 0, 0, 0, 6, 0, 0, 0, 0, 7, 0};
    const std::vector<std::uint32_t> triangles{0, 2, 1, 0, 1, 3, 1, 2, 3, 0, 3, 2};
    std::string vertices(meshopt_encodeVertexBufferBound(4, 8), '\0');
    vertices.resize(meshopt_encodeVertexBuffer(reinterpret_cast<unsigned char*>(vertices.data()),
                                               vertices.size(), corners.data(), 4, 8));
    std::string indices(meshopt_encodeIndexBufferBound(12, 4), '\0');
    indices.resize(meshopt_encodeIndexBuffer(reinterpret_cast<unsigned char*>(indices.data()), indices.size(),
                                             triangles.data(), 12));
    const auto pack = [&](std::size_t view, const std::string& bytes, const char* mode, int stride,
                          int count) {
        const std::size_t packed = AddView(model, bytes);
        Json packing{{"buffer", 0},
                     {"byteOffset", model["bufferViews"][packed]["byteOffset"]},
                     {"byteLength", bytes.size()},
                     {"byteStride", stride},
                     {"count", count},
                     {"mode", mode}};
        model["bufferViews"][view] = {{"buffer", 1},
                                      {"byteLength", stride * count},
                                      {"extensions", {{"EXT_meshopt_compression", packing}}}};
    };
    pack(0, vertices, "ATTRIBUTES", 8, 4);
    pack(1, indices, "TRIANGLES", 2, 12);
    model["bufferViews"][0]["byteStride"] = 8;
    model["accessors"][0]["componentType"] = 5123;
    model["buffers"].push_back({{"byteLength", 56}});
    model["extensionsRequired"] = {"EXT_meshopt_compression", "KHR_mesh_quantization"};
    EXPECT_EQ(Import(model).parts[0].positions, (std::vector<float>{0, 0, 0, 0, 6, 0, 5, 0, 0, 0, 0, 7}));
    for (const std::size_t size : {vertices.size() - 1, std::size_t{0}}) {
        model["bufferViews"][0]["extensions"]["EXT_meshopt_compression"]["byteLength"] = size;
        EXPECT_THAT(Complaint(Save(model)), testing::HasSubstr("packed bytes are damaged"));
    }
}

TEST_F(GltfReader, UnpacksDraco) {
    draco::TriangleSoupMeshBuilder builder;
    builder.Start(1);
    const int positions = builder.AddAttribute(draco::GeometryAttribute::POSITION, 3, draco::DT_FLOAT32);
    builder.SetAttributeValuesForFace(positions, draco::FaceIndex(0), &m_corners[3], &m_corners[6],
                                      &m_corners[9]);
    draco::EncoderBuffer packed;
    draco::Encoder().EncodeMeshToBuffer(*builder.Finalize(), &packed);
    Json model = Tetrahedron();
    const std::size_t view = AddView(model, std::string(packed.data(), packed.size()));
    model["extensionsRequired"] = {"KHR_draco_mesh_compression"};
    Json& packing = model["meshes"][0]["primitives"][0]["extensions"]["KHR_draco_mesh_compression"];
    packing = {{"bufferView", view}, {"attributes", {{"POSITION", positions}}}};
    EXPECT_EQ(Import(model).parts[0].positions, std::vector<float>(m_corners.begin() + 3, m_corners.end()));
    packing["attributes"]["POSITION"] = 5;
    EXPECT_THAT(Complaint(Save(model)), testing::HasSubstr("no positions"));
    model["bufferViews"][view]["byteLength"] = packed.size() / 2;
    EXPECT_THAT(Complaint(Save(model)), testing::HasSubstr("packed geometry is damaged"));
}

}  // namespace
}  // namespace zrsheet
