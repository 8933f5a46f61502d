#include "app/command/topics/CalloutCommands.h"

#include <array>

#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/StyleChoices.h"
#include "app/document/UserError.h"
#include "app/sheet/Figure.h"
#include "callouts/events/CalloutsDrawWhenHiddenOperationStep.h"
#include "zrannotations/CombinedCallout.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/object/Checked.h"
#include "zrk/operation/History.h"

namespace zrsheet {
namespace {

using CalloutPtr = Document::CalloutPtr;
using Callouts = std::vector<CalloutPtr>;

void Combine(Session& session, Arguments& arguments) {
    const auto stack = arguments.TakeOption("stack");
    const Callouts callouts = FindCallouts(session.Doc(), arguments.TakeSome("CALLOUT"));
    if (callouts.size() < 2) throw UserError("one callout alone cannot be combined; name two or more");
    for (const CalloutPtr& callout : callouts) {
        if (callout->IsCombined()) {
            throw UserError("'" + callout->GetMarkupText().Text() +
                            "' is combined already; 'dissolve' it first");
        }
    }
    const auto combined = zrannotations::CombinedCallout::Combine(callouts, nullptr);
    if (!stack) return;
    zrannotations::CalloutStyle style = combined->GetStyle();
    style.stacked = ParseStack(*stack);
    combined->SetStyle(style);
}

void Dissolve(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const std::string name = arguments.Take("CALLOUT");
    arguments.ExpectEnd();
    const auto combined = du::DynamicCast<zrannotations::CombinedCallout>(FindCallout(document, name));
    if (!combined) throw UserError("'" + name + "' is no combined callout");
    LayOutLabels(document, combined->Dissolve(nullptr));
}

void RemoveCallout(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    du::SmartPtr<zrk::AnnoSet> annoSet;
    document.Scene()->GetAnnoSet(annoSet);
    for (const CalloutPtr& callout : FindCallouts(document, arguments.TakeSome("CALLOUT"))) {
        annoSet->RemoveAnnotationWithDependencies(callout, nullptr);
    }
}

void Hidden(Session& session, Arguments& arguments) {
    static constexpr std::array<std::string_view, 2> kStates{"off", "on"};
    const bool isOn = arguments.TakeOneOf(kStates) == "on";
    arguments.ExpectEnd();
    Document& document = session.Doc();
    if (document.Scene()->GetDrawWhenHidden() == isOn) return;
    const du::SmartPtr<zrk::OperationStep> step(
        zrk::Checked(new zrcallouts::CalloutsDrawWhenHiddenOperationStep(document.Engine(), isOn)));
    step->Redo();
    document.Scene()->GetHistory().GetOpenOperation()->AddStep(step);
}

}  // namespace

CommandTopic CalloutCommands() {
    return {
        "Callouts",
        {{"combine", "CALLOUT CALLOUT... [stack=on|off]", "put callouts together in one balloon",
          "CALLOUT is an id or a label; patterns mean all that match. The first one gives place and leaders. "
          "stack=on makes a stack of balloons with one leader.",
          "combine 3 4 5", Effect::Changes, "Combine Callouts", Combine},
         {"dissolve", "CALLOUT", "take a combined callout apart", "", "dissolve '3, 4, 5'", Effect::Changes,
          "Dissolve Callout", Dissolve},
         {"callout remove", "CALLOUT...", "remove callouts", "", "callout remove 7 callout-8-2",
          Effect::Changes, "Remove Callout", RemoveCallout},
         {"hidden", "on|off", "draw every leader dashed, or only covered ones", "", "hidden on",
          Effect::Changes, "Draw When Hidden", Hidden}}};
}

}  // namespace zrsheet
