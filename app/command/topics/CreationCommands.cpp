#include "app/command/topics/CreationCommands.h"

#include <algorithm>
#include <array>
#include <functional>
#include <set>

#include "app/command/LabelPlace.h"
#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/CalloutUpdate.h"
#include "app/document/Kits.h"
#include "app/document/UserError.h"
#include "app/sheet/Figure.h"
#include "app/text/ProgramText.h"
#include "callouts/generator/CalloutGenerator.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/object/Checked.h"
#include "zrk/operation/History.h"
#include "zrk/scene/PickScene.h"

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

void TakeLeaders(Document& document, Arguments& arguments) {
    const auto leaders = arguments.TakeOption("leaders");
    if (leaders) document.SetLeaders(LeadersOf(arguments, *leaders));
}

Callouts NewOnes(const Document& document, const Callouts& before) {
    const std::set<CalloutPtr> known(before.begin(), before.end());
    Callouts callouts = document.Callouts();
    std::erase_if(callouts, [&known](const CalloutPtr& callout) { return known.contains(callout); });
    return callouts;
}

/// Does what creates callouts, lays the new ones out, and tells what became of all. Others stay where they
/// are.
void CreateAndTell(Session& session, const std::function<void()>& create) {
    Document& document = session.Doc();
    const Callouts before = document.Callouts();
    create();
    document.Settle();
    const Callouts created = NewOnes(document, before);
    LayOutLabels(document, created);
    const std::size_t orphaned = CalloutUpdate(document).Orphaned().size();
    const std::size_t kept = before.size() - std::min(orphaned, before.size());
    session.Out() << Text("callouts-created",
                          {{"created", created.size()}, {"kept", kept}, {"orphaned", orphaned}})
                  << "\n";
}

void CreateForParts(Session& session, const Names& patterns) {
    session.Doc().CreateCallouts(patterns, [&](int percent) {
        session.Progress(Text("stage-callouts"), percent);
        return !session.IsInterrupted();
    });
}

/// Those that are named, else those that are selected; each pattern matches something.
Names TakeParts(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    TakeLeaders(document, arguments);
    Names patterns = arguments.IsEmpty() ? session.Selection() : arguments.TakeSome("PART");
    static_cast<void>(FindInstances(document, patterns));
    return patterns;
}

void Create(Session& session, Arguments& arguments) {
    const Names patterns = TakeParts(session, arguments);
    CreateAndTell(session, [&] { CreateForParts(session, patterns); });
}

void Reset(Session& session, Arguments& arguments) {
    const Document& document = session.Doc();
    const Names patterns = TakeParts(session, arguments);
    const auto instances =
        patterns.empty() ? std::vector<Document::SbomPtr>() : FindInstances(document, patterns);
    du::SmartPtr<zrk::AnnoSet> annoSet;
    document.Scene()->GetAnnoSet(annoSet);
    const Callouts removed = CalloutUpdate(document).Automatic(instances);
    for (const CalloutPtr& callout : removed) annoSet->RemoveAnnotationWithDependencies(callout, nullptr);
    session.Out() << Text("callouts-removed", {{"removed", removed.size()}}) << "\n";
    CreateAndTell(session, [&] { CreateForParts(session, patterns); });
}

// Items that have callouts already are told apart first, for the engine makes new ones or changes the
// template of those that are there, not both.
void CreateForItems(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const auto definition = arguments.TakeOption("template");
    if (definition) document.UseTemplate(*definition);
    std::vector<unsigned> fresh;
    std::vector<unsigned> calledOut;
    std::vector<Document::SbomPtr> further;
    for (const std::string& name : arguments.TakeSome("ITEM")) {
        const unsigned id = FindItem(document, name);
        Callouts callouts;
        document.Engine()->GetItemIdCallouts(id, callouts);
        (callouts.empty() ? fresh : calledOut).push_back(id);
        const auto instances = document.Items()->GetOrderedInstances(id);
        if (!callouts.empty()) further.insert(further.end(), instances.begin(), instances.end());
    }
    const auto operation = document.Scene()->GetHistory().GetOpenOperation();
    CreateAndTell(session, [&] {
        const std::string name = document.CurrentTemplate();
        zrcallouts::CalloutGenerator(document.Engine()).AddOnItemIds(fresh, name, operation);
        if (definition)
            zrcallouts::CalloutGenerator(document.Engine()).AddOnItemIds(calledOut, name, operation);
        static_cast<void>(CalloutUpdate(document).Missing(further));
    });
}

void CreateOnSymbols(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    TakeLeaders(document, arguments);
    std::vector<Document::ShapePtr> symbols;
    while (!arguments.IsEmpty()) symbols.push_back(FindSymbol(document, arguments.Take("SYMBOL")));
    if (symbols.empty()) symbols = Symbols(document);
    if (symbols.empty()) throw UserError("there are no symbols; 'symbol add' puts one into the scene");
    std::vector<du::SmartPtr<zrk::Instance>> instances;
    for (const auto& symbol : CalloutUpdate(document).Missing(symbols)) {
        instances.emplace_back();
        symbol->GetInstance(instances.back());
    }
    CreateAndTell(session, [&] { zrcallouts::CalloutGenerator(document.Engine()).AddOnSymbols(instances); });
}

