#include "app/command/topics/HistoryCommands.h"

#include "app/command/Session.h"
#include "app/document/UserError.h"
#include "app/text/ProgramText.h"
#include "zrk/operation/History.h"

namespace zrsheet {
namespace {

constexpr int kMostSteps = 1000000;

/// How often; `possible` times at most. All of them or none.
int TakeCount(Arguments& arguments, const std::string& verb, std::size_t possible) {
    const bool isAll = arguments.TakeKeyword("all");
    const int wanted = isAll || arguments.IsEmpty() ? 1 : arguments.TakeWhole("COUNT", 1, kMostSteps);
    arguments.ExpectEnd();
    if (isAll) return static_cast<int>(possible);
    if (static_cast<std::size_t>(wanted) <= possible) return wanted;
    if (possible == 0) throw UserError("there is nothing to " + verb);
    throw UserError("there " +
                    std::string(possible == 1 ? "is only 1 change"
                                              : "are only " + std::to_string(possible) + " changes") +
                    " to " + verb);
}

void Tell(const Session& session, const char* what, const std::string& entry) {
    session.Out() << Text(what, {{"change", CommandText(entry, entry)}}) << "\n";
}

void Undo(Session& session, Arguments& arguments) {
    zrk::History& history = session.Doc().Scene()->GetHistory();
    const int count = TakeCount(arguments, "undo", history.GetUndoCount());
    for (int i = 0; i < count; ++i) {
        Tell(session, "undone", history.GetUndoName());
        session.Doc().Undo();
    }
}

void Redo(Session& session, Arguments& arguments) {
    zrk::History& history = session.Doc().Scene()->GetHistory();
    const int count = TakeCount(arguments, "redo", history.GetRedoCount());
    for (int i = 0; i < count; ++i) {
        session.Doc().Redo();
        Tell(session, "done-again", history.GetUndoName());
    }
}

void List(Session& session, Arguments& arguments) {
    arguments.ExpectEnd();
    const zrk::History& history = session.Doc().Scene()->GetHistory();
    for (const std::string& name : history.GetUndoNames()) session.Out() << CommandText(name, name) << "\n";
    for (const std::string& name : history.GetRedoNames()) Tell(session, "taken-back", name);
    if (history.GetUndoCount() + history.GetRedoCount() == 0) session.Out() << Text("no-changes") << "\n";
}

}  // namespace

CommandTopic HistoryCommands() {
    return {"History",
            {{"undo", "[COUNT|all]", "take back the last changes", "", "undo 3", Effect::Reads, "", Undo},
             {"redo", "[COUNT|all]", "do again what was undone", "", "redo", Effect::Reads, "", Redo},
             {"history", "", "list the changes, the oldest first", "", "history", Effect::Reads, "", List}}};
}

}  // namespace zrsheet
