// Does what commands say.

#pragma once

#include <vector>

#include "app/command/CommandTable.h"
#include "app/command/Session.h"
#include "app/command/Word.h"

namespace zrsheet {

/// One thread.
class Interpreter {
public:
    /// Requires: both outlive this.
    Interpreter(const CommandTable& table, Session& session) : m_table(table), m_session(session) {}

    /// A command that changes the illustration is one entry of its history. Throws UserError, whose text
    /// names the command; nothing is changed then, nor when the session is interrupted. Requires: at least
    /// one word.
    void Execute(const std::vector<Word>& words);

private:
    void Run(const Command& command, Arguments& arguments);
    void Change(const Command& command, Arguments& arguments);

    const CommandTable& m_table;
    Session& m_session;
};

}  // namespace zrsheet
