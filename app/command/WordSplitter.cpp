#include "app/command/WordSplitter.h"

#include <algorithm>
#include <utility>

#include "app/document/UserError.h"
#include "app/import/Utf8Text.h"

namespace zrsheet {
namespace {

bool IsSpace(char c) { return c == ' ' || c == '\t'; }

bool IsControl(char c) { return (static_cast<unsigned char>(c) < 0x20U && c != '\t') || c == '\x7f'; }

/// Of the byte, counted in characters from 1.
std::size_t ColumnOf(std::string_view line, std::size_t byte) {
    const auto isStart = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
    return 1 + static_cast<std::size_t>(
                   std::count_if(line.begin(), line.begin() + static_cast<long>(byte), isStart));
}

void CheckText(std::string_view line) {
    const auto control = std::find_if(line.begin(), line.end(), IsControl);
    if (control != line.end()) {
        const auto byte = static_cast<std::size_t>(control - line.begin());
        throw UserError("character " + std::to_string(ColumnOf(line, byte)) +
                        " is no text; a script is a plain text file");
    }
    if (ValidUtf8(line) != line) throw UserError("the line is not UTF-8; save the script in that encoding");
}

std::size_t CharacterLength(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte < 0xC0U) return 1;
    if (byte < 0xE0U) return 2;
    return byte < 0xF0U ? 3 : 4;
}

}  // namespace

bool WordSplitter::Add(std::string_view line) {
    m_length += line.size();
    if (m_length > kLongestCommand) {
        throw UserError("the command is longer than " + std::to_string(kLongestCommand) +
                        " bytes; use patterns such as 'Bolt*' or several commands");
    }
    CheckText(line);
    m_wordBegin = 0;
    bool goesOn = false;
    for (m_at = 0; m_at < line.size() && !m_isComment && !goesOn;) {
        goesOn = line[m_at] == '\\' && m_at + 1 == line.size();
        if (!goesOn) Step(line);
    }
    return goesOn;
}

void WordSplitter::Step(std::string_view line) {
    const char c = line[m_at];
    if (m_quote == '\0' && IsSpace(c)) {
        m_isInWord = false;
        ++m_at;
        return;
    }
    if (m_quote == '\0' && c == '#' && !m_isInWord) {
        m_isComment = true;
        return;
    }
    if (!m_isInWord) m_wordBegin = m_at;
    const bool isQuote = m_quote != '\0' ? c == m_quote : c == '\'' || c == '"';
    if (isQuote) {
        if (m_quote == '\0') m_quoteColumn = ColumnOf(line, m_at);
        ++m_at;
        m_quote = m_quote == '\0' ? c : '\0';
        Append({}, false);
        return;
    }
    const bool isEscaped = c == '\\';
    if (isEscaped) ++m_at;
    const std::size_t length = CharacterLength(line[m_at]);
    Append(line.substr(m_at, length), !isEscaped && m_quote == '\0');
    m_at += length;
}

void WordSplitter::Append(std::string_view text, bool isPlain) {
    if (!m_isInWord) m_words.emplace_back();
    m_isInWord = true;
    Word& word = m_words.back();
    if (isPlain && word.IsPlain()) word.plainLength += text.size();
    word.text += text;
}

std::vector<Word> WordSplitter::Take() {
    if (m_quote != '\0') {
        throw UserError("the quote " + std::string(1, m_quote) + " at character " +
                        std::to_string(m_quoteColumn) + " has no partner; close it, or write \\" + m_quote +
                        " for the character itself");
    }
    return std::move(m_words);
}

WordSplitter::Unfinished WordSplitter::TakeUnfinished() {
    if (m_isComment) return {};
    if (!m_isInWord) m_words.emplace_back();
    return {std::move(m_words), m_isInWord ? m_wordBegin : m_at, m_quote};
}

}  // namespace zrsheet
