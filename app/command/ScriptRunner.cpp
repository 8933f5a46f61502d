#include "app/command/ScriptRunner.h"

#include <vector>

#include "app/command/ScriptReader.h"
#include "app/document/UserError.h"

namespace zrsheet {

ScriptRunner::ScriptRunner(Session& session, std::ostream& errors)
    : m_session(session), m_interpreter(CommandTable::Get(), session), m_errors(errors) {}

bool ScriptRunner::Run(std::istream& script, const std::string& name, bool keepsGoing) {
    ScriptReader reader(script);
    std::vector<Word> words;
    bool isDone = true;
    while (!m_session.IsQuitting() && (isDone || keepsGoing)) {
        try {
            if (!reader.Next(words)) break;
            m_interpreter.Execute(words);
        } catch (const UserError& error) {
            m_session.Out().flush();
            m_errors << name << ':' << reader.Line() << ": " << error.what() << std::endl;
            isDone = false;
            if (m_session.IsInterrupted()) break;
        }
    }
    return isDone;
}

}  // namespace zrsheet
