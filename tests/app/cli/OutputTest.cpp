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
    const std::pair<const char*, const char*> rows[] = {{"absent/sheet.svg", "Create the folder first"},
                                                        {"file/sheet.svg", "Create the folder first"},
                                                        {"folder.svg", "Name a file"}};
    for (const auto& [target, advice] : rows) {
        SCOPED_TRACE(target);
        const auto refused = [&](const Names& options, const char* culprit) {
            Names arguments{"make", "wedge.gltf", "--size", "400x300"};
            arguments.insert(arguments.end(), options.begin(), options.end());
            ExpectRefused(arguments, culprit);
        };
        refused({"-o", target}, advice);
        refused({"-o", "good.svg", "-o", target, "-o", "good.png"}, target);
        refused({"-o", "good.svg", "--report", target}, target);
    }
}

}  // namespace
}  // namespace zrsheet
