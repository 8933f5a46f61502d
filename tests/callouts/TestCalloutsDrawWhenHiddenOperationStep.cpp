#include "callouts/events/CalloutsDrawWhenHiddenOperationStep.h"

#include "tests/callouts/EngineFixture.h"
#include "zrk/operation/Operation.h"

namespace zrcallouts {
namespace {

class CalloutsDrawWhenHiddenStep : public EngineFixture {};

TEST_F(CalloutsDrawWhenHiddenStep, SwitchesTheFlagAndTheLeadersBothWays) {
    const auto part = AddPart("part", {0, 0, 0});
    const auto callout = AddCallout(MakeTemplate({Literal("x")}), part);
    Pump();
    for (const bool state : {true, false}) {
        m_scene->SetDrawWhenHidden(!state);
        const du::SmartPtr<CalloutsDrawWhenHiddenOperationStep> step(
            new CalloutsDrawWhenHiddenOperationStep(m_engine, state));
        EXPECT_EQ(m_scene->GetDrawWhenHidden(), !state);
        EXPECT_EQ(step->GetDrawWhenHiddenState(), state);
        EXPECT_FALSE(step->Recordable());
        EXPECT_TRUE(step->HasUndo());
        EXPECT_EQ(step->Type().Text(), "CalloutsDrawWhenHiddenOperationStep");
        const auto operation = MakeOperation();
        operation->AddStep(step);
        EXPECT_FALSE(operation->IsRecordable());
        for (const bool redo : {true, false}) {
            callout->SetHiddenAsDashedAtPos(!(redo == state), 0);
            redo ? step->Redo() : step->Undo();
            Pump();
            EXPECT_EQ(m_scene->GetDrawWhenHidden(), redo == state);
            EXPECT_EQ(callout->IsHiddenAsDashedAtPos(0), redo == state)
                << "in sight, it is dashed by the flag alone";
        }
    }
    // An engine without scene has nothing to switch.
    m_scene->SetDrawWhenHidden(false);
    const du::SmartPtr<zrk::OperationStep> idle(
        new CalloutsDrawWhenHiddenOperationStep(du::SmartPtr<Callouts>(new Callouts), true));
    idle->Redo();
    EXPECT_FALSE(m_scene->GetDrawWhenHidden());
}

}  // namespace
}  // namespace zrcallouts
