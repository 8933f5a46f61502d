#include "app/command/Interpreter.h"

#include <exception>
#include <new>
#include <span>
#include <string>

#include "app/document/UserError.h"
#include "zrk/operation/Transaction.h"

namespace zrsheet {

void Interpreter::Execute(const std::vector<Word>& words) {
    const Command& command = m_table.Resolve(words);
    const std::span<const Word> all(words);
    Arguments arguments(all.subspan(CommandTable::WordCount(command)), command.Usage());
    const std::string prefix = "command '" + std::string(command.name) + "': ";
    try {
        Run(command, arguments);
    } catch (const std::bad_alloc&) {
        throw UserError(prefix + "the memory of this machine is not enough; nothing was changed");
    } catch (const std::exception& error) {
        throw UserError(prefix + error.what());
    }
}

void Interpreter::Run(const Command& command, Arguments& arguments) {
    m_session.Progress({}, 0);
    if (m_session.IsInterrupted()) throw Interrupted();
    if (command.effect == Effect::Changes) {
        Change(command, arguments);
        return;
    }
    if (command.effect == Effect::Reads) static_cast<void>(m_session.Doc());
    command.run(m_session, arguments);
}

void Interpreter::Change(const Command& command, Arguments& arguments) {
    Document& document = m_session.Doc();
    const std::size_t entries = document.Scene()->GetHistory().GetUndoCount();
    zrk::Transaction action(document.Scene(), std::string(command.title));
    command.run(m_session, arguments);
    if (m_session.IsInterrupted()) throw Interrupted();
    document.Settle();
    if (m_session.IsInterrupted()) throw Interrupted();
    action.Commit();
    m_session.OnAction(entries);
}

}  // namespace zrsheet
