// The kernel's memory runs out in the middle of a command.

#include <gmock/gmock.h>

#include "app/project/ProjectWriter.h"
#include "tests/app/command/ScriptFixture.h"
#include "zrk/object/MemoryPool.h"
#include "zrk/operation/History.h"

namespace zrsheet {
namespace {

constexpr const char* kRefusal = "the memory of this machine is not enough; nothing was changed";

class OutOfMemory : public ScriptFixture {
protected:
    ~OutOfMemory() override { zrk::MemoryPool::FailNext(0); }

    std::string Saved() const { return WriteProject(m_session->OpenedProject().Capture()); }
    zrk::History& History() const { return m_session->Doc().Scene()->GetHistory(); }

    void Prepare(const std::string& script) {
        const std::string said = RunOnRig(script);
        ASSERT_EQ(said.find("s:"), std::string::npos) << said;
    }

    /// Runs the command while its n-th allocation fails; false when it makes fewer.
    bool Fails(const std::string& command, unsigned n) {
        zrk::MemoryPool::FailNext(n);
        m_said = Run(command);
        return !zrk::MemoryPool::FailNext(0);
    }

    std::string m_said;
};

// Every allocation of every kind of command: it is refused in one line and leaves no trace, or it is done and
// can be undone.
TEST_F(OutOfMemory, ChangesNothingWhicheverAllocationFails) {
    Prepare(
        "resize 400,300\ncreate leaders=each\ninset add of 60,40 at 20,20\nsymbol add arrow at 0,0,0\nhide "
        "Pin\n");
    int refusals = 0;
    for (const char* command : {"create leaders=each",
                                "show Pin",
                                "create Pin",
                                "move 'Left Wedge' by 0,1,0",
                                "remove 'Left Wedge'",
                                "combine 1 2",
                                "item remove 1",
                                "item join 1 Pin",
                                "item leave 1 'Left Wedge'",
                                "label 2 X",
                                "label set 2 Y",
                                "label move 2 by 5,5",
                                "layout",
                                "template define note Grease",
                                "template edit label {name}",
                                "symbol add arrow at 0,0,0",
                                "inset remove inset-1",
                                "inset add of 60,40 at 20,20",
                                "item number flat start=7",
                                "language de",
                                "camera top",
                                "rename Pin to Bolt",
                                "style shape=box"}) {
        const std::string before = Saved();
        const std::size_t entries = History().GetUndoCount();
        for (unsigned n = 1; Fails(command, n) && !HasFailure(); ++n) {
            SCOPED_TRACE(std::string(command) + ", allocation " + std::to_string(n) + ": " + m_said);
            if (m_said.find("s:1: ") != std::string::npos) {
                ++refusals;
                EXPECT_THAT(m_said, testing::HasSubstr(kRefusal));
                EXPECT_EQ(History().GetUndoCount(), entries);
            }
            while (History().GetUndoCount() > entries) History().Undo();
            EXPECT_EQ(Saved(), before);
        }
        while (History().GetUndoCount() > entries) History().Undo();
        EXPECT_EQ(m_said.find("s:1: "), std::string::npos)
            << command << " is no command for this rig: " << m_said;
    }
    EXPECT_GT(refusals, 5);
}

// What was open is saved or given up by then; the program goes on.
TEST_F(OutOfMemory, LeavesNothingHalfOpen) {
    Prepare("resize 400,300\ncreate\nsave a.zrsheet\n");
    const std::string saved = Saved();
    int refusals = 0;
    for (const char* command : {"import rig.gltf discard", "open a.zrsheet discard"}) {
        for (unsigned n = 1; Fails(command, n) && !HasFailure(); ++n) {
            SCOPED_TRACE(std::string(command) + ", allocation " + std::to_string(n));
            if (m_said.find("s:1: ") != std::string::npos) {
                ++refusals;
                EXPECT_THAT(m_said, testing::HasSubstr("the memory of this machine is not enough"));
            }
            EXPECT_EQ(Run("open a.zrsheet discard"), "");
            EXPECT_EQ(Saved(), saved);
        }
    }
    EXPECT_GT(refusals, 20);
}

}  // namespace
}  // namespace zrsheet
