// Creation in the task pool, with picks answered by the pump.

#include <gmock/gmock.h>

#include <cmath>
#include <map>

#include "tests/callouts/generator/GeneratorFixture.h"

namespace zrcallouts {
namespace {

using testing::ElementsAre;

class CreateCallouts : public GeneratorFixture {
protected:
    static constexpr int kParts = 24;

    /// Boxes on a slanted grid, in the middle of the view.
    void AddGrid() {
        for (int i = 0; i < kParts; ++i) {
            const int column = i % 6;
            const int row = i / 6;
            m_grid.push_back(
                AddPart("p" + std::to_string(i), {2.5 * column - 6 + 0.3 * row, 2.5 * row - 4, 0.1 * i}));
        }
    }
    void Start(const std::vector<Part>& parts, const EventPtr& event = nullptr) {
        CalloutGenerator::CreateCallouts(m_engine, Select(parts), event);
    }
    /// Where the labels stand, by part.
    std::map<std::string, dg::DPoint3D> Labels() const {
        std::map<std::string, dg::DPoint3D> labels;
        for (const auto& callout : Shown()) {
            EXPECT_TRUE(callout->GetMarkupLabelPosition(labels[Describe(*callout)]));
        }
        return labels;
    }

    std::vector<Part> m_grid;
};

TEST_F(CreateCallouts, TakesTheSelectionOverAndCompletesEvenWithNothingToDo) {
    const Part part = AddPart("a", {0, 0, 0});
    for (const auto& engine : {m_engine, du::SmartPtr<Callouts>()}) {
        std::string log;
        Selection selection = Select({part, part});
        CalloutGenerator::CreateCallouts(engine, std::move(selection), EventPtr(new RecordingEvent(&log)));
        EXPECT_TRUE(selection.empty());
        WaitForPool();
        EXPECT_EQ(log, "complete 0") << "there is no template";
    }
    EXPECT_EQ(Dump(), "");
    EXPECT_EQ(UndoCount(), 0U);
}

TEST_F(CreateCallouts, EndsLeadersOnTheirPartsSurfaces) {
    m_engine->SetTemplate(MakeTemplate({ItemLabel()}));
    AddGrid();
    Start(m_grid);
    WaitForPool();
    ASSERT_EQ(Shown().size(), static_cast<std::size_t>(kParts));
    EXPECT_GE(Pump(), static_cast<std::size_t>(kParts));
    for (const auto& callout : Shown()) {
        dg::DPoint3D anchor;
        ASSERT_TRUE(callout->GetAnchorAtPos(0, anchor));
        EXPECT_TRUE(callout->IsAnchorPointCalculated()) << Describe(*callout);
        EXPECT_NEAR(anchor.z, 1.0, 1e-5) << "the side of the box that faces the eye: " << Describe(*callout);
        EXPECT_LE(std::abs(anchor.x), 1.0 + 1e-5);
        EXPECT_LE(std::abs(anchor.y), 1.0 + 1e-5);
        EXPECT_FALSE(callout->IsHiddenAsDashedAtPos(0)) << "nothing covers it: " << Describe(*callout);
    }
    EXPECT_EQ(m_engine->GetPickRequestCount(), 0U);
}

TEST_F(CreateCallouts, PlacesLabelsAlikeOnAnyThread) {
    m_engine->SetTemplate(MakeTemplate({Literal("x")}));
    AddGrid();
    const std::vector<Part> left(m_grid.begin(), m_grid.begin() + kParts / 2);
    const std::vector<Part> right(m_grid.begin() + kParts / 2, m_grid.end());
    Create(left);
    Create(right);
    const auto expected = Labels();
    ASSERT_EQ(expected.size(), static_cast<std::size_t>(kParts));
    for (int round = 0; round < 5; ++round) {
        while (!Shown().empty()) ASSERT_TRUE(m_scene->GetHistory().Undo());
        Start(left);
        Start(right);
        WaitForPool();
        EXPECT_EQ(Labels(), expected) << "two runs at once, round " << round;
    }
}

TEST_F(CreateCallouts, SharesOneLockAmongAllGenerators) {
    const CalloutGenerator one(m_engine);
    const CalloutGenerator other(nullptr);
    ASSERT_NE(one.GetRWLockPtr(), nullptr);
    EXPECT_EQ(one.GetRWLockPtr(), other.GetRWLockPtr());
}

// The user goes on working while callouts are made.
TEST_F(CreateCallouts, LetsTheEngineAnswerMeanwhile) {
    m_engine->SetTemplate(MakeTemplate({ItemLabel()}));
    AddGrid();
    Start(m_grid);
    Start(m_grid);
    for (int i = 0; i < 50; ++i) {
        m_engine->RegenerateCalloutLabels();
        m_engine->GetPickRequestCount();
        Filed(m_grid[static_cast<std::size_t>(i % kParts)]);
        Items().SetTag(1, std::to_string(i));
        Pump();
    }
    WaitForPool();
    Pump();
    EXPECT_EQ(Items().GetItemIds().size(), static_cast<std::size_t>(kParts));
    EXPECT_EQ(Shown().size(), static_cast<std::size_t>(kParts)) << "no part gets its number twice";
    for (const auto& callout : Shown()) EXPECT_NE(Text(callout), "");
}

}  // namespace
}  // namespace zrcallouts
