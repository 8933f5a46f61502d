#include "app/command/topics/LabelCommands.h"

#include <algorithm>
#include <charconv>

#include "app/command/Choices.h"
#include "app/command/LabelPlace.h"
#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/ItemEdits.h"
#include "app/document/LayoutChoice.h"
#include "app/document/UserError.h"
#include "app/sheet/Figure.h"
#include "callouts/align/Align.h"
#include "zrk/object/Checked.h"

namespace zrsheet {
namespace {

constexpr std::string_view kBetweenMembers = ", ";

/// The items that the label names, one for each part of it.
std::vector<unsigned> ItemsOf(const zrannotations::Callout& callout) {
    std::vector<unsigned> items;
    const auto add = [&items](const zrannotations::Callout& each) {
        unsigned id = 0;
        if (each.GetItemId(id)) items.push_back(id);
    };
    if (!callout.IsCombined()) add(callout);
    for (const auto& member : callout.CaptureState().members) {
        if (member.callout) add(*member.callout);
    }
    return items;
}

std::vector<std::string> Split(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find(kBetweenMembers, begin)) != std::string::npos;) {
        parts.push_back(text.substr(begin, end - begin));
        begin = end + kBetweenMembers.size();
    }
    parts.push_back(text.substr(begin));
    return parts;
}

void Type(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const std::string name = arguments.Take("CALLOUT");
    const auto callout = FindCallout(document, name);
    const std::string text = arguments.Take("TEXT");
    arguments.ExpectEnd();
    const std::vector<unsigned> items = ItemsOf(*callout);
    if (items.empty())
        throw UserError("'" + name + "' has no item; 'label set' gives a callout a text of its own");
    const auto labels = items.size() == 1 ? std::vector<std::string>{text} : Split(text);
    if (labels.size() != items.size()) {
        throw UserError("'" + name + "' stands for " + std::to_string(items.size()) +
                        " items; give as many labels, such as '3a, 4, 5'");
    }
    ItemEdits edits(document.ItemList(), *document.Engine());
    for (std::size_t i = 0; i < items.size(); ++i) edits.Relabel(items[i], labels[i]);
}

/// "{line}" begins a new line, as in templates.
std::string WithLines(std::string text) {
    constexpr std::string_view kLine = "{line}";
    for (std::size_t at = 0; (at = text.find(kLine, at)) != std::string::npos; ++at)
        text.replace(at, kLine.size(), "\n");
    return text;
}

void Set(Session& session, Arguments& arguments) {
    const auto callout = FindCallout(session.Doc(), arguments.Take("CALLOUT"));
    const std::string text = arguments.Take("TEXT");
    arguments.ExpectEnd();
    if (text.empty()) throw UserError(arguments.WithUsage("the text is empty"));
    if (callout->IsCombined())
        throw UserError("a combined callout says what its members say; 'dissolve' it first");
    callout->SetCustomCallout(true);
    callout->SetLegacyText(du::Symbol(WithLines(text)));
}

void Reset(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const auto callout = FindCallout(document, arguments.Take("CALLOUT"));
    arguments.ExpectEnd();
    auto state = callout->CaptureState();
    state.isCustom = false;
    state.legacyText.reset();
    callout->RestoreState(state);
    document.Engine()->SetCalloutText(callout);
}

void Move(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const Names names = arguments.TakeSome("CALLOUT", {"to", "by"});
    const bool isTo = arguments.TakeKeyword("to");
    if (!isTo) arguments.ExpectKeyword("by");
    const PagePoint given = arguments.TakePoint("X,Y");
    arguments.ExpectEnd();
    const auto callouts = FindCallouts(document, names);
    if (isTo && callouts.size() > 1)
        throw UserError("several labels have no room at one place; move them 'by' X,Y");
    for (const auto& callout : callouts) {
        const PagePoint from = isTo ? PagePoint() : LabelPlace(document, callout);
        document.SetPlacedByHand(callout, true);
        PlaceLabel(document, callout, {from.x + given.x, from.y + given.y});
    }
}

/// By its word or its number.
zrcallouts::Align_Mode TakeMode(Arguments& arguments) {
    const auto modes = ChoicesOf("MODE");
    const std::string word = arguments.Take("MODE");
    std::size_t mode = modes.size();
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), mode);
    const bool isNumber = error == std::errc() && end == word.data() + word.size();
    if (!isNumber)
        mode = static_cast<std::size_t>(std::find(modes.begin(), modes.end(), word) - modes.begin());
    if (mode >= modes.size()) {
        throw UserError(arguments.WithUsage("'" + word + "' is no MODE; 'help align' lists them"));
    }
    return static_cast<zrcallouts::Align_Mode>(mode);
}

