#include "callouts/align/Align.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/callouts/EngineFixture.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/operation/Operation.h"

namespace zrcallouts {
namespace {

using AnnotationPtr = du::SmartPtr<zrannotations::Annotation>;

/// Labels are named by where they stand: "x,y x,y -", pixels of the view in the order of the annotations, and
/// a dash for what is no callout.
class AlignTest : public EngineFixture {
protected:
    void Set(const std::string& places) {
        m_annotations.clear();
        std::istringstream words(places);
        for (std::string word; words >> word;) {
            AnnotationPtr annotation(new zrannotations::SymbolAnnotation(nullptr));
            if (word != "-")
                annotation = MakeLabelAt(std::stod(word), std::stod(word.substr(word.find(',') + 1)));
            m_annotations.push_back(annotation);
        }
    }
    bool Run(int mode, const du::SmartPtr<zrk::Operation>& operation = nullptr) {
        return Align(m_annotations, static_cast<Align_Mode>(mode), m_view, operation).Execute();
    }
    std::string Places() const {
        std::string places;
        for (const auto& annotation : m_annotations) {
            const auto callout = du::DynamicCast<zrannotations::Callout>(annotation);
            places += (places.empty() ? "" : " ") + (callout ? PixelOf(callout) : "-");
        }
        return places;
    }

    std::vector<AnnotationPtr> m_annotations;
};

TEST_F(AlignTest, LinesUpDistributesAndSpaces) {
    const char* const some = "100,40 180,90 120,60";
    const struct {
        int mode;  // its number, as documents keep it
        const char* before;
        const char* after;
    } rows[] = {
        {0, some, "100,40 100,90 100,60"},
        {1, some, "140,40 140,90 140,60"},  // between the outermost two, not the mean
        {2, some, "180,40 180,90 180,60"},
        {3, some, "100,40 180,40 120,40"},
        {4, some, "100,90 180,90 120,90"},
        {5, some, "100,65 180,65 120,65"},
        {6, some, "100,40 140,60 180,90"},
        {7, some, "100,40 120,65 180,90"},
        {8, some, "100,40 130,60 180,90"},
        {9, some, "100,40 120,70 180,100"},
        {8, "110,0 200,0 100,0", "100,0 130,0 200,0"},
        {8, "100,1 100,2 100,3", "100,1 130,2 160,3"},  // of equals the order stays
        {9, "1,100 2,104 3,150 4,152", "1,100 2,130 3,160 4,190"},
        // What is no callout counts as lying at zero, and is left alone.
        {0, "- 100,40 60,50", "- 0,40 0,50"},
        {0, "100,40 60,50 -", "60,40 60,50 -"},
        {6, "30,30 90,90 70,70 -", "- 30,30 60,70 90,90"},
        {8, "10,1 100,2 -", "- 30,1 100,2"},
    };
    for (const auto& row : rows) {
        Set(row.before);
        EXPECT_TRUE(Run(row.mode));
        EXPECT_EQ(Places(), row.after) << "mode " << row.mode << " of " << row.before;
    }
}

TEST_F(AlignTest, NeedsEnoughLabelsForItsMode) {
    const struct {
        int firstMode;
        int lastMode;
        std::size_t needed;
    } rows[] = {{0, 5, 2}, {6, 7, 3}, {8, 9, 0}, {10, 10, 2}};
    const std::string labels[] = {"", "150,40", "150,40 100,40", "150,40 100,40 50,40"};
    for (const auto& row : rows) {
        for (int mode = row.firstMode; mode <= row.lastMode; ++mode) {
            for (std::size_t count = 0; count < std::size(labels); ++count) {
                Set(labels[count]);
                const bool isDone = Run(mode);
                EXPECT_EQ(isDone, count >= row.needed) << "mode " << mode << ", " << count;
                EXPECT_TRUE(isDone || Places() == labels[count]) << Places();
            }
        }
    }
    EXPECT_FALSE(Align(m_annotations, AlignMinX, nullptr).Execute());
}

TEST_F(AlignTest, RecordsTheMovesOfAnOperation) {
    Set("100,40 180,90 250,60");
    const std::string before = Places();
    ASSERT_TRUE(Run(AlignMaxY, MakeOperation()));
    EXPECT_EQ(Places(), "100,90 180,90 250,90");
    EXPECT_EQ(UndoCount(), 1U);
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Places(), before);
    ASSERT_TRUE(Redo());
    EXPECT_EQ(Places(), "100,90 180,90 250,90");
    Set("100,40 110,90");
    ASSERT_TRUE(Run(SpaceX));
    EXPECT_EQ(UndoCount(), 1U) << "without an operation nothing is recorded";
}

TEST_F(AlignTest, KeepsLabelsInScreenSpaceThere) {
    const auto held = MakeCallout(nullptr, AddPart("a", {0, 0, 0}));
    held->SetLabelPosition({5, 5, 0});  // at the pixel (250, 100)
    held->SetLabelScreenSpaceMode(m_view);
    const auto free = MakeLabelAt(150, 60);
    m_annotations = {free, held};
    // The camera moves: the label stays at its pixel, the free one does not.
    m_view->SetCamera(dg::Camera3D::Orthographic({1, 0, 0}, {0, 0, -1}, {0, 1, 0}, 10.0, 400, 300, 100.0));
    ASSERT_TRUE(Run(AlignMaxX, MakeOperation()));
    EXPECT_TRUE(held->IsLabelInScreenSpace());
    EXPECT_EQ(Places(), "250,60 250,100");
    EXPECT_FALSE(free->IsLabelInScreenSpace());
    const dg::DPoint3D kept = held->GetPosition();
    ASSERT_TRUE(Undo());
    EXPECT_EQ(held->GetPosition(), kept) << "its move is no step";
    EXPECT_TRUE(held->IsLabelInScreenSpace());
}

}  // namespace
}  // namespace zrcallouts
