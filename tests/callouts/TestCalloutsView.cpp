#include <cmath>

#include "callouts/Callouts.h"
#include "callouts/events/CalloutsDrawWhenHiddenOperationStep.h"
#include "tests/callouts/EngineFixture.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/event/PickResult.h"
#include "zrk/world/Kernel.h"

namespace zrcallouts {
namespace {

/// `back` is covered by `front`, `free` lies beside them.
class CalloutsView : public EngineFixture {
protected:
    CalloutsView()
        : m_back(AddPart("back", {0, 0, 0})),
          m_front(AddPart("front", {0, 0, 10})),
          m_free(AddPart("free", {8, 0, 0})) {}

    void Move(const Part& part, const dg::DPoint3D& position) {
        m_scene->SetLocation(part.shape, {dg::FMat33::IDENTITY, position});
    }

    /// The leader's look before a check, so that it shows whether the check touched it.
    static void SetLook(const CalloutPtr& callout, bool dashed, unsigned position = 0) {
        callout->SetHiddenAsDashedAtPos(dashed, position);
        callout->SetDimAtPos(dashed, position, {0.1F, 0.2F, 0.3F, 0.4F});
    }

    /// A letter for each leader: 'h' when it is hidden, '-' when it is shown.
    static std::string Hidden(const CalloutPtr& callout) {
        std::string hidden;
        for (unsigned i = 0; i < callout->GetLeaderLineCount(false); ++i)
            hidden += callout->IsHiddenAtPos(i) ? 'h' : '-';
        return hidden;
    }

    /// A callout on one part in the scene, all of whose checks have been answered.
    CalloutPtr Settled(const Part& part) {
        const auto callout = AddCallout(m_literal, part);
        Pump();
        return callout;
    }

    /// Checks one callout and tells whether its first leader is drawn as covered, with both parts of the look
    /// agreeing.
    bool IsCovered(const CalloutPtr& callout) {
        m_engine->OnDrawWhenHidden(m_view, callout);
        Pump();
        EXPECT_EQ(callout->IsDimAtPos(0), callout->IsHiddenAsDashedAtPos(0));
        return callout->IsDimAtPos(0);
    }

