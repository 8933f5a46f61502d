// Runs scripts from their first command to their last.

#pragma once

#include <istream>
#include <ostream>
#include <string>

#include "app/command/Interpreter.h"

namespace zrsheet {

/// One thread.
class ScriptRunner {
public:
    /// Complaints go to `errors`, a line each: "FILE:LINE: what is wrong; what to do". Requires: all outlive
    /// this.
    ScriptRunner(Session& session, std::ostream& errors);

    /// Returns whether every command was done. The first that fails is the last, unless `keepsGoing`. `name`
    /// is what complaints call the script.
    bool Run(std::istream& script, const std::string& name, bool keepsGoing);

private:
    Session& m_session;
    Interpreter m_interpreter;
    std::ostream& m_errors;
};

}  // namespace zrsheet
