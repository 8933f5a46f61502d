#include "app/command/topics/ListCommands.h"

#include <array>

#include "app/check/CompletenessCheck.h"
#include "app/command/CommandTable.h"
#include "app/command/Listing.h"
#include "app/command/Manual.h"
#include "app/command/Session.h"
#include "app/sheet/SheetMaker.h"

namespace zrsheet {
namespace {

void List(Session& session, Arguments& arguments) {
    static constexpr std::array<std::string_view, 7> kKinds{"parts",   "items",     "callouts", "insets",
                                                            "symbols", "templates", "orphans"};
    const std::string kind = arguments.TakeOneOf(kKinds);
    const Names patterns = kind == "parts" && !arguments.IsEmpty() ? arguments.TakeSome("PART") : Names();
    arguments.ExpectEnd();
    const Document& document = session.Doc();
    std::ostream& out = session.Out();
    if (kind == "parts") out << ListParts(document, patterns);
    if (kind == "items") out << ListItems(document);
    if (kind == "callouts") out << ListCallouts(document);
    if (kind == "insets") out << ListInsets(document);
    if (kind == "symbols") out << ListSymbols(document);
    if (kind == "templates") out << ListTemplates(document);
    if (kind == "orphans") out << ListOrphans(session.OpenedProject());
}

void Check(Session& session, Arguments& arguments) {
    arguments.ExpectEnd();
    session.Doc().Settle();
    session.Out() << ListFindings(CheckCompleteness(session.OpenedProject()));
}

void Lint(Session& session, Arguments& arguments) {
    arguments.ExpectEnd();
    session.Doc().Settle();
    session.Out() << ListQuality(DrawSheet(session.Doc(), session.Threads()));
}

void Help(Session& session, Arguments& arguments) {
    std::string name;
    while (!arguments.IsEmpty()) name += (name.empty() ? "" : " ") + arguments.Take("COMMAND");
    session.Out() << (name.empty() ? HelpOverview(CommandTable::Get()) : HelpFor(CommandTable::Get(), name));
}

}  // namespace

CommandTopic ListCommands() {
    return {
        "Looking around",
        {{"list", "parts|items|callouts|insets|symbols|templates|orphans [PART...]", "list what is there",
          "'list parts' may be given patterns. Orphans are what a project refers to and its model has no "
          "longer.",
          "list callouts", Effect::Reads, "", List},
         {"check", "", "tell what is not complete yet",
          "Items without callout or parts, parts without item, callouts without item or leader, leaders "
          "to what "
          "is covered or gone, labels given twice; each with what to do. 'zrsheet check PROJECT' tells "
          "the same "
          "and ends with code 1 when there is anything.",
          "check", Effect::Reads, "", Check},
         {"lint", "", "tell how good the places of labels are",
          "Labels over each other, the model or the page's border, leaders that cross or run into labels, "
          "and how long leaders are beside the shortest there could be. 'zrsheet lint FILE' tells the "
          "same and ends with code 1 when there are faults.",
          "lint", Effect::Reads, "", Lint},
         {"help", "[COMMAND]", "tell about all commands, or about one", "", "help label move",
          Effect::Anything, "", Help}}};
}

}  // namespace zrsheet
