#include "zrk/annotation/AnnoSet.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
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
    void Change() { NotifyModified(); }
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
    void OnAnnotationModified(const du::SmartPtr<Annotation>& note, bool) override {
        (m_log += '*') += NameOf(note);
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

TEST_F(AnnoSetTest, TellsWhoComesAndGoes) {
    const NotePtr a = Add('a');
    EXPECT_FALSE(m_set->AddAnnotationToSet(a, nullptr));  // told even so
    EXPECT_FALSE(m_set->AddAnnotationToSet(nullptr, nullptr));
    EXPECT_EQ(a->GetScene(), m_scene);
    a->Change();
    EXPECT_TRUE(m_set->RemoveAnnotationFromSet(a, nullptr));
    EXPECT_FALSE(m_set->RemoveAnnotationFromSet(a, nullptr));
    EXPECT_FALSE(m_set->RemoveAnnotationFromSet(nullptr, nullptr));
    EXPECT_FALSE(a->GetScene());
    a->Change();  // outside a set nobody is told
    EXPECT_EQ(Heard(), "+a+a*a-a");
}

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

TEST_F(AnnoSetTest, CountsByMaskAndForgetsReferences) {
    Add('a');
    const NotePtr r(new Note('r', 6));
    m_set->AddReferencedAnnotation(r);
    const struct {
        unsigned mask;
        std::uint64_t own;
        std::uint64_t referenced;
    } rows[] = {{1, 1, 0}, {2, 0, 1}, {7, 1, 1}, {8, 0, 0}};
    for (const auto& row : rows) {
        std::uint64_t own = 9, referenced = 9;
        m_set->GetAnnotationCounts(row.mask, own, referenced);
        EXPECT_EQ(own, row.own) << row.mask;
        EXPECT_EQ(referenced, row.referenced) << row.mask;
    }
    EXPECT_TRUE(m_set->IsReferencedAnnotation(r));
    EXPECT_FALSE(m_set->Contains(r));
    EXPECT_EQ(r->GetScene(), m_scene);
    m_set->AddAnnotationToSet(r, nullptr);
    m_set->RemoveAnnotationFromSet(r, nullptr);
    EXPECT_EQ(r->GetScene(), m_scene);  // the reference stays
    m_set->RemoveReferencedAnnotation(r);
    EXPECT_FALSE(r->GetScene());
    EXPECT_TRUE(m_set->GetReferencedAnnotations().empty());
}

TEST_F(AnnoSetTest, LetsAllGoSilentlyWhenTheSceneCloses) {
    const NotePtr a = Add('a');
    const NotePtr r(new Note('r'));
    m_set->AddReferencedAnnotation(r);
    Heard();
    m_scene->Close();
    EXPECT_EQ(Heard(), "");
    EXPECT_FALSE(r->GetScene());
    EXPECT_EQ(a->GetReferenceCount(), 1U);
    EXPECT_EQ(r->GetReferenceCount(), 1U);
    EXPECT_FALSE(a->GetScene());
    EXPECT_FALSE(m_set->Contains(a));
}

TEST_F(AnnoSetTest, ServesThreadsAndRemovesTensOfThousandsQuickly) {
    constexpr int kEach = 10000;
    std::vector<std::thread> threads;
    m_scene->UnregisterObserver(m_observer);
    for (int t = 0; t < 3; ++t) {
        threads.emplace_back([this] {
            std::vector<NotePtr> mine;
            for (int i = 0; i < kEach; ++i) mine.emplace_back(new Note('n'));
            for (const auto& note : mine) m_set->AddAnnotationToSet(note, nullptr);
            for (const auto& note : mine) EXPECT_TRUE(m_set->RemoveAnnotationFromSet(note, nullptr));
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(Walk(), "");
}

TEST(Annotation, HasAnIdOfItsOwn) {
    const NotePtr a(new Note('a'));
    const NotePtr b(new Note('b'));
    EXPECT_NE(a->Id(), 0U);
    EXPECT_NE(a->Id(), b->Id());
}

}  // namespace
}  // namespace zrk
