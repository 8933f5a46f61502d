#include "app/command/Arguments.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "app/document/UserError.h"

namespace zrsheet {
namespace {

constexpr double kMostNumber = 1e9;

bool ReadNumber(std::string_view text, double& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && std::abs(number) < kMostNumber;
}

bool ReadNumbers(std::string_view text, std::span<double> numbers) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const bool isLast = i + 1 == numbers.size();
        const std::size_t end = isLast ? text.size() : text.find(',');
        if (end == std::string_view::npos || !ReadNumber(text.substr(0, end), numbers[i])) return false;
        text.remove_prefix(isLast ? end : end + 1);
    }
    return true;
}

}  // namespace

Arguments::Arguments(std::span<const Word> words, std::string usage)
    : m_words(words.begin(), words.end()), m_usage(std::move(usage)) {}

std::string Arguments::WithUsage(const std::string& complaint) const {
    return complaint + "; usage: " + m_usage;
}

bool Arguments::TakeKeyword(std::string_view keyword) {
    if (m_words.empty() || !m_words.front().IsPlain() || m_words.front().text != keyword) return false;
    m_words.erase(m_words.begin());
    return true;
}

void Arguments::ExpectKeyword(std::string_view keyword) {
    if (TakeKeyword(keyword)) return;
    const std::string found = m_words.empty() ? "" : " before '" + m_words.front().text + "'";
    throw UserError(WithUsage("'" + std::string(keyword) + "' is missing" + found));
}

std::string Arguments::TakeOneOf(std::span<const std::string_view> choices) {
    for (const auto choice : choices) {
        if (TakeKeyword(choice)) return std::string(choice);
    }
    std::string known;
    for (const auto choice : choices) known += (known.empty() ? "" : ", ") + std::string(choice);
    if (m_words.empty()) throw UserError(WithUsage("one of " + known + " is missing"));
    throw UserError(WithUsage("'" + m_words.front().text + "' is none of " + known));
}

std::string Arguments::Take(std::string_view what) {
    if (m_words.empty()) throw UserError(WithUsage(std::string(what) + " is missing"));
    std::string text = std::move(m_words.front().text);
    m_words.erase(m_words.begin());
    return text;
}

std::vector<std::string> Arguments::TakeSome(std::string_view what,
                                             std::initializer_list<std::string_view> keywords) {
    const auto isKeyword = [&](const Word& word) {
        return word.IsPlain() && std::find(keywords.begin(), keywords.end(), word.text) != keywords.end();
    };
    const auto end = std::find_if(m_words.begin(), m_words.end(), isKeyword);
    if (end == m_words.begin()) throw UserError(WithUsage(std::string(what) + " is missing"));
    std::vector<std::string> texts;
    for (auto word = m_words.begin(); word != end; ++word) texts.push_back(std::move(word->text));
    m_words.erase(m_words.begin(), end);
    return texts;
}

std::optional<std::string> Arguments::TakeOption(std::string_view name) {
    const std::string begin = std::string(name) + "=";
    const auto option = std::find_if(m_words.begin(), m_words.end(), [&](const Word& word) {
        return word.plainLength >= begin.size() && word.text.starts_with(begin);
    });
    if (option == m_words.end()) return std::nullopt;
    std::string value = option->text.substr(begin.size());
    m_words.erase(option);
    return value;
}

double Arguments::TakeNumber(std::string_view what) {
    double number = 0.0;
    Coordinates(what, {&number, 1});
    return number;
}

PagePoint Arguments::TakePoint(std::string_view what) {
    std::array<double, 2> numbers{};
    Coordinates(what, numbers);
    return {numbers[0], numbers[1]};
}

dg::DVec3 Arguments::TakeVector(std::string_view what) {
    std::array<double, 3> numbers{};
    Coordinates(what, numbers);
    return {numbers[0], numbers[1], numbers[2]};
}

void Arguments::Coordinates(std::string_view what, std::span<double> numbers) {
    const std::string text = Take(what);
    if (ReadNumbers(text, numbers)) return;
    static constexpr std::array<const char*, 3> kWanted{"a number such as 12.5", "two numbers such as 120,80",
                                                        "three numbers such as 0,0.5,-2"};
    throw UserError(WithUsage("'" + text + "' is no " + std::string(what) + ", which is " +
                              kWanted.at(numbers.size() - 1)));
}

int Arguments::TakeWhole(std::string_view what, int least, int most) {
    const std::string text = Take(what);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    if (isWhole && number >= least && number <= most) return number;
    throw UserError(WithUsage("'" + text + "' is no " + std::string(what) +
                              ", which is a whole number from " + std::to_string(least) + " to " +
                              std::to_string(most)));
}

std::optional<double> Arguments::TakeNumberOption(std::string_view name) {
    const auto text = TakeOption(name);
    double number = 0.0;
    if (!text) return std::nullopt;
    if (!ReadNumber(*text, number)) {
        throw UserError(WithUsage("'" + *text + "' is no number for " + std::string(name)));
    }
    return number;
}

void Arguments::ExpectEnd() const {
    if (!m_words.empty()) throw UserError(WithUsage("'" + m_words.front().text + "' is too much"));
}

}  // namespace zrsheet
