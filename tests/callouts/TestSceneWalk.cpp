// Everything that a user can do: in long random walks to and fro through the history, and while the kernel's
// memory runs out at every place where it can.

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <random>

#include "tests/callouts/SceneWalk.h"
#include "zrk/object/MemoryPool.h"
#include "zrk/operation/Transaction.h"

namespace zrcallouts {
namespace {

class UndoWalkTest : public SceneWalk, public testing::WithParamInterface<unsigned> {
protected:
    UndoWalkTest()
        : SceneWalk(
              [random = std::mt19937(GetParam())]() mutable { return static_cast<unsigned>(random()); }) {}
};

TEST_P(UndoWalkTest, FindsEveryStateAgainByteForByte) {
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    Walk([left = 300]() mutable { return left-- > 0; });
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoWalkTest, testing::Range(1U, 9U));

class OutOfMemoryTest : public SceneWalk {
protected:
    OutOfMemoryTest() : OutOfMemoryTest(std::make_shared<std::mt19937>()) {}
    ~OutOfMemoryTest() override { zrk::MemoryPool::FailNext(0); }

    /// Callouts of all kinds, insets, symbols, items.
    void FillScene() {
        for (int i = 0; i < 40; ++i) {
            zrk::Transaction transaction(m_scene, "Fill");
            DoOne(transaction.GetOperation());
            transaction.Commit();
        }
    }

    /// Always the same choices; false when there was not memory enough.
    bool Attempt(std::size_t action, unsigned choice = 0) {
        m_numbers->seed(static_cast<unsigned>(100 * choice + action));
        try {
            zrk::Transaction transaction(m_scene, "Attempt");
            Do(action, transaction.GetOperation());
            return transaction.Commit();
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    /// How often the action was refused.
    unsigned Sweep(std::size_t action, unsigned choice) {
        unsigned refusals = 0;
        bool isBeyondLast = false;
        for (unsigned n = 1; !isBeyondLast && !HasFailure(); ++n) {
            const std::string before = Look();
            const std::size_t entries = m_scene->GetHistory().GetUndoCount();
            zrk::MemoryPool::FailNext(n);
            const bool isDone = Attempt(action, choice);
            isBeyondLast = zrk::MemoryPool::FailNext(0);
            SCOPED_TRACE("action " + std::to_string(action) + ", allocation " + std::to_string(n) +
                         ", choice " + std::to_string(choice));
            EXPECT_EQ(RegistryFault(), "");
            refusals += isDone ? 0 : 1;
            EXPECT_LE(m_scene->GetHistory().GetUndoCount(), entries + (isDone ? 1 : 0));
            while (m_scene->GetHistory().GetUndoCount() > entries) m_scene->GetHistory().Undo();
            EXPECT_EQ(Look(), before);
        }
        return refusals;
    }

private:
    explicit OutOfMemoryTest(const std::shared_ptr<std::mt19937>& numbers)
        : SceneWalk([numbers] { return static_cast<unsigned>((*numbers)()); }), m_numbers(numbers) {}

    const std::shared_ptr<std::mt19937> m_numbers;
};

// Each action of the user, with each of its allocations failing in turn: it changes nothing, or it does what
// one undo takes back.
TEST_F(OutOfMemoryTest, AnActionIsDoneOrLeavesNothing) {
    const std::string start = Look();
    unsigned refusals = 0;
    for (unsigned choice = 0; choice < 4 && !HasFailure(); ++choice) {
        FillScene();
        for (std::size_t action = 0; action < GetActionCount(); ++action) refusals += Sweep(action, choice);
    }
    EXPECT_GT(refusals, 40U) << "there was hardly anything to refuse";
    while (m_scene->GetHistory().Undo()) {
    }
    EXPECT_EQ(Look(), start);
}

// What is taken back, or done again, needs memory too.
TEST_F(OutOfMemoryTest, UndoAndRedoGoThrough) {
    std::vector<std::string> states{Look()};
    for (std::size_t action = 0; action < GetActionCount(); ++action) {
        if (Attempt(action) && m_scene->GetHistory().GetUndoCount() == states.size())
            states.push_back(Look());
    }
    auto& history = m_scene->GetHistory();
    for (unsigned n = 1; n < 40 && !HasFailure(); ++n) {
        SCOPED_TRACE("allocation " + std::to_string(n));
        for (std::size_t left = states.size(); left-- > 1;) {
            zrk::MemoryPool::FailNext(n);
            history.Undo();
            zrk::MemoryPool::FailNext(0);
            EXPECT_EQ(Look(), states[left - 1]);
        }
        for (std::size_t done = 1; done < states.size(); ++done) {
            zrk::MemoryPool::FailNext(n);
            history.Redo();
            zrk::MemoryPool::FailNext(0);
            EXPECT_EQ(Look(), states[done]);
        }
    }
}

}  // namespace
}  // namespace zrcallouts
