#include <gmock/gmock.h>

#include "app/import/reading/ModelFormat.h"
#include "tests/app/import/CadSample.h"
#include "tests/app/import/ImportFixture.h"
#include "tests/app/import/SolidChecks.h"

namespace zrsheet {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class OtherFormats : public ImportFixture {
protected:
    // A tetrahedron with legs of 1000 mm along the axes.
    static std::string StlText() {
        const char* const faces[] = {"0 0 0 0 1e3 0 1000 0 0", "0 0 0 1000 0 0 0 0 +1000",
                                     "1000 0 0 0 1000 0 0 0 1000", "0 0 0 0 0 1000 0 1000 0"};
        std::string text = "solid My Wedge\n";
        for (const std::string face : faces) {
            text += "facet normal 0 0 0\n outer loop\n";
            std::istringstream numbers(face);
            std::string x, y, z;
            while (numbers >> x >> y >> z) text.append("  vertex " + x + " " + y + " " + z + "\r\n");
            text += " endloop\nendfacet\n";
        }
        return text + "endsolid My Wedge\n";
    }
    static std::string StlBinary() {
        const std::vector<float> faces[] = {{0, 0, 0, 0, 1000, 0, 1000, 0, 0},
                                            {0, 0, 0, 1000, 0, 0, 0, 0, 1000},
                                            {1000, 0, 0, 0, 1000, 0, 0, 0, 1000},
                                            {0, 0, 0, 0, 0, 1000, 0, 1000, 0}};
        std::string bytes("solid in a header that is no text");
        bytes.resize(80, '\0');
        bytes += BytesOf<std::uint32_t>({4});
        for (const auto& face : faces) bytes += std::string(12, '\0') + BytesOf(face) + std::string(2, '\0');
        return bytes;
    }
};

TEST_F(OtherFormats, AreKnownByTheirContent) {
    const std::string iges = std::string(72, ' ') + "S      1\n";
    const std::vector<std::pair<std::string, ModelFormat>> cases{
        {"glTF\x02", ModelFormat::Gltf},
        {"\xEF\xBB\xBF {\"asset\"", ModelFormat::Gltf},
        {"ISO-10303-21;", ModelFormat::Step},
        {"\r\n /* made by */ /**/ISO-10303-21;", ModelFormat::Step},
        {iges, ModelFormat::Iges},
        {"solid x\nfacet", ModelFormat::Stl},
        {StlBinary(), ModelFormat::Stl},
        {StlBinary().replace(0, 5, "HEADE").append("x"), ModelFormat::Unknown},
        {"/* never closed", ModelFormat::Unknown},
        {std::string(72, ' ') + "S      7\n", ModelFormat::Unknown},
        {"PK\x03\x04", ModelFormat::Unknown},
        {"", ModelFormat::Unknown},
    };
    for (const auto& [bytes, format] : cases) EXPECT_EQ(FormatOf(bytes), format) << bytes;
}

TEST_F(OtherFormats, IncludeStlAsTextAndBytes) {
    for (const auto& [bytes, name] : {std::pair{StlText(), "My Wedge"}, std::pair{StlBinary(), "wedge"}}) {
        const Assembly read = ImportModel(Write("wedge.stl", bytes));
        ASSERT_EQ(read.nodes.size(), 1U);
        EXPECT_EQ(read.nodes[0].name, name);
        EXPECT_THAT(read.nodes[0].matrix, ElementsAre(1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1));
        EXPECT_EQ(read.parts[0].positions.size(), 12U);
        ExpectClosed(read.parts[0]);
        EXPECT_NEAR(Volume(read.parts[0]), 1e9 / 6.0, 1e3);
    }
    const std::string text = StlText();
    EXPECT_THAT(Complaint(Write("a.stl", text.substr(0, text.find("1000")) + "x")),
                HasSubstr("vertex 2 is damaged"));
    EXPECT_THAT(Complaint(Write("b.stl", text.substr(0, text.find("endloop")) + "vertex 1 2 3")),
                HasSubstr("cut off"));
    EXPECT_THAT(Complaint(Write("c.stl", "solid vertex 1e39 0 0 vertex 0 0 0 vertex 0 1 0")),
                HasSubstr("vertex 0"));
    EXPECT_THAT(Complaint(Write("d.stl", "solid nothing")), HasSubstr("no triangles"));
}

TEST_F(OtherFormats, IncludeIges) {
    const std::filesystem::path file = Write("block.igs", "");
    WriteIgesSample(file);
    const Assembly read = ImportModel(file);
    ASSERT_EQ(read.parts.size(), 1U);
    EXPECT_NEAR(std::abs(Volume(read.parts[0])), (100 * 60 - 314.159) * 20, 30);
    ASSERT_TRUE(read.nodes.back().color);
    EXPECT_NEAR((*read.nodes.back().color)[2], 0.6, 0.01);
}

}  // namespace
}  // namespace zrsheet
