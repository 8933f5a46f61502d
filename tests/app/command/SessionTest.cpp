#include "app/command/Session.h"

#include <gmock/gmock.h>

#include "tests/app/command/ScriptFixture.h"

namespace zrsheet {
namespace {

using SessionTest = ScriptFixture;

struct Row {
    const char* commands;
    bool isModified;
};

// A shell that takes saved work for unsaved one is a nuisance; the other way round work is lost.
TEST_F(SessionTest, KnowsWhatIsSaved) {
    RunOnRig("create\n");
    EXPECT_TRUE(m_session->IsModified());
    Run("save a.zrsheet\n");
    const std::vector<Row> rows{
        {"list items", false},
        {"hide Pin", true},
        {"undo", false},
        {"redo", true},
        {"undo\nhide Pin", true},
        {"save", false},
        {"undo", true},
        {"redo", false},
        {"undo\nmove Pin by 0,1,0", true},  // what was saved cannot be reached any more
        {"undo", true},
        {"save", false},
        {"show Pin", false},  // changes nothing
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Run(row.commands).find("s:"), std::string::npos) << row.commands;
        EXPECT_EQ(m_session->IsModified(), row.isModified) << row.commands;
    }
}

TEST_F(SessionTest, AsksBeforeChangesAreLost) {
    Session::Answer answer = Session::Answer::Cancel;
    std::string question;
    m_session.reset();
    m_session = std::make_unique<Session>(Session::Surroundings{
        m_out, {}, [&](const std::string& asked) { return question = asked, answer; }, 2});
    RunOnRig("hide Pin\nquit\n");
    EXPECT_EQ(question, "Save the changes to rig?");
    EXPECT_FALSE(m_session->IsQuitting()) << "cancelled";
    answer = Session::Answer::Save;
    EXPECT_EQ(
        Run("quit"),
        "s:1: command 'quit': the illustration has no file yet; give it one with 'save FILE.zrsheet'\n");
    EXPECT_FALSE(m_session->IsQuitting());
    Run("save a.zrsheet\nshow Pin\nquit\n");
    EXPECT_TRUE(m_session->IsQuitting());
    EXPECT_FALSE(m_session->IsModified());
}

// Wherever the author loses patience, while callouts are made or after.
TEST_F(SessionTest, ChangesNothingWhenInterrupted) {
    int patience = 0;
    m_session.reset();
    m_session = std::make_unique<Session>(
        Session::Surroundings{m_out, {}, {}, 2, {}, [&patience] { return patience >= 0 && --patience < 0; }});
    patience = -1;
    RunOnRig("create Pin\n");
    const std::string before = Dump();
    for (const int calls : {1, 2, 3}) {
        patience = calls;
        EXPECT_TRUE(Run("create\n").ends_with("s:1: command 'create': interrupted; nothing was changed\n"))
            << calls << m_out.str();
        patience = -1;
        EXPECT_EQ(Dump(), before) << calls;
    }
    EXPECT_TRUE(Run("create").starts_with("1 callout created"));
}

// The model's file may go while its sheet is worked at: nobody needs it until the project is opened again.
TEST_F(SessionTest, WorksOnWithoutTheModelsFile) {
    RunOnRig("create\n");
    std::filesystem::remove("rig.gltf");
    EXPECT_EQ(Run("hide Pin\nundo\nexport a.svg a.html\nsave a.zrsheet"), "undone: Hide Part\n");
    EXPECT_TRUE(std::filesystem::exists("a.svg") && std::filesystem::exists("a.zrsheet"));
    const std::string before = Dump();
    Write("damaged.zrsheet", "{");
    EXPECT_THAT(Run("open a.zrsheet"), testing::HasSubstr("its model is not at"));
    EXPECT_NE(Run("open damaged.zrsheet"), "");
    EXPECT_NE(Run("import nought.glb"), "");
    EXPECT_EQ(Dump(), before);
    EXPECT_EQ(m_session->File(), "a.zrsheet");
}

TEST_F(SessionTest, OpensAProjectWhoseModelWasMoved) {
    RunOnRig("hide Pin\nsave a.zrsheet\n");
    const std::string parts = Run("list parts");
    std::filesystem::rename("rig.gltf", "moved.gltf");
    EXPECT_NE(Run("open a.zrsheet").find("rig.gltf"), std::string::npos);
    EXPECT_EQ(Run("open a.zrsheet model=moved.gltf\nlist parts"), parts);
}

}  // namespace
}  // namespace zrsheet
