#include "app/command/Completer.h"

#include <filesystem>

#include "tests/app/command/ScriptFixture.h"

namespace zrsheet {
namespace {

class CompleterTest : public ScriptFixture {
protected:
    /// The candidates, with a mark behind those that end their word.
    std::string Complete(const std::string& line) {
        const Completion completion = Completer(CommandTable::Get(), *m_session).Complete(line);
        std::string text = std::to_string(completion.begin) + ":";
        for (const auto& candidate : completion.candidates) {
            text += " " + candidate.text + (candidate.endsWord ? "$" : "");
        }
        return text;
    }
};

struct Row {
    const char* line;
    const char* candidates;
};

TEST_F(CompleterTest, KnowsWhatMayStandWhere) {
    std::filesystem::create_directory("folder");
    Write("folder/a b.glb", "");
    Write(".hidden", "");
    RunOnRig(
        "create\ntemplate define count '{quantity}'\ninset add of 1,1 at 2,2\nsymbol add cross at 0,0,0\n");
    const std::vector<Row> rows{
        {"hi", "0: hidden$ hide$ history$"},
        {"  hid", "2: hidden$ hide$"},
        {"frob", "0:"},
        {"item ",
         "5: add$ clear$ join$ kit$ leave$ list$ lock$ number$ remove$ rename$ tag$ unlock$ update$"},
        {"item re", "5: remove$ rename$"},
        {"help item re", "10: remove$ rename$"},
        {"camera ", "7: back$ bottom$ front$ iso$ left$ pan$ right$ top$ zoom$"},
        {"hidden o", "7: off$ on$"},
        {"hide L", "5: 'Left Wedge'$"},
        {"hide 'Right W", "5: 'Right Wedge'$"},
        {"hide \"Right W", "5: \"Right Wedge\"$"},
        {"hide P", "5: Pin$"},
        {"hide /", "5: /Frame$ /Frame/ /Pin$"},
        {"hide /Frame/L", "5: '/Frame/Left Wedge'$"},
        {"hide Pin # P", "0:"},
        {"move Pin b", "9: by$"},
        {"create lead", "7: leaders="},
        {"layout pattern=s", "7: pattern=sides$ pattern=silhouette$"},
        {"layout mode=", "7: mode=optimal$ mode=simple$"},
        {"picture h", "8: hidden="},
        {"picture hidden=", "8: hidden=no$ hidden=yes$"},
        {"page a", "5: a3$ a4$"},
        {"symbol add d", "11: diamond$"},
        {"create items template=c", "13: template=count$"},
        {"align dis", "6: distribute-x$ distribute-y$"},
        {"align left callout-", "11: callout-1$ callout-2$"},
        {"item tag ", "9: 1$ 2$"},
        {"template use ", "13: callout-1$ callout-2$ count$ label$"},
        {"inset hide ", "11: inset-1$"},
        {"symbol remove ", "14: symbol-1$"},
        {"language ", "9: de$ en$ es$ fr$ ja$"},
        {"import r", "7: rig.gltf$"},
        {"import fo", "7: folder/"},
        {"import folder/a", "7: 'folder/a b.glb'$"},
        {"import .h", "7: .hidden$"},
    };
    for (const Row& row : rows) EXPECT_EQ(Complete(row.line), row.candidates) << row.line;
}

TEST_F(CompleterTest, DoesWithoutAnIllustration) {
    EXPECT_EQ(Complete("hide "), "5: all$");
    EXPECT_EQ(Complete("template use "), "13:");
}

}  // namespace
}  // namespace zrsheet
