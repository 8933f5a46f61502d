#include "zrk/operation/Transaction.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "tests/host/zrk/Stage.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/operation/CallStep.h"
#include "zrk/operation/StateJournal.h"
#include "zrk/scene/SceneObserver.h"
#include "zrk/tree/Tree.h"

namespace zrk {
namespace {

/// A text that undo restores.
class Note : public Annotation {
public:
    du::Symbol GetClass() const override { return du::Symbol("Note"); }
    du::SmartPtr<Memento> MakeMemento() override { return new StateMemento<Note>(du::SmartPtr<Note>(this)); }
    std::string CaptureState() const { return m_text; }
    void RestoreState(const std::string& text) { m_text = text; }
    void Write(const std::string& text) {
        BeforeChange();
        m_text = text;
    }

private:
    std::string m_text = "new";
};

/// An application that follows: it strikes out notes that enter, and marks one whenever a part comes into
/// sight.
class Follower : public SceneObserver {
public:
    Follower(du::SmartPtr<Note> follows, std::string& log) : m_follows(std::move(follows)), m_log(log) {}
    du::Symbol GetObjectClass() const override { return du::Symbol("Follower"); }

    void OnAnnotationAdded(const du::SmartPtr<Annotation>& annotation) override {
        m_log += '+';
        du::DynamicCast<Note>(annotation)->Write("struck");
    }
    void OnAnnotationRemoved(const du::SmartPtr<Annotation>&) override { m_log += '-'; }
    void OnShapeInstanceVisibilityChanged(const du::SmartPtr<ShapeInstance>&, bool) override {
        m_follows->Write(m_follows->CaptureState() + "*");
    }

private:
    const du::SmartPtr<Note> m_follows;
    std::string& m_log;
};

class TransactionTest : public testing::Test {
protected:
    using NotePtr = du::SmartPtr<Note>;

    TransactionTest() { m_scene->GetAnnoSet(m_annoSet); }

    NotePtr Add(const du::SmartPtr<Operation>& operation = nullptr) {
        const NotePtr note(new Note);
        m_annoSet->AddAnnotationToSet(note, operation);
        return note;
    }
    /// The texts of the notes in order, and the parts.
    std::string Look() const {
        std::string text;
        for (const auto& annotation : m_annoSet->GetAnnotations())
            text += du::DynamicCast<Note>(annotation)->CaptureState() + " ";
        for (const auto& part : m_scene->GetShapeInstances()) text += Stage::NameOf(part) + " ";
        return text;
    }
    /// What was and what is after `change`, and after undo and redo; one entry.
    template <class Change>
    void ExpectUndoable(const char* name, Change change) {
        const std::string before = Look();
        const std::size_t entries = m_history.GetUndoCount();
        Transaction action(m_scene, name);
        change();
        ASSERT_TRUE(action.Commit());
        const std::string after = Look();
        EXPECT_NE(after, before) << name;
        EXPECT_EQ(m_history.GetUndoCount(), entries + 1) << name;
        for (int round = 0; round < 2; ++round) {
            EXPECT_TRUE(m_history.Undo());
            EXPECT_EQ(Look(), before) << name;
            EXPECT_TRUE(m_history.Redo());
            EXPECT_EQ(Look(), after) << name;
        }
    }

