// What the program says to its user, in the language that it speaks.
//
// That is the language of the sheet unless another is set. Texts lie in messages/zrsheet/program, in the
// notation of ICU messages; those that go with the table of commands in messages/zrsheet/commands.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zrsheet {

/// "en", "de", "fr", "es" or "ja"; "": the language of the sheet, as in the beginning. One thread, before
/// others ask for texts.
void SetSpokenLanguage(const std::string& language);
[[nodiscard]] std::string SpokenLanguage();

/// What stands for a name in braces. Numbers choose plural forms, and are grouped as the language does.
struct TextArgument {
    TextArgument(const char* argument, std::string_view text) : name(argument), value(std::string(text)) {}
    TextArgument(const char* argument, std::size_t number)
        : name(argument), value(static_cast<std::int64_t>(number)) {}

    const char* name;
    std::variant<std::int64_t, std::string> value;
};

/// The text as it stands; the id itself when there is none.
[[nodiscard]] std::string Text(const std::string& id);
/// With the arguments filled in.
[[nodiscard]] std::string Text(const std::string& id, const std::vector<TextArgument>& arguments);

/// What stands for an English text of the table of commands: a summary, by the command's name; titles of
/// topics and of history entries, by themselves.
[[nodiscard]] std::string CommandText(std::string_view id, std::string_view english);

}  // namespace zrsheet