    const Part m_back;
    const Part m_front;
    const Part m_free;
    const TemplatePtr m_literal = MakeTemplate({Literal("x")});
};

TEST_F(CalloutsView, ACalloutThatWaitsTakesUpItsPartAndPutsItsLabelBack) {
    const auto callout = MakeCallout(m_literal, m_free);
    const auto stranger = MakeCallout(m_literal, m_free);  // filed, but not registered
    for (const auto& each : {callout, stranger}) {
        ConnectWaiting(each, "late");
        each->SetLabelScreenSpaceMode(m_view);
    }
    Show(callout);
    m_engine->AddToMap(stranger);
    AddPart("other", {0, -8, 0});
    EXPECT_TRUE(callout->IsLabelInScreenSpace());
    const auto part = AddPart("late", {0, 8, 0});
    for (const auto& each : {callout, stranger}) {
        EXPECT_EQ(each->GetShapeInstanceAtPos(1).get(), part.shape.get());
        EXPECT_FALSE(each->IsLabelInScreenSpace());
    }
}

TEST_F(CalloutsView, APartThatGoesHidesItsLeadersUntilItComesBack) {
    const auto callout = MakeCallout(m_literal, m_free);
    Connect(callout, m_back);
    Show(callout);
    callout->SetLabelScreenSpaceMode(m_view);
    const auto stranger = MakeCallout(m_literal, m_free);  // filed, but not registered
    m_engine->AddToMap(stranger);
    const auto hidden = [&] { return Hidden(callout) + ' ' + Hidden(stranger); };
    m_scene->SetVisible(m_free.shape, false);
    EXPECT_EQ(hidden(), "h- -");
    m_scene->SetVisible(m_free.shape, true);
    EXPECT_EQ(hidden(), "-- -");
    m_scene->RemoveShapeInstance(m_free.shape);
    EXPECT_EQ(hidden(), "h- h");
    EXPECT_TRUE(IsShown(callout));
    const auto again = m_scene->CreateShapeInstance(m_free.instance);
    EXPECT_EQ(Hidden(callout), "--");
    for (const auto& each : {callout, stranger}) EXPECT_EQ(each->GetShapeInstanceAtPos(0).get(), again.get());
    EXPECT_TRUE(callout->IsLabelInScreenSpace()) << "nobody waited, so the label stays";
}

TEST_F(CalloutsView, A3dSymbolTakesItsCalloutsWithIt) {
    const auto waiting = MakeCallout(m_literal, m_free);
    ConnectWaiting(waiting, "/S1");
    Show(waiting);
    const auto symbol = AddSymbol("S1", {0, 8, 0});
    EXPECT_EQ(waiting->GetLeaderLineCount(false), 1U) << "a symbol that comes changes no callout";
    const auto callout = AddCallout(m_literal, symbol);
    const auto other = AddCallout(m_literal, m_free);
    for (const bool isVisible : {false, true}) {
        m_scene->SetVisible(symbol.shape, isVisible);
        EXPECT_EQ(Hidden(callout), isVisible ? "-" : "h");
    }
    for (const auto& each : {symbol, AddSymbol("S2", {5, 8, 0})}) {
        const du::SmartPtr<zrannotations::SymbolAnnotation> annotation(
            new zrannotations::SymbolAnnotation(each.instance));
        Show(annotation);
        Remove(annotation);
        ASSERT_EQ(annotation->GetReferenceCount(), 2U);
        m_scene->RemoveShapeInstance(each.shape);
        EXPECT_EQ(annotation->GetReferenceCount(), 1U);
    }
    EXPECT_FALSE(IsShown(callout) || IsShown(waiting));
    EXPECT_TRUE(IsShown(other));
    EXPECT_FALSE(Undo());
}

TEST_F(CalloutsView, CoveredLeadersAreDashedAndDimmed) {
    const auto back = Settled(m_back);
    const auto front = Settled(m_front);
    for (const bool before : {false, true}) {
        SetLook(back, before);
        SetLook(front, before);
        EXPECT_TRUE(IsCovered(back));
        EXPECT_FALSE(IsCovered(front));
    }
    m_scene->SetPhantom(m_front.shape, true);
    EXPECT_FALSE(IsCovered(back)) << "a phantom hides nothing";
    m_scene->SetPhantom(m_front.shape, false);
    Move(m_front, {-8, 0, 10});
    EXPECT_FALSE(IsCovered(back));
    Move(m_back, {8, 0, 10});
    SetLook(front, false);
    EXPECT_TRUE(IsCovered(Settled(m_free))) << "the part lies where it was moved to";
    EXPECT_EQ(m_engine->GetPickRequestCount(), 0U);
}

TEST_F(CalloutsView, AnyPartOfAWeldCountsForItsLeader) {
    const auto weld = AddAssembly("weld", true);
    const auto below = AddPart("below", {0, 8, 0}, &weld);
    AddPart("above", {0, 8, 5}, &weld);
    const auto onWeld = MakeCallout(m_literal, below, std::nullopt, &weld);
    Show(onWeld);
    EXPECT_FALSE(IsCovered(onWeld));
    EXPECT_TRUE(IsCovered(Settled(below)));
    AddPart("stranger", {0, 8, 9});
    EXPECT_TRUE(IsCovered(onWeld));
}

TEST_F(CalloutsView, DrawWhenHiddenDashesEveryLeaderWithoutAsking) {
    const auto callout = MakeCallout(m_literal, m_back);
    Connect(callout, m_free);
    Show(callout);
    callout->SetVisible("free", false);
    Pump();
    for (const unsigned position : {0U, 1U}) {
        callout->SetHiddenAsDashedAtPos(false, position);
        callout->SetDimAtPos(true, position, {});
    }
    m_scene->SetDrawWhenHidden(true);
    m_engine->OnDrawWhenHidden(m_view);
    EXPECT_EQ(m_engine->GetPickRequestCount() + Pump(), 0U);
    for (const unsigned position : {0U, 1U}) {
        EXPECT_TRUE(callout->IsHiddenAsDashedAtPos(position));
        EXPECT_FALSE(callout->IsDimAtPos(position));
    }
    m_engine->OnDrawWhenHidden(nullptr);
    m_engine->OnDrawWhenHidden(nullptr, callout);
}

TEST_F(CalloutsView, DrawWhenHiddenIsSwitchedByAStepThatIsNotRecorded) {
    const auto callout = Settled(m_free);
    for (const bool state : {true, false}) {
        m_scene->SetDrawWhenHidden(!state);
        const du::SmartPtr<zrk::OperationStep> step(new CalloutsDrawWhenHiddenOperationStep(m_engine, state));
        EXPECT_EQ(m_scene->GetDrawWhenHidden(), !state) << "nothing before it is told to";
        const auto operation = MakeOperation();
        operation->AddStep(step);
        EXPECT_FALSE(operation->IsRecordable());
        for (const bool isRedo : {true, false}) {
            callout->SetHiddenAsDashedAtPos(isRedo != state, 0);
            isRedo ? step->Redo() : step->Undo();
            Pump();
            EXPECT_EQ(m_scene->GetDrawWhenHidden(), isRedo == state);
            EXPECT_EQ(callout->IsHiddenAsDashedAtPos(0), isRedo == state) << "it is dashed by the flag alone";
        }
    }
    m_scene->SetDrawWhenHidden(false);
    const du::SmartPtr<Callouts> sceneless(new Callouts);
    CalloutsDrawWhenHiddenOperationStep(sceneless, true).Redo();
    EXPECT_FALSE(m_scene->GetDrawWhenHidden());
}

// The dim colour lies between the two colours of the ground; the border has no part in it.
TEST_F(CalloutsView, ANewGroundDimsCoveredLeadersAnewUnlessAllAreDashed) {
    const auto back = Settled(m_back);
    m_view->SetBackgroundColors({1, 0, 0.5F, 1}, {0, 1, 0.5F, 1}, {0, 0, 0, 1});
    EXPECT_EQ(Pump(), 1U);
    EXPECT_EQ(back->GetDimColorAtPos(0), dg::Color(0.5F, 0.5F, 0.5F, 1));
    m_scene->SetDrawWhenHidden(true);
    m_view->SetBackgroundColors({1, 1, 1, 1}, {0.5F, 0, 0, 1}, {0, 0, 0, 1});
    EXPECT_EQ(Pump(), 0U);
    EXPECT_TRUE(back->IsDimAtPos(0)) << "the leaders are not even looked at";
    m_scene->SetDrawWhenHidden(false);
    EXPECT_TRUE(IsCovered(back));
    EXPECT_EQ(back->GetDimColorAtPos(0), dg::Color(0.75F, 0.5F, 0.5F, 1)) << "but the colours are kept";
}

TEST_F(CalloutsView, LeadersThatShowNothingAreLeftAsTheyAre) {
    const auto hidden = Settled(m_free);
    hidden->SetVisible("", false);
    const auto beside = Settled(m_free);
    beside->SetAnchor({3, 3, 0}, 0);  // nothing is met there
    Pump();
    const auto waiting = MakeFreeCallout(m_literal);
    ConnectWaiting(waiting, "late");
    Show(waiting);
    const auto invisible = MakeCallout(m_literal, m_back);
    m_annoSet->AddReferencedAnnotation(invisible);
    m_scene->SetVisible(m_back.shape, false);
    const struct {
        const char* name;
        CalloutPtr callout;
        std::size_t picks;
    } rows[] = {{"hidden leader", hidden, 0},
                {"invisible part", invisible, 0},
                {"part not loaded", waiting, 0},
                {"nothing met", beside, 1}};
    for (const auto& row : rows) {
        for (const bool before : {false, true}) {
            SetLook(row.callout, before);
            m_engine->OnDrawWhenHidden(m_view, row.callout);
            EXPECT_EQ(m_engine->GetPickRequestCount(), row.picks) << row.name;
            EXPECT_EQ(Pump(), row.picks) << row.name;
            EXPECT_EQ(row.callout->IsHiddenAsDashedAtPos(0), before) << row.name;
            EXPECT_EQ(row.callout->IsDimAtPos(0), before) << row.name;
        }
    }
    // A callout outside every scene is asked for, and the answer passes it by.
    const auto sceneless = MakeCallout(m_literal, m_free);
    SetLook(sceneless, true);
    EXPECT_TRUE(IsCovered(sceneless));
    EXPECT_EQ(m_engine->GetPickRequestCount(), 0U);
}

TEST_F(CalloutsView, PixelsAreRoundedTowardsZeroAfterAddingAHalf) {
    // Boxes whose right edges lie left of the viewport at pixel -0.5: x = -20.05.
    const auto part = AddPart("left", {-21.05, 0, 0});
    const auto callout = Settled(part);
    const struct {
        double pixel;
        bool met;
    } rows[] = {{-0.7, false}, {-1.7, true}, {-1.4, false}, {-2.6, true}};
    for (const auto& row : rows) {
        callout->SetAnchor({-20.0 + row.pixel / 10.0 + 21.05, 0.0, 1.0}, 0);
        Pump();
        SetLook(callout, true);
        EXPECT_EQ(IsCovered(callout), !row.met) << row.pixel;
    }
}

TEST_F(CalloutsView, TheTimerChecksOnceTheCameraHasChangedAndEverythingIsAnswered) {
    const auto callout = Settled(m_back);
    dg::Camera3D current;
    m_view->GetCamera(current);
    dg::Camera3D recorded = current;
    m_engine->OnHandleTimeoutEvent(m_view, recorded);
    EXPECT_EQ(m_engine->GetPickRequestCount(), 0U) << "the camera is the one checked last";
    recorded = dg::Camera3D();
    m_scene->SetDrawWhenHidden(true);
    m_engine->OnHandleTimeoutEvent(m_view, recorded);
    EXPECT_EQ(recorded, dg::Camera3D());
    m_scene->SetDrawWhenHidden(false);
    m_engine->OnHandleTimeoutEvent(m_view, recorded);
    EXPECT_EQ(recorded, current);
    EXPECT_EQ(m_engine->GetPickRequestCount(), 1U);
    const auto turned = dg::Camera3D::Orthographic({0, 0, 0}, {0, 0, 1}, {0, 1, 0}, 10.0, 400, 300, 100.0);
    m_view->SetCamera(turned);
    m_engine->OnHandleTimeoutEvent(m_view, recorded);
    EXPECT_EQ(recorded, current) << "the former check is not answered yet";
    Pump();
    m_engine->OnHandleTimeoutEvent(m_view, recorded);
    EXPECT_EQ(recorded, turned);
    EXPECT_EQ(Pump(), 1U);
    m_engine->OnHandleTimeoutEvent(nullptr, recorded);
    // The host's own timer keeps the record from one run to the next.
    for (const std::size_t picks : {1U, 0U}) {
        m_view->OnTimer();
        EXPECT_EQ(Pump(), picks);
    }
}

TEST_F(CalloutsView, AnAnchorIsPickedOnThePartAloneAndKeptInItsCoordinates) {
    Move(m_back, {2, 1, -3});
    Move(m_front, {-3, 2, 4});
    const auto callout = MakeCallout(m_literal, m_back);
    Connect(callout, m_free);
    Connect(callout, m_front);
    callout->SetInsetAtPos(AddInset(200, 150), 1);
    dg::DPoint3D provisional;
    ASSERT_TRUE(callout->GetAnchorAtPos(1, provisional));
    m_engine->RequestAnchorPick(callout);
    EXPECT_EQ(m_engine->GetPickRequestCount(), 0U);
    EXPECT_FALSE(callout->IsAnchorPointCalculated());
    EXPECT_EQ(Pump(), 2U);
    EXPECT_TRUE(callout->IsAnchorPointCalculated());
    for (const unsigned position : {0U, 1U, 2U}) {
        dg::DPoint3D anchor;
        ASSERT_TRUE(callout->GetAnchorAtPos(position, anchor));
        EXPECT_NEAR(anchor.z, 1.0, 1e-4) << "not on the face towards the eye";
        EXPECT_LE(std::abs(anchor.x), 1.0);
        EXPECT_TRUE(position != 1 || anchor == provisional) << "through an inset nothing is picked";
    }
    m_engine->RequestAnchorPick(callout);
    EXPECT_EQ(Pump(), 0U) << "the anchor is known already";
    m_engine->RequestAnchorPick(nullptr);

    const auto cancelled = MakeCallout(m_literal, m_free);
    m_engine->RequestAnchorPick(cancelled);
    zrk::Kernel::GetKernel()->CancelPendingEvents();
    EXPECT_FALSE(cancelled->IsAnchorPointCalculated());
}

// A view that is busy for good must not hold up editing, or the end; an answer that comes after all finds
// nobody.
TEST_F(CalloutsView, APickThatIsNeverAnsweredHoldsNothingUp) {
    const auto callout = AddCallout(m_literal, m_free);
    const auto other = AddCallout(m_literal, m_back);
    m_engine->RequestAnchorPick(callout);
    m_engine->OnDrawWhenHidden(m_view);
    EXPECT_GT(m_engine->GetPickRequestCount(), 0U);
    m_engine->OnDrawWhenHidden(m_view, other);
    Remove(callout);
    EXPECT_FALSE(IsShown(callout));
    m_scene->RemoveShapeInstance(m_back.shape);
    StopEngine();
    SetLook(callout, true);
    EXPECT_GT(Pump(), 0U) << "nothing was asked for";
    EXPECT_TRUE(callout->IsDimAtPos(0)) << "an answer came through";
    EXPECT_EQ(callout->GetReferenceCount(), 1U);
}

}  // namespace
}  // namespace zrcallouts
