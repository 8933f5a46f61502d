// Says how a command that is being typed can go on.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/command/CommandTable.h"
#include "app/command/Session.h"

namespace zrsheet {

/// What can stand in place of the line from byte `begin` on: whole words as they are typed, quoted where that
/// is needed, in alphabetical order. One that others may follow at once, such as a folder, does not end its
/// word.
struct Completion {
    struct Candidate {
        std::string text;
        bool endsWord = true;
    };
    std::size_t begin = 0;
    std::vector<Candidate> candidates;
};

/// One thread.
class Completer {
public:
    /// Requires: both outlive this.
    Completer(const CommandTable& table, const Session& session) : m_table(table), m_session(session) {}

    /// For a line that ends where the cursor stands.
    [[nodiscard]] Completion Complete(std::string_view line) const;

private:
    using Texts = std::vector<std::string>;

    [[nodiscard]] Texts TextsFor(const std::vector<Word>& words) const;
    void AddArguments(const Command& command, Texts& texts, std::string_view begun) const;
    void AddOption(std::string_view name, std::string_view value, Texts& texts, std::string_view begun) const;
    void AddKind(std::string_view kind, Texts& texts, std::string_view begun) const;
    void AddNamesFromDocument(std::string_view kind, Texts& texts) const;

    const CommandTable& m_table;
    const Session& m_session;
};

}  // namespace zrsheet
