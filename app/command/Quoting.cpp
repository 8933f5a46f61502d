#include "app/command/Quoting.h"

namespace zrsheet {

std::string Quoted(std::string_view text, char quote, bool isOpen) {
    const bool isPlain = !text.empty() && text.find_first_of(" \t'\"\\#") == std::string_view::npos;
    if (quote == '\0' && isPlain) return std::string(text);
    if (quote == '\0') quote = '\'';
    std::string quoted(1, quote);
    for (const char c : text) {
        if (c == quote || c == '\\') quoted += '\\';
        quoted += c;
    }
    if (!isOpen) quoted += quote;
    return quoted;
}

}  // namespace zrsheet
