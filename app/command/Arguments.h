// What is written behind a command's name, taken word by word.

#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/command/Word.h"
#include "app/document/PageGeometry.h"
#include "dg/DVec3.h"

namespace zrsheet {

/// Every operation throws UserError for what is missing or wrong; its text ends with the command's usage.
/// Words in quotes are never keywords nor options.
class Arguments {
public:
    /// `usage` is the whole command, for messages.
    Arguments(std::span<const Word> words, std::string usage);

    [[nodiscard]] bool IsEmpty() const { return m_words.empty(); }
    /// Takes the next word if it is this keyword.
    bool TakeKeyword(std::string_view keyword);
    void ExpectKeyword(std::string_view keyword);
    /// Takes the next word, which is one of these.
    std::string TakeOneOf(std::span<const std::string_view> choices);
    /// `what` is what the usage calls it.
    std::string Take(std::string_view what);
    /// At least one word, up to the end or to a word that is one of the keywords, which is left.
    std::vector<std::string> TakeSome(std::string_view what,
                                      std::initializer_list<std::string_view> keywords = {});
    /// Takes `name=value` from wherever it stands.
    std::optional<std::string> TakeOption(std::string_view name);

    /// Numbers are finite and below a thousand million.
    double TakeNumber(std::string_view what);
    /// "x,y".
    PagePoint TakePoint(std::string_view what);
    /// "x,y,z".
    dg::DVec3 TakeVector(std::string_view what);
    /// From `least` to `most`.
    int TakeWhole(std::string_view what, int least, int most);
    std::optional<double> TakeNumberOption(std::string_view name);

    /// Nothing is left over.
    void ExpectEnd() const;

    /// To throw for what only the command can know is wrong with its words.
    [[nodiscard]] std::string WithUsage(const std::string& complaint) const;

private:
    void Coordinates(std::string_view what, std::span<double> numbers);

    std::vector<Word> m_words;  // those not taken yet
    std::string m_usage;
};

}  // namespace zrsheet
