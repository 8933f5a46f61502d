#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/app/cli/CliFixture.h"

namespace zrsheet {
namespace {

using Output = CliFixture;
using Names = std::vector<std::string>;

// All formats, the report, and nothing else; the first words of each tell that it is what its name says.
TEST_F(Output, WritesAllThatIsAskedForAndNothingElse) {
    Write("wedge.gltf", SmallModel());
    const CliResult result = Run({"make", "wedge.gltf", "-o", "a.svg", "-o", "b.PNG", "-o", "c.json", "-o",
                                  "d.csv", "--report", "r.json", "--size", "400x300"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(Files(), (Names{"a.svg", "b.PNG", "c.json", "d.csv", "r.json", "wedge.gltf"}));
    EXPECT_NE(Read(In("a.svg")).find("<svg"), std::string::npos);
    EXPECT_EQ(Read(In("b.PNG")).substr(1, 3), "PNG");
    EXPECT_NE(Read(In("d.csv")).find("Wedge"), std::string::npos);
    EXPECT_EQ(nlohmann::json::parse(Read(In("c.json"))).dump().find("Wedge") == std::string::npos, false);
    const auto report = nlohmann::json::parse(Read(In("r.json")));
    EXPECT_EQ(report["model"]["triangles"], 4);
    EXPECT_EQ(report["callouts"].size(), 1U);
    EXPECT_GT(report["seconds"]["write"], 0.0);
}

TEST_F(Output, TargetsThatCannotBeWrittenAreNamedAndNoneIsWritten) {
    Write("wedge.gltf", SmallModel());
    Write("file", "no folder");
    std::filesystem::create_directory(In("folder.svg"));
    for (const char* target : {"absent/sheet.svg", "file/sheet.svg", "folder.svg"}) {
        SCOPED_TRACE(target);
        const std::vector<std::string> make{"make", "wedge.gltf", "--size", "400x300"};
        const auto with = [&make](const Names& options) {
            auto arguments = make;
            arguments.insert(arguments.end(), options.begin(), options.end());
            return arguments;
        };
        ExpectRefused(with({"-o", target}), target);
        ExpectRefused(with({"-o", "good.svg", "-o", target, "-o", "good.png"}), target);
        ExpectRefused(with({"-o", "good.svg", "--report", target}), target);
    }
}

// The same bytes from one run to the next and for any number of threads, all formats.
TEST_F(Output, IsTheSameOnOneThreadAndOnFour) {
    Write("sample.glb", SampleBytes());
    const auto make = [this](const std::string& stem, const std::string& threads) {
        const CliResult result = Run({"make", "sample.glb", "-o", stem + ".svg", "-o", stem + ".png", "-o",
                                      stem + ".json", "-o", stem + ".csv", "--size", "400x300", "--threads",
                                      threads, "--numbering", "hierarchical", "--combine"});
        EXPECT_EQ(result.exitCode, 0) << result.err;
    };
    make("one", "1");
    make("four", "4");
    make("again", "4");
    for (const char* extension : {".svg", ".png", ".json", ".csv"}) {
        const std::string one = Read(In(std::string("one") + extension));
        EXPECT_FALSE(one.empty());
        EXPECT_TRUE(one == Read(In(std::string("four") + extension)))
            << extension << " depends on the threads";
        EXPECT_TRUE(one == Read(In(std::string("again") + extension)))
            << extension << " changes from run to run";
    }
}

}  // namespace
}  // namespace zrsheet