    Stage m_stage;
    const du::SmartPtr<ShapeScene>& m_scene = m_stage.GetScene();
    const du::SmartPtr<ShapeView>& m_view = m_stage.GetView();
    History& m_history = m_scene->GetHistory();
    du::SmartPtr<AnnoSet> m_annoSet;
};

// A thread may have asked for the journal just before the end of the transaction, and get to it afterwards.
TEST_F(TransactionTest, AJournalThatHasToldItsChangesTakesNothingIn) {
    const NotePtr note = Add();
    const NotePtr late = Add();
    StateJournal journal(m_annoSet);
    journal.Keep(note);
    note->Write("changed");
    const auto after = journal.CaptureChanged();
    journal.Keep(late);
    late->Write("by another thread");
    journal.Restore();
    EXPECT_EQ(note->CaptureState(), "new");
    EXPECT_EQ(late->CaptureState(), "by another thread") << "an undo would take along what is none of it";
    after->Restore();
    EXPECT_EQ(note->CaptureState(), "changed");
}

// Or while something was undone, and get to it when the undo is over and its entry has gone.
TEST_F(TransactionTest, AJournalHoldsTheOneWhoseAnnotationsItPassesOver) {
    const NotePtr note = Add();
    auto states = std::make_shared<StateJournal>(m_annoSet);
    states->Keep(note);
    StateJournal sideEffects(m_annoSet, states);
    const std::weak_ptr<StateJournal> entry = states;
    states = nullptr;
    ASSERT_FALSE(entry.expired());
    sideEffects.Keep(note);
    EXPECT_TRUE(sideEffects.IsEmpty());
}

// Random walks of the engine's tests undo every kind of change; these are what nobody does there.
TEST_F(TransactionTest, TakesInChangesThatOthersRecordAndThoseOfOtherThreads) {
    const auto a = m_stage.AddBox("a", 0, 0, 0, {9, 9, 9});
    m_stage.AddBox("b", 20, 0, 0, {9, 9, 9});
    const NotePtr first = Add();
    ExpectUndoable("remove", [&] { m_scene->RemoveShapeInstance(a); });
    ExpectUndoable("enter and leave, under an operation that nobody records", [&] {
        const du::SmartPtr<Operation> lost(new Operation("lost", m_scene, true));
        Add(lost)->Write("second");
        m_annoSet->RemoveAnnotationFromSet(first, lost);
    });
    ExpectUndoable("on another thread, recorded",
                   [&] { std::thread([&] { Add()->Write("threaded"); }).join(); });
    while (m_history.Undo()) {
    }
    EXPECT_EQ(m_scene->GetShapeInstances().front(), a);  // the part itself, not one like it
    EXPECT_EQ(Look(), "new a b ");
}

TEST_F(TransactionTest, LeavesNoEntryAndForgetsNothingUnlessItChangedSomething) {
    const NotePtr note = Add();
    const du::SmartPtr<ShapeView> insetView(new ShapeView(m_scene, 1));
    ExpectUndoable("change", [&] { note->Write("changed"); });
    m_history.Undo();
    const struct {
        const char* name;
        std::function<void()> change;
    } rows[] = {{"nothing", [] {}},
                {"there and back", [&] { note->Write("x"), note->Write("new"); }},
                {"the same again", [&] { m_view->Resize(200, 200); }},
                {"a view that is none of the scene's", [&] { insetView->Resize(9, 9); }}};
    for (const auto& row : rows) {
        Transaction action(m_scene, row.name);
        row.change();
        EXPECT_TRUE(action.Commit());
        EXPECT_EQ(m_history.GetUndoCount(), 0U) << row.name;
        EXPECT_EQ(m_history.GetRedoName(), "change") << row.name;
    }
}

/// Counts for an entry though it would make none by itself.
class QuietStep : public CallStep {
public:
    using CallStep::CallStep;
    bool Recordable() const override { return false; }
};

TEST_F(TransactionTest, TakesInOperationsThatAreRecordedMeanwhile) {
    std::string log;
    const auto step = [&log](const std::string& name) {
        return du::SmartPtr<OperationStep>(
            new QuietStep([&log, name] { log += "-" + name; }, [&log, name] { log += "+" + name; }));
    };
    Transaction action(m_scene, "all");
    action.GetOperation()->AddStep(step("a"));
    const du::SmartPtr<Operation> recorded(new Operation("inner", m_scene, true));
    recorded->AddStep(step("b"));
    recorded->AddStep(new CallStep([&log] { log += "-c"; }, [&log] { log += "+c"; }));
    RecordOperation(recorded);
    EXPECT_FALSE(m_history.Undo());  // not while it is open
    action.Commit();
    EXPECT_FALSE(action.GetOperation());
    EXPECT_EQ(m_history.GetUndoCount(), 1U);
    m_history.Undo();
    m_history.Redo();
    EXPECT_EQ(log, "-c-b-a+a+b+c");

    Transaction quiet(m_scene, "quiet");
    quiet.GetOperation()->AddStep(step("d"));
    quiet.Commit();
    EXPECT_EQ(m_history.GetUndoName(), "quiet");
}

TEST_F(TransactionTest, RollsBackUnlessItAndAllThatJoinedItAreCommitted) {
    const auto part = m_stage.AddBox("a", 0, 0, 0, {9, 9, 9});
    const NotePtr note = Add();
    ExpectUndoable("kept", [&] { note->Write("kept"); });
    m_history.Undo();
    const std::string before = Look();
    const auto change = [&] {
        note->Write("lost");
        Add();
        m_scene->RemoveShapeInstance(part);
    };
    {
        const Transaction givenUp(m_scene, "given up");
        change();
    }
    EXPECT_EQ(Look(), before);
    for (const bool isInnerCommitted : {false, true}) {
        Transaction outer(m_scene, "outer");
        {
            Transaction inner(m_scene, "inner");
            change();
            if (isInnerCommitted) inner.Commit();
            EXPECT_EQ(m_history.GetUndoCount(), 0U);
        }
        EXPECT_EQ(m_history.GetRedoCount(), 1U);
        EXPECT_EQ(outer.Commit(), isInnerCommitted);
        EXPECT_EQ(Look() == before, !isInnerCommitted);
    }
    EXPECT_EQ(m_history.GetUndoName(), "outer");
    EXPECT_EQ(m_history.GetRedoCount(), 0U);
}

TEST_F(TransactionTest, LeavesNoTracesOfWhatFollowsAnUndo) {
    const auto part = m_stage.AddBox("a", 0, 0, 0, {9, 9, 9});
    const NotePtr bystander = Add();
    std::string log;
    const du::SmartPtr<SceneObserver> follower(new Follower(bystander, log));
    {
        Transaction action(m_scene, "hide");
        m_scene->SetVisible(part, false);
        action.Commit();
    }
    m_scene->RegisterObserver(follower);
    NotePtr added;
    {
        Transaction action(m_scene, "add");
        (added = Add())->Write("mine");
        action.Commit();
    }
    for (int round = 0; round < 2; ++round) {
        m_history.Undo();
        m_history.Undo();
        EXPECT_EQ(bystander->CaptureState(), "new");  // the part is seen again, and nothing follows
        m_history.Redo();
        EXPECT_EQ(bystander->CaptureState(), "new");
        m_history.Redo();
        EXPECT_EQ(added->CaptureState(), "mine");  // not struck out
    }
    EXPECT_EQ(log, "+-+-+");
    m_scene->UnregisterObserver(follower);
    EXPECT_FALSE(History::IsAnyActive());
}

// What is set off stands in the way of the next step, so it has to go at once.
TEST_F(TransactionTest, TakesBackAtOnceWhatAStepSetsOff) {
    std::string log;
    const auto follow = [&] {
        log += " followed";
        const auto operation = m_history.GetOperationFor(nullptr);
        if (operation) operation->AddStep(new CallStep([&log] { log += " back"; }, [] {}));
    };
    Transaction action(m_scene, "two steps");
    for (const std::string name : {"a", "b"}) {
        const auto apply = [&log, follow, name] {
            log += " " + name;
            follow();
        };
        action.GetOperation()->AddStep(new CallStep(apply, apply));
    }
    action.Commit();
    m_history.Undo();
    m_history.Redo();
    EXPECT_EQ(log, " b followed back a followed back a followed back b followed back");
    EXPECT_FALSE(m_history.GetOperationFor(nullptr));
}

TEST_F(TransactionTest, EditsPropertiesOfAStructureOnceForAll) {
    const du::SmartPtr<Tree> tree(new Tree);
    const auto part = m_stage.AddBox("a", 0, 0, 0, {9, 9, 9});
    du::SmartPtr<Instance> node;
    part->GetInstance(node);
    const du::Symbol group("Data");
    const auto value = [&](const char* name) {
        du::Symbol found("absent");
        node->FindProperty(group, du::Symbol(name), du::Symbol::EMPTY, found);
        return found.Text();
    };
    node->SetProperty(group, du::Symbol("Size"), du::Symbol("M5"));
    Transaction action(m_scene, "rename");
    tree->EditProperties({{node, group, du::Symbol("Size"), std::nullopt},
                          {node, group, du::Symbol("Name"), du::Symbol("bolt")},
                          {node, group, du::Symbol("Name"), du::Symbol("nut")}},
                         action.GetOperation());
    action.Commit();
    const auto look = [&] { return value("Size") + " " + value("Name"); };
    EXPECT_EQ(look(), "absent nut");
    m_history.Undo();
    EXPECT_EQ(look(), "M5 absent");
    m_history.Redo();
    EXPECT_EQ(look(), "absent nut");
}

}  // namespace
}  // namespace zrk