/// What is seen at the pixel of the picture.
zrk::PickResult SeenAt(const Document& document, const PagePoint& pixel) {
    dg::Camera3D camera;
    document.View()->GetCamera(camera);
    const auto seen = document.Scene()->GetPickScene()->Pick(camera.PixelRay(pixel.x, pixel.y), du::Flags());
    if (seen.empty())
        throw UserError("there is no part at that pixel; 'list callouts' shows pixels of labels");
    return seen.front();
}

/// A callout of the author's own making, which the engine numbers and admits.
void CreateAt(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const PagePoint pixel = arguments.TakePoint("X,Y");
    const bool isPlaced = arguments.TakeKeyword("to");
    const PagePoint place = isPlaced ? arguments.TakePoint("X,Y") : PagePoint();
    arguments.ExpectEnd();
    const zrk::PickResult seen = SeenAt(document, pixel);
    const auto shape = du::DynamicCast<zrk::ShapeInstance>(seen.GetObject());
    du::SmartPtr<zrk::Instance> instance;
    dg::Location location;
    shape->GetInstance(instance);
    shape->GetLocation(location);
    const CalloutPtr callout(zrk::Checked(new zrannotations::Callout));
    const Document::SbomPtr part(instance->GetSbomInstance());
    const Document::SbomPtr standIn = part ? StandIn(*document.Items(), part) : part;
    if (part && !standIn) throw UserError("the part takes no part in numbering; 'item update' says which do");
    callout->Initialize(document.Engine()->GetTemplate(), shape, false, standIn != part ? standIn : nullptr);
    callout->SetAnchor(seen.GetPoint() * location.GetXform().Invert(), 0);
    du::SmartPtr<zrk::Operation> operation = document.Scene()->GetHistory().GetOpenOperation();
    const std::size_t before = document.Callouts().size();
    zrcallouts::CalloutGenerator(document.Engine()).AddCallouts({callout}, operation);
    if (document.Callouts().size() == before) throw UserError("this part has that callout already");
    if (!isPlaced) {
        LayOutLabels(document, {callout});
        return;
    }
    PlaceLabel(document, callout, place);
    document.SetPlacedByHand(callout, true);
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
    for (const CalloutPtr& callout : created) {
        PlaceLabel(document, callout, place);
        document.SetPlacedByHand(callout, true);
    }
    generator.ShowCreatedCallouts(operation);
    zrk::RecordOperation(operation);
}

}  // namespace

CommandTopic CreationCommands() {
    return {"Creating callouts",
            {{"create", "[PART...] [leaders=one|all|each]", "create callouts for parts of the list",
              "For the selected parts when none are named, for all when nothing is selected. A part that is "
              "there several times gets a leader to the instance seen best (one), to every instance (all), "
              "or a balloon for each; the choice stays for later ones. What is called out already is kept "
              "where it is; where instances share a balloon, it gains leaders to new ones. With a template "
              "of properties alone, such as {property:Material}, there is a callout for each value.",
              "create 'Hex Bolt*' leaders=all", Effect::Changes, "Create Callouts", Create},
             {"create at", "X,Y [to X,Y]", "create a callout for what is seen at a pixel of the picture",
              "Its leader ends there. The label is placed at the second pixel, or where there is room.",
              "create at 640,500 to 900,620", Effect::Changes, "Create Callout", CreateAt},
             {"create items", "ITEM... [template=TEMPLATE]", "create callouts for items of the list",
              "With that template from now on; callouts that the items have already take it.",
              "create items 4 7 template=count", Effect::Changes, "Create Callouts", CreateForItems},
             {"create symbols", "[SYMBOL...] [leaders=one|all|each]", "create callouts on 3-D symbols",
              "On all that have none when no symbols are named. Unless each is to have its own "
              "(leaders=each), symbols of one shape share a balloon. They have no item, so use a template "
              "without {item}, or 'label set'.",
              "create symbols symbol-1", Effect::Changes, "Create Callouts", CreateOnSymbols},
             {"manual", "PART... at X,Y", "create a callout and place its label",
              "At that pixel of the picture; parts that are not listed become items.",
              "manual 'Sight Glass' at 900,620", Effect::Changes, "Create Callout", Manual},
             {"reset", "[PART...] [leaders=one|all|each]", "remove callouts and create them anew",
              "The parts are those of 'create'. Callouts stay when the author had a hand in them: combined "
              "ones, those on symbols, and those with a text ('label set'), a style or a place ('manual', "
              "'label move', 'align') of their own. 'layout' takes the place of its own away.",
              "reset leaders=all", Effect::Changes, "Reset Callouts", Reset}}};
}

}  // namespace zrsheet
