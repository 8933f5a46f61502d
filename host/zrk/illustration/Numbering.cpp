#include "zrk/illustration/Numbering.h"

#include <algorithm>

namespace zrk::illustration {
namespace {

/// 26 is Z, and AA follows: there is no letter for zero.
std::string Letters(unsigned number) {
    constexpr unsigned kLetters = 26;
    std::string letters;
    for (; number > 0; number = (number - 1) / kLetters) {
        letters.insert(letters.begin(), static_cast<char>('A' + (number - 1) % kLetters));
    }
    return letters;
}

std::string Digits(unsigned number, unsigned atLeast) {
    const std::string text = std::to_string(number);
    return std::string(std::max<std::size_t>(atLeast, text.size()) - text.size(), '0') + text;
}

}  // namespace

std::string Numbering::Write(unsigned number, const std::string& above) const {
    if (!above.empty()) return above + separator + std::to_string(number);
    return prefix + (alphabetic ? Letters(number) : Digits(number, digits));
}

}  // namespace zrk::illustration
