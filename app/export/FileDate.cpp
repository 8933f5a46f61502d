#include "app/export/FileDate.h"

#include <charconv>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace zrsheet {
namespace {

constexpr std::time_t kFixed = 946684800;      // the beginning of 2000
constexpr std::time_t kLatest = 253402300799;  // the end of 9999

}  // namespace

std::tm FileDate() {
    std::time_t seconds = kFixed;
    if (const char* given = std::getenv("SOURCE_DATE_EPOCH")) {
        const std::string_view text(given);
        std::time_t value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        const bool isWhole = error == std::errc() && end == text.data() + text.size();
        if (isWhole && value >= 0 && value <= kLatest) seconds = value;
    }
    std::tm date{};
    gmtime_r(&seconds, &date);
    return date;
}

}  // namespace zrsheet
