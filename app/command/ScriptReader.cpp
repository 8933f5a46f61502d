#include "app/command/ScriptReader.h"

#include "app/command/WordSplitter.h"
#include "app/document/UserError.h"

namespace zrsheet {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

// A line longer than any command is cut, so that a file without line ends costs no memory; the splitter says
// what is wrong with it.
bool ScriptReader::ReadLine(std::string& line) {
    line.clear();
    bool isAny = false;
    for (int c = m_in.get(); c != std::istream::traits_type::eof(); c = m_in.get()) {
        isAny = true;
        if (c == '\n') break;
        if (line.size() <= WordSplitter::kLongestCommand) line += static_cast<char>(c);
    }
    if (!isAny) return false;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (++m_linesRead == 1 && line.starts_with(kByteOrderMark)) line.erase(0, kByteOrderMark.size());
    return true;
}

bool ScriptReader::Next(std::vector<Word>& words) {
    words.clear();
    std::string line;
    while (words.empty()) {
        m_line = m_linesRead + 1;
        if (!ReadLine(line)) return false;
        try {
            words = SplitCommand(line);
        } catch (const UserError&) {
            // The lines that it goes on with are no commands of their own.
            while (line.ends_with('\\') && ReadLine(line)) {
            }
            throw;
        }
    }
    return true;
}

/// `line` is its first line, and its last afterwards.
std::vector<Word> ScriptReader::SplitCommand(std::string& line) {
    WordSplitter splitter;
    bool goesOn = splitter.Add(line);
    while (goesOn && ReadLine(line)) goesOn = splitter.Add(line);
    if (goesOn) throw UserError("the backslash at the end goes on with a line that is not there; remove it");
    return splitter.Take();
}

}  // namespace zrsheet
