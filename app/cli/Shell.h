// `zrsheet shell`: does what is typed, or comes through a pipe.

#pragma once

#include <memory>
#include <string>

#include "app/cli/LineEditor.h"
#include "app/cli/ProgressBar.h"
#include "app/cli/Requests.h"
#include "app/command/Interpreter.h"

namespace zrsheet {

/// One thread.
class Shell {
public:
    explicit Shell(const ShellRequest& request);
    ~Shell();

    /// Returns when the author is done, or the pipe is empty: whether every command that came through the
    /// pipe was done; true for a terminal. Throws UserError when the request's file cannot be opened.
    bool Run();

private:
    bool RunPipe();
    void RunTerminal();
    void OpenFile();
    void Execute(const std::vector<Word>& words);
    /// False at the end.
    bool ReadCommand(std::vector<Word>& words);
    [[nodiscard]] std::string Prompt() const;
    Session::Answer Ask(const std::string& question);

    const ShellRequest m_request;
    const bool m_isTerminal;
    ProgressBar m_progress;
    Session m_session;
    std::unique_ptr<LineEditor> m_editor;  // at a terminal
};

}  // namespace zrsheet
