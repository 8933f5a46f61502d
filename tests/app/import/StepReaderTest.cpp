#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <regex>
#include <sstream>

#include "app/import/process/AssemblyStream.h"

#include "tests/app/import/CadSample.h"
#include "tests/app/import/ImportFixture.h"
#include "tests/app/import/SolidChecks.h"

namespace zrsheet {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// One line a node: depth as dots, name, product, colour in tenths.
std::string Outline(const Assembly& assembly) {
    std::ostringstream lines;
    for (const AssemblyNode& node : assembly.nodes) {
        for (int above = node.parent; above >= 0;
             above = assembly.nodes[static_cast<std::size_t>(above)].parent)
            lines << '.';
        lines << node.name << '|' << node.product;
        if (node.color) {
            for (const float share : *node.color) lines << ' ' << std::lround(share * 10.0F);
        }
        lines << '\n';
    }
    return lines.str();
}

const AssemblyPart& PartNamed(const Assembly& assembly, const std::string& name) {
    const auto found = std::ranges::find(assembly.parts, name, &AssemblyPart::name);
    EXPECT_NE(found, assembly.parts.end()) << name;
    return *found;
}

class StepReader : public ImportFixture {
protected:
    std::filesystem::path WriteSample(const std::string& name, const StepChoices& choices = {}) const {
        const std::filesystem::path file = Write(name, "");
        WriteStepSample(file, choices);
        return file;
    }
    /// The sample with more entities at its end. "@PRODUCT" in them stands for the definition of the bolt,
    /// "@USAGE" for its use in the bolt set, "@CONTEXT" for a context of representations.
    std::filesystem::path WriteSampleWith(std::string entities) const {
        std::string text = test::ReadFile(WriteSample("plain.stp"));
        text = std::regex_replace(text, std::regex("\n *"), "");
        const auto id = [&text](const std::string& pattern) {
            std::smatch found;
            EXPECT_TRUE(std::regex_search(text, found, std::regex("#([0-9]+) = " + pattern))) << pattern;
            return "#" + found.str(1);
        };
        const std::string formation =
            id("PRODUCT_DEFINITION_FORMATION\\('','',(" + id("PRODUCT\\('Bolt'") + ")\\)");
        const std::string product = id("PRODUCT_DEFINITION\\('design',''," + formation);
        const std::string usage = id("NEXT_ASSEMBLY_USAGE_OCCURRENCE\\([^;]*" + product + ",\\$\\)");
        entities = std::regex_replace(entities, std::regex("@PRODUCT"), product);
        entities = std::regex_replace(entities, std::regex("@USAGE"), usage);
        entities =
            std::regex_replace(entities, std::regex("@CONTEXT"), id("\\( ?GEOMETRIC_REPRESENTATION_CONTEXT"));
        return Write("more.stp", text.insert(text.rfind("ENDSEC"), entities));
    }
};

constexpr const char* kOutline =
    "Clamp|Clamp\n"
    ".the block|Gr\u00f6\u00dfe 2 4 6\n"
    ".left|Bolt set\n"
    "..Bolt|Bolt 10 0 0\n"
    "..Washer|Washer\n"
    ".right|Bolt set\n"
    "..Bolt|Bolt 10 0 0\n"
    "..Washer|Washer\n";

// The same assembly through every application protocol and from any unit.
TEST_F(StepReader, ReadsStructureNamesAndColoursInMetresWithYUp) {
    const std::vector<StepChoices> choices{{"AP203", "MM"}, {"AP214IS", "INCH"}, {"AP242DIS", "M"}};
    for (const StepChoices& each : choices) {
        SCOPED_TRACE(each.schema + " in " + each.unit);
        const Assembly read = ImportModel(WriteSample("clamp.glb", each));
        EXPECT_EQ(Outline(read), kOutline);
        EXPECT_THAT(read.warnings, testing::IsEmpty());
        ASSERT_EQ(read.parts.size(), 3U);
        EXPECT_NEAR(Volume(read.parts[1]), 25 * 30 * 3.14159, 25 * 30 * 0.04);
        // The right set's place in the root: up is Y, and what lay behind in Y lies behind in -Z.
        const auto& root = read.nodes[0].matrix;
        EXPECT_THAT(std::vector<double>(root.begin(), root.begin() + 12),
                    ElementsAre(1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0));
        const auto& right = read.nodes[5].matrix;
        EXPECT_NEAR(right[12], 0.08, 1e-9);
        EXPECT_NEAR(right[13], 0.03, 1e-9);
        EXPECT_NEAR(right[14], 0.02, 1e-9);
    }
}

TEST_F(StepReader, MakesClosedPartsWithTheEdgesOfTheirBodies) {
    const Assembly read = ImportModel(WriteSample("clamp.stp"));
    for (const AssemblyPart& part : read.parts) ExpectClosed(part);
    const auto smooth = [](const AssemblyPart& part) {
        return std::ranges::count_if(part.edges, &AssemblyEdge::isSmooth);
    };
    const AssemblyPart& block = PartNamed(read, "Gr\u00f6\u00dfe");
    EXPECT_EQ(block.edges.size(), 14U);  // of the box, and two circles; the hole's seam is none
    EXPECT_EQ(smooth(block), 0);
    const AssemblyPart& washer = PartNamed(read, "Washer");
    EXPECT_EQ(washer.edges.size(), 8U);
    EXPECT_EQ(smooth(washer), 8);
    // A circle of radius 5 lies within the promised distance, and its ends meet.
    const AssemblyPart& bolt = PartNamed(read, "Bolt");
    ASSERT_EQ(bolt.edges.size(), 2U);
    const auto& circle = bolt.edges[0].vertices;
    EXPECT_EQ(circle.front(), circle.back());
    EXPECT_GE(circle.size(), 25U);
    for (const std::uint32_t vertex : circle)
        EXPECT_NEAR(std::hypot(bolt.positions[vertex * 3], bolt.positions[vertex * 3 + 1]), 0.005, 1e-8);
}

TEST_F(StepReader, TurnsSphereFacesThatCoverTheirNeighbours) {
    const std::filesystem::path file = Write("dome.stp", "");
    WriteDome(file);
    const AssemblyPart dome = PartNamed(ImportModel(file), "Dome");
    ExpectClosed(dome);
    EXPECT_NEAR(Volume(dome), 2094.4, 20.0);  // two thirds of pi times the cube of the radius
    // The border of the base is sharp; the two round faces go over into each other.
    const auto isSmooth = [](const AssemblyEdge& edge) { return edge.isSmooth; };
    EXPECT_EQ(std::ranges::count_if(dome.edges, isSmooth), 1);
    EXPECT_EQ(dome.edges.size(), 3U);
}

TEST_F(StepReader, ReadsTheSameBytesTwice) {
    const std::filesystem::path file = WriteSample("clamp.stp");
    EXPECT_EQ(WriteAssembly(ImportModel(file)), WriteAssembly(ImportModel(file)));
}

TEST_F(StepReader, ReadsWhatUsersSayOfProductsAndLeavesOutChecks) {
    const Assembly read =
        ImportModel(WriteSampleWith("#9001=PROPERTY_DEFINITION('user defined attribute','',@PRODUCT);"
                                    "#9002=DESCRIPTIVE_REPRESENTATION_ITEM('Material','Steel');"
                                    "#9003=(MASS_UNIT()NAMED_UNIT(*)SI_UNIT(.KILO.,.GRAM.));"
                                    "#9004=MEASURE_REPRESENTATION_ITEM('Mass',MASS_MEASURE(2.5),#9003);"
                                    "#9005=REPRESENTATION('',(#9002,#9004),@CONTEXT);"
                                    "#9006=PROPERTY_DEFINITION_REPRESENTATION(#9001,#9005);"
                                    "#9011=PROPERTY_DEFINITION('geometric_validation_property','',@PRODUCT);"
                                    "#9012=DESCRIPTIVE_REPRESENTATION_ITEM('volume','1');"
                                    "#9013=REPRESENTATION('',(#9012),@CONTEXT);"
                                    "#9014=PROPERTY_DEFINITION_REPRESENTATION(#9011,#9013);"
                                    "#9021=PROPERTY_DEFINITION('Torque','',@USAGE);"
                                    "#9022=DESCRIPTIVE_REPRESENTATION_ITEM('','20 Nm');"
                                    "#9023=REPRESENTATION('',(#9022),@CONTEXT);"
                                    "#9024=PROPERTY_DEFINITION_REPRESENTATION(#9021,#9023);"));
    EXPECT_THAT(read.nodes[3].properties,
                ElementsAre(testing::Pair("Torque", "20 Nm"), testing::Pair("Material", "Steel"),
                            testing::Pair("Mass", "2.5 kg")));
    EXPECT_EQ(read.nodes[6].properties, read.nodes[3].properties);
}

TEST_F(StepReader, NamesTheFilesThatAreMissingOrDamagedBesideIt) {
    const std::filesystem::path file = WriteSample("main.stp", {"AP214IS", "MM", true});
    const Assembly whole = ImportModel(file);
    EXPECT_EQ(whole.parts.size(), 3U);
    EXPECT_THAT(whole.warnings, testing::IsEmpty());
    ASSERT_GE(whole.externalFiles.size(), 3U);
    EXPECT_THAT(whole.externalFiles, testing::Contains("part-Bolt.stp"));
    std::filesystem::remove(file.parent_path() / "part-Bolt.stp");
    Write("part-Washer.stp", test::ReadFile(file.parent_path() / "part-Washer.stp").substr(0, 2000));
    const Assembly rest = ImportModel(file);
    EXPECT_EQ(rest.parts.size(), 1U);
    EXPECT_THAT(rest.warnings,
                testing::Contains("\"part-Bolt.stp\" is not beside it; the parts in that file are missing"));
    EXPECT_THAT(rest.warnings,
                testing::Contains("\"part-Washer.stp\" is damaged; the parts in that file are missing"));
}

// By other programs, in two formats: what the one says of the structure the other says too.
TEST_F(StepReader, FindsInAModelByOthersWhatItsMeshHas) {
    const char* given = std::getenv("ZR_MODELS");
    const std::filesystem::path models = given != nullptr ? given : ZR_MODELS;
    if (!std::filesystem::exists(models)) GTEST_SKIP() << "no folder of models; set ZR_MODELS";
    const Assembly step = ImportModel(models / "step" / "as1-oc-214.stp");
    const Assembly mesh = ImportModel(models / "glb" / "as1-oc-214.glb");
    std::map<std::string, std::pair<int, int>> counts;
    for (const AssemblyNode& node : step.nodes)
        if (node.part >= 0) ++counts[step.parts[static_cast<std::size_t>(node.part)].name].first;
    for (const AssemblyNode& node : mesh.nodes)
        if (node.part >= 0) ++counts[mesh.parts[static_cast<std::size_t>(node.part)].name].second;
    const std::map<std::string, std::pair<int, int>> expected{
        {"bolt", {6, 6}}, {"l-bracket", {2, 2}}, {"nut", {8, 8}}, {"plate", {1, 1}}, {"rod", {1, 1}}};
    EXPECT_EQ(counts, expected);
    ASSERT_EQ(step.nodes.size(), mesh.nodes.size());
    for (std::size_t i = 0; i < step.parts.size(); ++i) {
        const AssemblyPart& part = step.parts[i];
        EXPECT_NEAR(Volume(part) / Volume(PartNamed(mesh, part.name)), 1.0, 0.01) << part.name;
    }
}

TEST_F(StepReader, RefusesWhatHasNoBodies) {
    const std::string text = test::ReadFile(WriteSample("clamp.stp"));
    EXPECT_THAT(Complaint(Write("cut.stp", text.substr(0, text.size() / 2))),
                HasSubstr("STEP text is damaged"));
    const std::string header = text.substr(0, text.find("DATA;"));
    EXPECT_THAT(Complaint(Write("empty.stp", header + "DATA;\nENDSEC;\nEND-ISO-10303-21;\n")),
                HasSubstr("no triangles"));
    EXPECT_THAT(Complaint("missing.stp"), HasSubstr("no such file"));
}

}  // namespace
}  // namespace zrsheet
