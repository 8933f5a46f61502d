#include "app/command/topics/CalloutCommands.h"

#include <algorithm>
#include <array>

#include "app/command/LabelPlace.h"
#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/UserError.h"
#include "app/sheet/Figure.h"
#include "callouts/events/CalloutsDrawWhenHiddenOperationStep.h"
#include "callouts/generator/CalloutGenerator.h"
#include "zrannotations/CombinedCallout.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/operation/History.h"

namespace zrsheet {
namespace {

using CalloutPtr = Document::CalloutPtr;
using Callouts = std::vector<CalloutPtr>;

constexpr std::array<std::string_view, 3> kLeaders{"one", "all", "each"};

LeaderChoice LeadersOf(const Arguments& arguments, const std::string& word) {
    const auto known = std::find(kLeaders.begin(), kLeaders.end(), word);
    if (known == kLeaders.end()) {
        throw UserError(arguments.WithUsage("'" + word + "' is no choice of leaders; use one, all or each"));
    }
    return static_cast<LeaderChoice>(known - kLeaders.begin());
}

Callouts NewOnes(const Document& document, const Callouts& before) {
    Callouts callouts = document.Callouts();
    std::erase_if(callouts, [&before](const CalloutPtr& callout) {
        return std::find(before.begin(), before.end(), callout) != before.end();
    });
    return callouts;
}

void Create(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    if (const auto leaders = arguments.TakeOption("leaders")) {
        document.SetLeaders(LeadersOf(arguments, *leaders));
    }
    const Names patterns = arguments.IsEmpty() ? session.Selection() : arguments.TakeSome("PART");
    static_cast<void>(FindInstances(document, patterns));
    const Callouts before = document.Callouts();
    document.CreateCallouts(patterns, [&](int percent) { session.Progress("Creating callouts", percent); });
    document.Settle();
    const Callouts created = NewOnes(document, before);
    LayOutLabels(document, created);
    session.Out() << created.size() << (created.size() == 1 ? " callout created\n" : " callouts created\n");
}

zrcallouts::CalloutGenerator::Selection SelectionOf(const std::vector<Document::SbomPtr>& instances) {
    zrcallouts::CalloutGenerator::Selection selection;
    for (const auto& instance : instances) {
        if (instance->HasChildren()) continue;
        selection.emplace_back(new zrk::illustration::SbomInstanceSelectionItem(instance));
    }
    return selection;
}

void Manual(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const Names patterns = arguments.TakeSome("PART", {"at"});
    arguments.ExpectKeyword("at");
    const PagePoint place = arguments.TakePoint("X,Y");
    arguments.ExpectEnd();
    const auto instances = FindInstances(document, patterns);
    du::SmartPtr<zrk::Operation> operation;
    zrcallouts::CalloutGenerator generator(document.Engine());
    generator.CreateManuallyOnSelected(SelectionOf(instances), operation);
    const auto& created = generator.GetCreatedCallouts();
    if (created.empty()) throw UserError("these parts have that callout already, or none of them is shown");
    for (const CalloutPtr& callout : created) PlaceLabel(document, callout, place);
    generator.ShowCreatedCallouts(operation);
    zrk::RecordOperation(operation);
}

void Combine(Session& session, Arguments& arguments) {
    const Callouts callouts = FindCallouts(session.Doc(), arguments.TakeSome("CALLOUT"));
    if (callouts.size() < 2) throw UserError("one callout alone cannot be combined; name two or more");
    for (const CalloutPtr& callout : callouts) {
        if (callout->IsCombined()) {
            throw UserError("'" + callout->GetMarkupText().Text() +
                            "' is combined already; 'dissolve' it first");
        }
    }
    zrannotations::CombinedCallout::Combine(callouts, nullptr);
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
        new zrcallouts::CalloutsDrawWhenHiddenOperationStep(document.Engine(), isOn));
    step->Redo();
    document.Scene()->GetHistory().GetOpenOperation()->AddStep(step);
}

}  // namespace

CommandTopic CalloutCommands() {
    return {
        "Callouts",
        {{"create", "[PART...] [leaders=one|all|each]", "create callouts for parts of the list",
          "For the selected parts when none are named, for all when nothing is selected. A part that is "
          "there "
          "several times gets a leader to the instance seen best (one), to every instance (all), or a "
          "balloon "
          "for each; the choice stays for later ones.",
          "create 'Hex Bolt*' leaders=all", Effect::Changes, "Create Callouts", Create},
         {"manual", "PART... at X,Y", "create a callout and place its label",
          "At that pixel of the picture; parts that are not listed become items.",
          "manual 'Sight Glass' at 900,620", Effect::Changes, "Create Callout", Manual},
         {"combine", "CALLOUT CALLOUT...", "put callouts together in one balloon",
          "CALLOUT is an id or a label; patterns mean all that match. The first one gives place and leaders.",
          "combine 3 4 5", Effect::Changes, "Combine Callouts", Combine},
         {"dissolve", "CALLOUT", "take a combined callout apart", "", "dissolve '3, 4, 5'", Effect::Changes,
          "Dissolve Callout", Dissolve},
         {"callout remove", "CALLOUT...", "remove callouts", "", "callout remove 7 callout-8-2",
          Effect::Changes, "Remove Callout", RemoveCallout},
         {"hidden", "on|off", "draw every leader dashed, or only covered ones", "", "hidden on",
          Effect::Changes, "Draw When Hidden", Hidden}}};
}

}  // namespace zrsheet
