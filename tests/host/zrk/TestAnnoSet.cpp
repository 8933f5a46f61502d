#include "zrk/annotation/AnnoSet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zrk/annotation/AnnoSetVisitor.h"
#include "zrk/annotation/Annotation.h"
#include "zrk/operation/Operation.h"
#include "zrk/scene/Scene.h"
#include "zrk/scene/SceneObserver.h"

namespace zrk {
namespace {

class Note : public Annotation {
public:
    explicit Note(char name, unsigned mask = 1) : m_name(name), m_mask(mask) {}
    du::Symbol GetClass() const override { return du::Symbol("Note"); }
    unsigned GetCountMask() const override { return m_mask; }
    std::vector<du::SmartPtr<Annotation>> GetDependents() const override { return m_dependents; }
    char Name() const { return m_name; }
    std::vector<du::SmartPtr<Annotation>> m_dependents;

private:
    const char m_name;
    const unsigned m_mask;
};

using NotePtr = du::SmartPtr<Note>;

char NameOf(const du::SmartPtr<Annotation>& annotation) { return du::DynamicCast<Note>(annotation)->Name(); }

class AnnotationLog : public SceneObserver {
public:
    void OnAnnotationAdded(const du::SmartPtr<Annotation>& note) override { (m_log += '+') += NameOf(note); }
    void OnAnnotationRemoved(const du::SmartPtr<Annotation>& note) override {
        (m_log += '-') += NameOf(note);
    }
    std::string m_log;
};

/// Collects names; may change the set on the way.
class NameVisitor : public AnnoSetVisitor {
public:
    NameVisitor(int mode, char last, AnnoSet* empties)
        : AnnoSetVisitor(mode), m_last(last), m_empties(empties) {}
    bool Visit(const du::SmartPtr<Annotation>& annotation) override {
        m_names += NameOf(annotation);
        if (m_empties != nullptr) m_empties->RemoveAnnotationFromSet(annotation, nullptr);
        return NameOf(annotation) != m_last;
    }
    std::string m_names;

private:
    const char m_last;
    AnnoSet* const m_empties;
};

class AnnoSetTest : public testing::Test {
protected:
    void SetUp() override {
        m_scene->GetAnnoSet(m_set);
        m_scene->RegisterObserver(m_observer);
    }
    void TearDown() override { m_scene->Close(); }

    NotePtr Add(char name, const du::SmartPtr<Operation>& operation = nullptr) {
        const NotePtr note(new Note(name));
        EXPECT_TRUE(m_set->AddAnnotationToSet(note, operation));
        return note;
    }
    std::string Walk(int mode = 0, char last = '\0', bool empties = false) {
        NameVisitor visitor(mode, last, empties ? m_set.get() : nullptr);
        m_set->Visit(visitor);
        return visitor.m_names;
    }
    std::string Heard() { return std::exchange(m_observer->m_log, {}); }
    du::SmartPtr<Operation> Begin() { return new Operation("test", m_scene, true); }

    const du::SmartPtr<Scene> m_scene{new Scene};
    const du::SmartPtr<AnnotationLog> m_observer{new AnnotationLog};
    du::SmartPtr<AnnoSet> m_set;
};

TEST_F(AnnoSetTest, UndoesAndRedoesWhatAnOperationChanged) {
    const NotePtr a = Add('a');
    const auto operation = Begin();
    Add('b', operation);
    m_set->RemoveAnnotationFromSet(a, operation);
    m_set->AddAnnotationToSet(a, operation);
    m_set->RemoveAnnotationFromSet(nullptr, operation);
    m_set->RemoveAnnotationFromSet(a, operation);
    EXPECT_EQ(Walk(), "b");
    Heard();
    operation->Undo();
    EXPECT_EQ(Walk(), "a");
    EXPECT_EQ(Heard(), "+a-a+a-b");
    operation->Redo();
    EXPECT_EQ(Walk(), "b");
    const auto nothing = Begin();  // no change, no step
    m_set->AddAnnotationToSet(du::DynamicCast<Note>(m_set->GetAnnotations()[0]), nothing);
    m_set->RemoveAnnotationFromSet(a, nothing);
    EXPECT_FALSE(nothing->IsRecordable());
}

// The order of annotations reaches files: undoing must bring back the order too.
TEST_F(AnnoSetTest, PutsARemovedAnnotationBackInItsPlace) {
    Add('a');
    const NotePtr b = Add('b');
    Add('c');
    const auto operation = Begin();
    m_set->RemoveAnnotationFromSet(b, operation);
    EXPECT_EQ(Walk(), "ac");
    operation->Undo();
    EXPECT_EQ(Walk(), "abc");
    const auto adding = Begin();
    Add('d', adding);
    Add('e');
    adding->Undo();
    adding->Redo();
    EXPECT_EQ(Walk(), "abcde");
}

TEST_F(AnnoSetTest, RemovesDependentsFirstAndBringsAllBack) {
    const NotePtr a = Add('a');
    a->m_dependents = {Add('b'), NotePtr(new Note('x')), Add('c')};  // x is in no set: harmless
    const auto operation = Begin();
    Heard();
    EXPECT_TRUE(m_set->RemoveAnnotationWithDependencies(a, operation));
    EXPECT_EQ(Heard(), "-b-c-a");
    EXPECT_FALSE(m_set->RemoveAnnotationWithDependencies(a, operation));
    EXPECT_FALSE(m_set->RemoveAnnotationWithDependencies(nullptr, operation));
    operation->Undo();
    EXPECT_EQ(Heard(), "+a+c+b");
    EXPECT_EQ(Walk(), "abc");
    a->m_dependents.clear();
}

TEST_F(AnnoSetTest, WalksOwnAndReferencedAnnotationsByMode) {
    const NotePtr a = Add('a');
    Add('b');
    const NotePtr r(new Note('r', 2));
    m_set->AddReferencedAnnotation(r);
    m_set->AddReferencedAnnotation(a);  // one that is both is met once
    const struct {
        int mode;
        char last;
        bool empties;
        const char* names;
    } rows[] = {{0, '\0', false, "ab"},
                {1, '\0', false, "abr"},
                {1, 'a', false, "a"},
                {0, '\0', true, "ab"},
                {0, '\0', false, ""}};
    for (const auto& row : rows) EXPECT_EQ(Walk(row.mode, row.last, row.empties), row.names);
    EXPECT_EQ(Heard(), "+a+b-a-b");  // references are told to nobody
}

}  // namespace
}  // namespace zrk
