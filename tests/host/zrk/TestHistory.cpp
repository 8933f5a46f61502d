#include "zrk/operation/History.h"

#include <gtest/gtest.h>

#include <string>

#include "zrk/operation/Operation.h"
#include "zrk/scene/Scene.h"

namespace zrk {
namespace {

/// Writes down what was done to it.
class Step : public OperationStep {
public:
    Step(std::string& log, char name, bool recordable, bool hasUndo)
        : m_log(log), m_name(name), m_isRecordable(recordable), m_hasUndo(hasUndo) {}
    bool Recordable() const override { return m_isRecordable; }
    bool HasUndo() const override { return m_hasUndo; }
    void Undo() override { (m_log += '-') += m_name; }
    void Redo() override { (m_log += '+') += m_name; }

private:
    std::string& m_log;
    const char m_name;
    const bool m_isRecordable;
    const bool m_hasUndo;
};

class HistoryTest : public testing::Test {
protected:
    void TearDown() override { m_scene->Close(); }

    /// Lower case: recordable steps; upper case: steps that are not; a digit: a step without undo.
    du::SmartPtr<Operation> Record(const std::string& steps, bool undoable = true) {
        const du::SmartPtr<Operation> operation(new Operation("do " + steps, m_scene, undoable));
        for (const char name : steps) {
            operation->AddStep(new Step(m_log, name, std::isupper(name) == 0, std::isdigit(name) == 0));
        }
        RecordOperation(operation);
        return operation;
    }
    std::string Log() { return std::exchange(m_log, {}); }

    const du::SmartPtr<Scene> m_scene{new Scene};
    History& m_history = m_scene->GetHistory();
    std::string m_log;
};

TEST_F(HistoryTest, KeepsOnlyWhatIsWorthAnEntry) {
    const struct {
        const char* steps;
        bool undoable;
        bool isKept;
    } rows[] = {
        {"a", true, true}, {"", true, false}, {"A", true, false}, {"Ab", true, true}, {"a", false, false}};
    for (const auto& row : rows) {
        const std::size_t before = m_history.GetUndoCount();
        Record("z");
        m_history.Undo();
        Record(row.steps, row.undoable);
        EXPECT_EQ(m_history.GetUndoCount() - before, row.isKept ? 1U : 0U) << row.steps;
        EXPECT_EQ(m_history.GetRedoCount(), row.isKept ? 0U : 1U)
            << row.steps;  // no entry, nothing forgotten
    }
    RecordOperation(nullptr);
    const du::SmartPtr<Operation> homeless(new Operation("x", nullptr, true));
    homeless->AddStep(new Step(m_log, 'a', true, true));
    RecordOperation(homeless);
    EXPECT_EQ(m_history.GetUndoCount(), 2U);
}

}  // namespace
}  // namespace zrk
