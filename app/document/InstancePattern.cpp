#include "app/document/InstancePattern.h"

#include <algorithm>
#include <cctype>

namespace zrsheet {
namespace {

bool IsSame(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

/// The last name of a path, without the number that tells instances of one name apart.
std::string_view NameOf(std::string_view path) {
    path.remove_prefix(path.rfind('/') + 1);
    const std::size_t colon = path.find_last_not_of("0123456789");
    const bool isNumbered = colon != std::string_view::npos && path[colon] == ':' && colon + 1 < path.size();
    return isNumbered ? path.substr(0, colon) : path;
}

bool MatchesAt(std::string_view path, const std::string& pattern) {
    return pattern.find('/') != std::string::npos ? MatchesGlob(path, pattern)
                                                  : MatchesGlob(NameOf(path), pattern);
}

}  // namespace

// On a mismatch the last star takes one character more; earlier stars need no second try.
bool MatchesGlob(std::string_view text, std::string_view pattern) {
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;
    std::size_t taken = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            taken = t;
        } else if (p < pattern.size() && (pattern[p] == '?' || IsSame(pattern[p], text[t]))) {
            ++p;
            ++t;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            t = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

bool IsSelected(std::string_view path, const std::vector<std::string>& patterns) {
    if (patterns.empty()) return true;
    while (!path.empty()) {
        const bool isMatch =
            std::any_of(patterns.begin(), patterns.end(),
                        [path](const std::string& pattern) { return MatchesAt(path, pattern); });
        if (isMatch) return true;
        path = path.substr(0, path.rfind('/'));
    }
    return false;
}

}  // namespace zrsheet
