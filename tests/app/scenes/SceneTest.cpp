// Golden scenes: each folder has a script, what it prints, and maybe the report that it writes. Their scripts
// use every command. tools/bless.py accepts new results.

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "app/command/CommandTable.h"
#include "app/command/ScriptReader.h"
#include "tests/app/cli/CliFixture.h"

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

const fs::path kScenes = ZR_SCENES;
constexpr std::string_view kExample = "example-";

/// Models by others; the environment variable ZR_MODELS names another folder.
fs::path ModelByOthers(const std::string& name) {
    const char* folder = std::getenv("ZR_MODELS");
    return fs::path(folder != nullptr ? folder : ZR_MODELS) / "glb" / name;
}

std::vector<std::string> SceneNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kScenes)) {
        if (entry.is_directory()) names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool IsExample(std::string_view scene) { return scene.starts_with(kExample); }

/// That of the scene, or the example that it is named after.
fs::path ScriptOf(const std::string& scene) {
    if (!IsExample(scene)) return kScenes / scene / "script.zrs";
    return fs::path(ZR_EXAMPLES) / (scene.substr(kExample.size()) + ".zrs");
}

bool IsBlessing() { return std::getenv("ZR_BLESS") != nullptr; }

class Scene : public CliFixture, public testing::WithParamInterface<std::string> {
protected:
    static fs::path Expected(const std::string& file) { return kScenes / GetParam() / file; }

    /// Puts the script and the models that it speaks of into the folder; false when one is not there.
    bool Prepare() {
        m_script = Read(ScriptOf(GetParam()).string());
        Write("script.zrs", m_script);
        Write("sample.glb", SampleBytes());
        for (const char* others : {"as1-oc-214.glb", "as1_x32_scale.glb"}) {
            if (m_script.find(others) == std::string::npos) continue;
            if (!fs::exists(ModelByOthers(others))) return false;
            fs::copy(ModelByOthers(others), In(others));
        }
        return true;
    }

    void Compare(const std::string& file, const std::string& content) const {
        const fs::path expected = Expected(file);
        if (IsBlessing()) std::ofstream(expected, std::ios::binary) << content;
        EXPECT_EQ(content, Read(expected.string())) << "tools/bless.py accepts the new " << expected;
    }

    std::string m_script;
};

TEST_P(Scene, PrintsWhatItDid) {
    if (!Prepare()) GTEST_SKIP() << "its model, by others, is not there";
    const CliResult result = Run({"run", "--keep-going", "script.zrs"});
    EXPECT_TRUE(result.exitCode == 0 || !IsExample(GetParam())) << "what users are shown works";
    Compare("expected.txt", result.out + (result.err.empty() ? "" : "--- complaints:\n" + result.err) +
                                "--- exit code " + std::to_string(result.exitCode) + "\n");
    if (!fs::exists(In("report.json"))) return;
    auto report = nlohmann::ordered_json::parse(Read(In("report.json")));
    report.erase("seconds");  // differ from run to run
    Compare("report.json", report.dump(2) + "\n");
}

/// Goes on where the script ends, and draws no pictures.
std::string WithoutOutputs(const std::string& script) {
    std::istringstream lines(script);
    std::string rest;
    for (std::string line; std::getline(lines, line);) {
        const bool isOutput =
            line.starts_with("export") || line.starts_with("report") || line.starts_with("quit");
        rest += (isOutput ? "" : line) + "\n";
    }
    return rest;
}

// After undo and redo of everything the project's bytes are those of before, and those of what is opened
// again.
TEST_P(Scene, IsTheSameWhenDoneAgainAndWhenOpenedAgain) {
    if (!Prepare()) GTEST_SKIP() << "its model, by others, is not there";
    Write("script.zrs",
          WithoutOutputs(m_script) +
              "redo all\nsave before.zrsheet\nundo all\nsave undone.zrsheet\nredo all\nsave again.zrsheet\n"
              "open again.zrsheet\nsave opened.zrsheet\nquit\n");
    static_cast<void>(Run({"run", "--keep-going", "script.zrs"}));
    const std::string before = Read(In("before.zrsheet"));
    EXPECT_NE(before, "");
    EXPECT_EQ(Read(In("again.zrsheet")), before);
    EXPECT_EQ(Read(In("opened.zrsheet")), before);
}

std::string NameOf(const testing::TestParamInfo<std::string>& scene) {
    std::string name = scene.param;
    std::erase(name, '-');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, Scene, testing::ValuesIn(SceneNames()), NameOf);

TEST(Scenes, UseEveryCommand) {
    std::set<std::string_view> unused;
    for (const CommandTopic& topic : CommandTable::Get().Topics()) {
        for (const Command& command : topic.commands) unused.insert(command.name);
    }
    for (const std::string& scene : SceneNames()) {
        std::ifstream script(ScriptOf(scene));
        ScriptReader reader(script);
        std::vector<Word> words;
        for (bool goesOn = true; goesOn;) {
            try {
                goesOn = reader.Next(words);
                if (goesOn) unused.erase(CommandTable::Get().Resolve(words).name);
            } catch (const std::exception&) {
                // A mistake that the scene is about.
            }
        }
    }
    EXPECT_TRUE(unused.empty()) << testing::PrintToString(unused);
}

}  // namespace
}  // namespace zrsheet
