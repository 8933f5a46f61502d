#include "app/command/Choices.h"

#include <array>

#include "app/document/ViewDirection.h"

namespace zrsheet {
namespace {

constexpr std::array<std::string_view, 10> kModes{"left",    "center", "right",        "top",
                                                  "bottom",  "middle", "distribute-x", "distribute-y",
                                                  "space-x", "space-y"};
constexpr std::array<std::string_view, 5> kLanguages{"en", "de", "fr", "es", "ja"};

}  // namespace

std::span<const std::string_view> ChoicesOf(std::string_view kind) {
    if (kind == "MODE") return kModes;
    if (kind == "LANGUAGE") return kLanguages;
    if (kind == "VIEW") return ViewNames();
    return {};
}

}  // namespace zrsheet
