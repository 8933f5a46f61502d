// Reads the commands of a script one by one.

#pragma once

#include <istream>
#include <string>
#include <vector>

#include "app/command/Word.h"

namespace zrsheet {

/// One thread; memory for one command.
class ScriptReader {
public:
    /// Requires: `in` outlives this.
    explicit ScriptReader(std::istream& in) : m_in(in) {}

    /// The words of the next command; comments and empty lines are passed over. False at the end. Throws
    /// UserError for a command that cannot be split into words; the next call goes on behind it.
    bool Next(std::vector<Word>& words);
    /// Where the command that was read last begins, counted from 1.
    [[nodiscard]] int Line() const { return m_line; }

private:
    bool ReadLine(std::string& line);
    std::vector<Word> SplitCommand(std::string& line);

    std::istream& m_in;
    int m_linesRead = 0;
    int m_line = 0;
};

}  // namespace zrsheet