void Align(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const auto mode = TakeMode(arguments);
    const auto callouts = FindCallouts(document, arguments.TakeSome("CALLOUT"));
    std::vector<du::SmartPtr<zrannotations::Annotation>> annotations(callouts.begin(), callouts.end());
    const du::SmartPtr<zrcallouts::Align> align(
        zrk::Checked(new zrcallouts::Align(annotations, mode, document.View())));
    if (!align->Execute()) throw UserError("these are too few callouts; lining up needs 2, distributing 3");
    for (const auto& callout : callouts) document.SetPlacedByHand(callout, true);
}

/// What the author says of the arrangement, for this time and those to come.
LayoutChoice TakeLayout(Arguments& arguments, LayoutChoice choice) {
    if (const auto mode = arguments.TakeOption("mode")) choice.mode = ParseLayoutMode(*mode);
    if (const auto pattern = arguments.TakeOption("pattern"))
        choice.rules.pattern = ParseLayoutPattern(*pattern);
    if (const auto distance = arguments.TakeNumberOption("distance"))
        choice.rules.distance = CheckedDistance(*distance);
    if (const auto gap = arguments.TakeNumberOption("gap")) choice.rules.gap = CheckedGap(*gap);
    if (const auto rows = arguments.TakeNumberOption("rows")) choice.rules.rows = CheckedRows(*rows);
    return choice;
}

/// All but those that the author placed.
std::vector<Document::CalloutPtr> PlacedByLayout(const Document& document) {
    auto callouts = document.Callouts();
    std::erase_if(callouts, [&](const auto& callout) { return document.IsPlacedByHand(callout); });
    return callouts;
}

void Layout(Session& session, Arguments& arguments) {
    Document& document = session.Doc();
    const LayoutChoice choice = TakeLayout(arguments, document.Layout());
    const auto callouts = arguments.IsEmpty() ? PlacedByLayout(document)
                                              : FindCallouts(document, arguments.TakeSome("CALLOUT"));
    if (!(choice == document.Layout())) document.SetLayout(choice);
    LayOutLabels(document, callouts);
    for (const auto& callout : callouts) document.SetPlacedByHand(callout, false);
}

}  // namespace

CommandTopic LabelCommands() {
    return {"Labels",
            {{"label", "CALLOUT TEXT", "type what the item of a callout is called",
              "In the list and by all callouts of the item, which have their templates' texts around it. '' "
              "gives back the number. For a combined callout as many labels as it has items: '3a, 4, 5'.",
              "label 7 7a", Effect::Changes, "Type Label", Type},
             {"label set", "CALLOUT TEXT", "give a callout a text of its own",
              "It stays whatever happens to template, item and part. {line} begins a new line.",
              "label set 7 'see page 12'", Effect::Changes, "Set Label", Set},
             {"label reset", "CALLOUT", "let a callout say again what its template says", "",
              "label reset callout-7", Effect::Changes, "Reset Label", Reset},
             {"label move", "CALLOUT... to|by X,Y", "place labels",
              "Pixels of the picture, from its top left corner. 'list callouts' shows where labels are.",
              "label move 7 to 120,300", Effect::Changes, "Move Label", Move},
             {"align", "MODE CALLOUT...", "line labels up",
              "MODE is left, center, right, top, bottom, middle, distribute-x, distribute-y, space-x or "
              "space-y, or "
              "its number from 0 to 9 in that order. Distributing leaves the outer labels where they are, "
              "spacing "
              "sets labels a fixed step apart.",
              "align left 3 4 5", Effect::Changes, "Align Labels", Align},
             {"layout", "[CALLOUT...] [mode=LAYOUT] [pattern=PATTERN] [distance=N] [gap=N] [rows=1|2]",
              "arrange labels around the model",
              "All but those placed by hand; when some are named, '*' names all, only those, and the others "
              "stay where they are. LAYOUT is optimal (labels keep off each other, the model, insets and the "
              "page's border, leaders do not cross and are as short as can be) or simple (each label goes to "
              "its nearest side). PATTERN is sides, rectangle (at equal distances), columns, rows, circle or "
              "silhouette. distance is from the model, gap between labels, both in pixels; rows is how many "
              "may stand on each side. What is chosen holds from then on.",
              "layout pattern=columns gap=12", Effect::Changes, "Lay Out Labels", Layout}}};
}

}  // namespace zrsheet
