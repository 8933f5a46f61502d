// What of the paper can be said alone.

#include "app/command/Session.h"
#include "tests/app/command/ScriptFixture.h"

namespace zrsheet {
namespace {

using PaperTest = ScriptFixture;

TEST_F(PaperTest, IsTurnedOrChangedWhileAllElseStays) {
    RunOnRig("create\n");
    const struct {
        const char* command;
        PaperSize size;
        PaperTurn turn;
        ListPlace list;
    } rows[] = {
        {"page title=Rig", PaperSize::None, PaperTurn::Landscape, ListPlace::Sheet},
        {"page portrait list=page", PaperSize::A4, PaperTurn::Portrait, ListPlace::Page},
        {"page letter", PaperSize::Letter, PaperTurn::Portrait, ListPlace::Page},
        {"page landscape", PaperSize::Letter, PaperTurn::Landscape, ListPlace::Page},
        {"page none portrait", PaperSize::None, PaperTurn::Portrait, ListPlace::Page},
        {"page list=none", PaperSize::None, PaperTurn::Portrait, ListPlace::None},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Run(row.command), "") << row.command;
        const PaperChoice paper = m_session->Doc().Paper();
        EXPECT_EQ(paper.size, row.size) << row.command;
        EXPECT_EQ(paper.turn, row.turn) << row.command;
        EXPECT_EQ(paper.list, row.list) << row.command;
        EXPECT_EQ(paper.title, "Rig") << row.command;
    }
    EXPECT_NE(Run("page portrait a4").find("'a4'"), std::string::npos) << "nothing is left unread";
}

}  // namespace
}  // namespace zrsheet
