// A program at a terminal of its own, with somebody who types.

#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

namespace zrsheet {

class TerminalSession {
public:
    /// Starts the program in the folder; history and home lie there too.
    TerminalSession(const std::string& folder, const std::vector<std::string>& arguments,
                    const std::string& locale = "C");
    TerminalSession(const TerminalSession&) = delete;
    TerminalSession& operator=(const TerminalSession&) = delete;
    /// Kills it if it still runs.
    ~TerminalSession();

    void Type(const std::string& keys) const;
    /// Waits until the text has appeared behind what was waited for last, and passes it. False when it has
    /// not in time, or when the program ended without it.
    [[nodiscard]] bool Shows(const std::string& text,
                             std::chrono::seconds patience = std::chrono::seconds(10));
    /// What came since, without the marks that move the cursor; for messages.
    [[nodiscard]] std::string Rest() const { return m_screen.substr(m_passed); }
    void Interrupt() const;
    /// Waits for the end; -1 when it does not end by itself within ten seconds.
    [[nodiscard]] int ExitCode();

private:
    bool ReadMore(int milliseconds);

    pid_t m_child = -1;
    int m_terminal = -1;
    std::string m_screen;
    std::size_t m_passed = 0;
};

}  // namespace zrsheet
