#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

#include "callouts/Callouts.h"
#include "dp/WriteLocker.h"
#include "du/LocalizableString.h"
#include "tests/callouts/EngineFixture.h"
#include "tests/support/Deadline.h"
#include "tests/support/OnThreads.h"
#include "zrk/tree/Tree.h"
#include "zrk/world/Kernel.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/KorvanApp.h"

namespace zrcallouts {
namespace {

/// Two engines that wait for each other hang; CTest's time limit tells.
class CalloutsThreads : public ThreeParts {
protected:
    CalloutsThreads() {
        // The visibility map is made once, and not on every thread at the same time.
        MakeCallout(m_weighed, m_a);
    }

    /// Runs each action `times` times on a thread of its own.
    static void RunTogether(const std::vector<std::function<void()>>& actions, int times) {
        zrtest::OnThreads(actions.size(), [&](std::size_t thread) {
            for (int i = 0; i < times; ++i) actions[thread]();
        });
    }

    void ShowAndRemove(const Part& part) {
        const auto callout = MakeCallout(m_weighed, part, m_item);
        Connect(callout, m_c);
        Show(callout);
        Remove(callout);
    }

    void ChangeTree() {
        const auto tree = zrk::World::GetWorld()->GetTree();
        tree->BeginUpdate();
        tree->ChangeProperty(m_a.instance, du::Symbol("Part"), du::Symbol("Mass"), du::Symbol("7"));
        tree->EndUpdate();
    }

    const unsigned m_item = AddItem({m_a});
    const TemplatePtr m_weighed = MakeTemplate({ItemLabel(), Reference("Part", "Mass")});
};

TEST_F(CalloutsThreads, TheLanguageChangesWhileCalloutsComeAndGoAndAnAuthorTranslates) {
    const auto stays = AddCallout(m_weighed, m_a, m_item);
    stays->GetLocalizableString() = du::Symbol("Screw");
    stays->GetLocalizableString().SetEnabled(true);
    const auto world = zrk::World::GetWorld();
    RunTogether({[&] {
                     world->SetLanguage("de");
                     world->SetLanguage("en");
                 },
                 [&] { stays->GetLocalizableString().SetTranslation("de", du::Symbol("Schraube")); },
                 [this] { ShowAndRemove(m_a); }, [this] { ShowAndRemove(m_b); }, [this] { ChangeTree(); }},
                100);
    EXPECT_EQ(stays->GetText(true).Text(), "Screw");
    EXPECT_EQ(OfItem(m_item), CalloutVec{stays});
    EXPECT_EQ(Filed(m_a), CalloutVec{stays});
    EXPECT_TRUE(Filed(m_b).empty());
    EXPECT_TRUE(Filed(m_c).empty());
    EXPECT_TRUE(Items().IsIndicated(m_item));
}

// A language change waits for the engine's lock when the engine begins to go. Whoever took the engine's lock
// first and then waited for the language change to be over would wait forever.
TEST_F(CalloutsThreads, AnEngineIsDestroyedWhileALanguageChangeWaitsForIt) {
    const zrtest::Deadline deadline(std::chrono::seconds(30));
    constexpr std::chrono::milliseconds kUntilItWaits(40);
    std::thread change;
    std::thread end;
    {
        const dp::WriteLocker write(m_engine->GetRWLockPtr());
        change = std::thread([] { zrk::World::GetWorld()->SetLanguage("de"); });
        std::this_thread::sleep_for(kUntilItWaits);
        end = std::thread([this] { StopEngine(); });
        std::this_thread::sleep_for(kUntilItWaits);
    }
    change.join();
    end.join();
    EXPECT_FALSE(m_engine);
}

TEST_F(CalloutsThreads, EnginesAreDestroyedWhileEveryKindOfNotificationIsOnItsWay) {
    const auto inset = AddInset(200, 150);
    const auto world = zrk::World::GetWorld();
    std::atomic<bool> stop{false};
    const auto until = [&stop](std::function<void()> action) {
        return [&stop, action = std::move(action)] {
            while (!stop) action();
        };
    };
    RunTogether({[this, &stop] {
                     for (int i = 0; i < 30; ++i) {
                         StopEngine();
                         StartEngine();
                         AddCallout(m_weighed, m_b, m_item);
                     }
                     stop = true;
                 },
                 until([&] {
                     world->SetLanguage("de");
                     world->SetLanguage("en");
                 }),
                 until([this] {
                     ChangeTree();
                     m_weighed->SetTextContent({ItemLabel(), Reference("Part", "Mass")});
                     zrkapp::illustration::KorvanApp::GetKorvanApp()->GetObservers().NotifyAll(
                         [](auto& observer) { observer.OnFileSaved(); });
                 }),
                 until([&] {
                     ShowAndRemove(m_a);
                     inset->SetRadius(40);
                     m_scene->SetVisible(m_b.shape, false);
                     m_scene->SetVisible(m_b.shape, true);
                     m_view->SetBackgroundColors({0, 0, 0, 1}, {1, 1, 1, 1}, {0, 0, 0, 1});
                     Pump();
                 })},
                1);
    WaitForPool();
    EXPECT_EQ(OfItem(m_item).size(), 1U);
}

TEST_F(CalloutsThreads, WalksThatTurnFromReadingToWritingAllFinish) {
    for (const auto& part : {m_a, m_b, m_c}) AddCallout(m_weighed, part, m_item);
    zrk::Kernel::GetKernel()->StartDispatcher();
    const auto check = [this] { m_engine->OnDrawWhenHidden(m_view); };
    RunTogether({check, check, check,
                 [this] {
                     for (const auto& callout : OfItem(m_item))
                         m_engine->OnAnnotationModified(callout, false);
                 },
                 [this] {
                     m_engine->UpdateItemGroupCalloutLeaders(m_item, {m_c.sbom}, {}, nullptr);
                     m_engine->UpdateItemGroupCalloutLeaders(m_item, {}, {m_c.sbom}, nullptr);
                 },
                 [this] {
                     m_engine->RegenerateCalloutLabels();
                     m_engine->SetCombineForSamePart(!m_engine->GetCombineForSamePart());
                 }},
                60);
    zrk::Kernel::GetKernel()->StopDispatcher();
    Pump();
    EXPECT_EQ(m_engine->GetPickRequestCount(), 0U) << "an answer was lost or counted twice";
}

TEST_F(CalloutsThreads, AnswersThatNeedNoLockComeWhileAnotherThreadWrites) {
    const auto callout = AddCallout(m_weighed, m_a, m_item);
    const auto inset = AddInset(200, 150);
    const dp::WriteLocker write(m_engine->GetRWLockPtr());
    std::thread other([&] {
        EXPECT_TRUE(m_engine->GetItemsList());
        EXPECT_TRUE(m_engine->Exists("A", Text(callout)));
        EXPECT_FALSE(m_engine->IsAllowed(MakeCallout(m_weighed, m_a, m_item)));
        CalloutVec callouts{callout, callout};
        m_engine->Sort(callouts);
        m_engine->OnShapeInstanceLocation(m_a.shape);
        m_engine->OnShapeInstanceVisibility(m_a.shape, false);
        m_engine->OnShapeInstanceCreate(m_a.shape);
        m_engine->SetBackgroundColor(m_view);
        m_engine->SetPredefinedText(callout);
        m_engine->RequestAnchorPick(callout);
        m_engine->OnReceivePick({}, callout, 0);
        inset->SetRadius(30);
        CalloutPtr checked = callout;
        m_engine->CheckForTypeUpdate(checked);
    });
    other.join();
}

}  // namespace
}  // namespace zrcallouts
