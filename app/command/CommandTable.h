// All commands of the language.

#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "app/command/Command.h"
#include "app/command/Word.h"

namespace zrsheet {

/// Never changes once made. Any thread.
class CommandTable {
public:
    /// The one of the application.
    static const CommandTable& Get();

    [[nodiscard]] const std::vector<CommandTopic>& Topics() const { return m_topics; }
    /// Null when there is none of that name.
    [[nodiscard]] const Command* Find(std::string_view name) const;
    /// The command that the words begin with. Throws UserError. Requires: at least one word.
    [[nodiscard]] const Command& Resolve(const std::vector<Word>& words) const;
    /// The words that begin commands, or go on after this first word, in alphabetical order.
    [[nodiscard]] std::vector<std::string_view> FirstWords() const;
    [[nodiscard]] std::vector<std::string_view> SecondWords(std::string_view first) const;

    /// Of a command's name.
    [[nodiscard]] static std::size_t WordCount(const Command& command);

private:
    CommandTable();

    std::vector<CommandTopic> m_topics;
};

}  // namespace zrsheet
