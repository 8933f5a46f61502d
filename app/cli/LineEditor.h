// Reads lines that are typed at a terminal, with editing, history and completion.

#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "app/command/Completer.h"

namespace zrsheet {

/// On standard input and output, which are a terminal. One at a time: it takes over the interrupt key while
/// it lives. What cannot be read from the history's file or written there is left out without a word.
class LineEditor {
public:
    using Complete = std::function<Completion(std::string_view line)>;

    LineEditor(std::filesystem::path historyFile, Complete complete);
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;
    ~LineEditor();

    enum class Outcome {
        Line,
        Interrupted,  // the line was given up
        End,          // of the input
    };

    /// `line` comes without its end.
    Outcome Read(const std::string& prompt, std::string& line);
    /// Enters a line into the history and its file.
    void Remember(const std::string& line);

private:
    class Terminal;

    const std::unique_ptr<Terminal> m_terminal;
};

/// $XDG_STATE_HOME/zrsheet/history, or where that is not set, below the home folder; empty without one.
[[nodiscard]] std::filesystem::path HistoryFile();

}  // namespace zrsheet
