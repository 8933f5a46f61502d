// Creation in the task pool, with picks answered by the pump.

#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <functional>
#include <map>
#include <random>
#include <thread>
#include <utility>

#include "tests/callouts/generator/GeneratorFixture.h"
#include "zrk/world/Kernel.h"
#include "zrk/world/World.h"

namespace zrcallouts {
namespace {

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
        const EventPtr event(new RecordingEvent);
        Selection selection = Select({part, part});
        CalloutGenerator::CreateCallouts(engine, std::move(selection), event);
        EXPECT_TRUE(selection.empty());
        WaitForPool();
        EXPECT_EQ(event->m_status, 0) << "there is no template";
    }
    EXPECT_EQ(Dump(), "");
    EXPECT_EQ(UndoCount(), 0U);
}

/// Gives up when it hears of progress for the so-manyth time.
class ImpatientEvent : public zrk::AsyncEvent {
public:
    explicit ImpatientEvent(int patience) : m_patience(patience) {}
    void OnProgress(unsigned char) override {
        if (--m_patience == 0) Cancel();
    }

private:
    int m_patience;
};

TEST_F(CreateCallouts, LeavesNothingBehindWhenCancelled) {
    UseTemplate({ItemLabel()});
    AddGrid();
    for (const int patience : {1, 4}) {
        const du::SmartPtr<zrk::AsyncEvent> event(new ImpatientEvent(patience));
        CalloutGenerator::CreateCallouts(m_engine, Select(m_grid), event);
        WaitForPool();
        EXPECT_TRUE(event->IsCompleted());
        EXPECT_EQ(Dump(), "");
        EXPECT_EQ(UndoCount(), 0U);
        EXPECT_TRUE(m_engine->GetItemsList()->GetZrkItemList()->GetItemIds().empty());
        Callouts::CalloutSet registered;
        m_engine->GetCalloutSetForSbomInstance(m_grid.front().sbom, registered);
        EXPECT_TRUE(registered.empty()) << patience;
    }
    Start(m_grid);
    WaitForPool();
    EXPECT_EQ(Shown().size(), static_cast<std::size_t>(kParts)) << "none is taken for there already";
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
        while (!Shown().empty()) ASSERT_TRUE(Undo());
        Start(left);
        Start(right);
        WaitForPool();
        EXPECT_EQ(Labels(), expected) << "two runs at once, round " << round;
    }
}

TEST_F(CreateCallouts, SharesOneLockAmongAllGenerators) {
    EXPECT_EQ(CalloutGenerator(m_engine).GetRWLockPtr(), CalloutGenerator(nullptr).GetRWLockPtr());
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

/// Calls the action again and again on a thread of its own, from now to its own end.
class Meanwhile {
public:
    explicit Meanwhile(std::function<void()> action)
        : m_thread([action = std::move(action)](const std::stop_token& stop) {
              while (!stop.stop_requested()) {
                  action();
                  std::this_thread::sleep_for(std::chrono::milliseconds(1));
              }
          }) {}

private:
    std::jthread m_thread;
};

// Creation may be at any stage when the host changes something, and when the engine goes.
TEST_F(CreateCallouts, OutlivesEveryEditAndTheEndOfItsEngine) {
    constexpr int kEngines = 6;
    const auto numbered = MakeTemplate({ItemLabel(), Reference("Part", "Mass")});
    AddGrid();
    m_grid.resize(kParts / 3);
    zrk::Kernel::GetKernel()->StartDispatcher();
    {
        std::mt19937 random(1);
        std::mt19937 delays(2);
        const Meanwhile parts([&] {
            const auto shape = m_grid[random() % m_grid.size()].shape;
            m_scene->SetVisible(shape, random() % 2 == 0);
            m_scene->SetLocation(shape,
                                 dg::Location(dg::FMat33::IDENTITY, {random() % 2 == 0 ? 1.0 : -1.0, 0, 0}));
            m_scene->RemoveShapeInstance(shape);
            du::SmartPtr<zrk::Instance> instance;
            shape->GetInstance(instance);
            m_scene->CreateShapeInstance(instance);
            // Where parts are seen is found anew after each edit; creation must get on nevertheless.
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        });
        const Meanwhile items([&] {
            const auto list = zritemlist::ItemList::GetItemListForScene(m_scene);
            const auto ids = list ? list->GetZrkItemList()->GetItemIds() : std::vector<unsigned>();
            if (ids.empty()) return;
            list->GetZrkItemList()->SetTag(ids.front(), "T");
            list->GetZrkItemList()->RemoveItem(ids.back());
        });
        const Meanwhile language([] {
            zrk::World::GetWorld()->SetLanguage("de");
            zrk::World::GetWorld()->SetLanguage("en");
        });
        for (int i = 0; i < kEngines; ++i) {
            m_engine->SetTemplate(numbered);
            Start(m_grid);
            std::this_thread::sleep_for(std::chrono::milliseconds(delays() % 4));
            StopEngine();
            StartEngine();
        }
    }
    zrk::Kernel::GetKernel()->StopDispatcher();
    for (const auto& part : m_scene->GetShapeInstances()) m_scene->SetVisible(part, true);
    m_engine->SetTemplate(numbered);
    Start(m_grid);
    WaitForPool();
    Pump();
    EXPECT_EQ(m_engine->GetPickRequestCount(), 0U);
    for (const Part& part : m_grid) EXPECT_EQ(Filed(part).size(), 1U);
}

}  // namespace
}  // namespace zrcallouts
