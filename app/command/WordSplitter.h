// Splits command lines into words.
//
// Words stand apart by spaces or tabs. 'Single' and "double" quotes hold a word together; a backslash makes
// the next character plain, in quotes too. A # where a word could begin starts a comment. A backslash at the
// end of a line goes on with the next one.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "app/command/Word.h"

namespace zrsheet {

/// One for each command; takes its lines one after the other.
class WordSplitter {
public:
    /// Returns whether the command goes on in the next line. Throws UserError for what is no text and for
    /// commands over kLongestCommand bytes.
    bool Add(std::string_view line);
    /// The words of the command, which ends here. Throws UserError for a quote without a partner.
    [[nodiscard]] std::vector<Word> Take();

    /// For commands that are still being typed: the words so far, the last of which, maybe empty, goes on.
    /// Where it begins is counted in bytes of the line added last. No words in a comment.
    struct Unfinished {
        std::vector<Word> words;
        std::size_t lastBegin = 0;
        char openQuote = '\0';
    };
    [[nodiscard]] Unfinished TakeUnfinished();

    static constexpr std::size_t kLongestCommand = 64 * 1024;

private:
    void Step(std::string_view line);
    void Append(std::string_view text, bool isPlain);

    std::vector<Word> m_words;
    std::size_t m_length = 0;       // bytes of all lines
    std::size_t m_at = 0;           // byte of the line
    std::size_t m_wordBegin = 0;    // byte of the line
    std::size_t m_quoteColumn = 0;  // character of its line, from 1
    char m_quote = '\0';            // the open one
    bool m_isInWord = false;
    bool m_isComment = false;
};

}  // namespace zrsheet
