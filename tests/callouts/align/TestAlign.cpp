#include "callouts/align/Align.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/callouts/EngineFixture.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/operation/Operation.h"

namespace zrcallouts {
namespace {

using AnnotationPtr = du::SmartPtr<zrannotations::Annotation>;

/// Labels are named by where they stand: pixels of the view, rounded.
class AlignTest : public EngineFixture {
protected:
    struct Pixel {
        int x;
        int y;
    };

    CalloutPtr At(int x, int y) {
        const auto callout = MakeLabelAt(x, y);
        m_annotations.emplace_back(callout);
        return callout;
    }
    void AddOther() { m_annotations.emplace_back(new zrannotations::SymbolAnnotation(nullptr)); }
    void Labels(const std::vector<Pixel>& pixels) {
        m_annotations.clear();
        for (const Pixel& pixel : pixels) At(pixel.x, pixel.y);
    }
    bool Run(int mode, const du::SmartPtr<zrk::Operation>& operation = nullptr) {
        return Align(m_annotations, static_cast<Align_Mode>(mode), m_view, operation).Execute();
    }
    /// "x,y x,y -": the labels in the order of the vector; a dash for what is no callout.
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
    const std::vector<Pixel> some{{100, 40}, {180, 90}, {120, 60}};
    const struct {
        int mode;
        std::vector<Pixel> labels;
        const char* places;
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
        {8, {{110, 0}, {200, 0}, {100, 0}}, "100,0 130,0 200,0"},
        {8, {{100, 1}, {100, 2}, {100, 3}}, "100,1 130,2 160,3"},  // of equals the order stays
        {9, {{1, 100}, {2, 104}, {3, 150}, {4, 152}}, "1,100 2,130 3,160 4,190"},
    };
    for (const auto& row : rows) {
        Labels(row.labels);
        EXPECT_TRUE(Run(row.mode));
        EXPECT_EQ(Places(), row.places) << "mode " << row.mode;
    }
}

TEST_F(AlignTest, NeedsEnoughLabelsForItsMode) {
    const struct {
        int firstMode;
        int lastMode;
        std::size_t needed;
    } rows[] = {{0, 5, 2}, {6, 7, 3}, {8, 9, 0}, {10, 10, 2}};
    for (const auto& row : rows) {
        for (int mode = row.firstMode; mode <= row.lastMode; ++mode) {
            m_annotations.clear();
            for (std::size_t count = 0; count <= 3; ++count) {
                const std::string before = Places();
                const bool isDone = Run(mode);
                EXPECT_EQ(isDone, count >= row.needed) << "mode " << mode << ", " << count;
                if (!isDone) {
                    EXPECT_EQ(Places(), before);
                }
                At(150 - 50 * static_cast<int>(count), 40);
            }
        }
    }
    EXPECT_FALSE(Align(m_annotations, AlignMinX, nullptr).Execute());
}

TEST_F(AlignTest, CountsWhatIsNoCalloutButLeavesItAlone) {
    // Without a callout at the head the measures start from zero.
    AddOther();
    At(100, 40);
    At(60, 50);
    Run(AlignMinX);
    EXPECT_EQ(Places(), "- 0,40 0,50");
    Labels({{100, 40}, {60, 50}});
    AddOther();
    Run(AlignMinX);
    EXPECT_EQ(Places(), "60,40 60,50 -");

    m_annotations.clear();
    for (const int x : {30, 90, 70}) At(x, x);
    AddOther();  // sorts to the front, for it counts as lying at zero
    EXPECT_TRUE(Run(DistributeX));
    EXPECT_EQ(Places(), "- 30,30 60,70 90,90");
    m_annotations.clear();
    At(10, 1);
    At(100, 2);
    AddOther();
    EXPECT_TRUE(Run(SpaceX));
    EXPECT_EQ(Places(), "- 30,1 100,2") << "the first label keeps its distance from zero";
}

TEST_F(AlignTest, RecordsTheMovesOfAnOperation) {
    Labels({{100, 40}, {180, 90}, {250, 60}});
    const std::string before = Places();
    ASSERT_TRUE(Run(AlignMaxY, MakeOperation()));
    EXPECT_EQ(Places(), "100,90 180,90 250,90");
    EXPECT_EQ(UndoCount(), 1U);
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Places(), before);
    ASSERT_TRUE(Redo());
    EXPECT_EQ(Places(), "100,90 180,90 250,90");
    Labels({{100, 40}, {110, 90}});
    ASSERT_TRUE(Run(SpaceX));
    EXPECT_EQ(UndoCount(), 1U) << "without an operation nothing is recorded";
}

TEST_F(AlignTest, KeepsLabelsInScreenSpaceThere) {
    const auto held = MakeCallout(nullptr, AddPart("a", {0, 0, 0}));
    held->SetLabelPosition({5, 5, 0});  // at the pixel (250, 100)
    held->SetLabelScreenSpaceMode(m_view);
    const auto free = At(150, 60);
    m_annotations.emplace_back(held);
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
