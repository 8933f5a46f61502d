#include "app/command/Choices.h"

#include <array>

#include "app/document/LayoutChoice.h"
#include "app/document/PaperChoice.h"
#include "app/document/PictureChoice.h"
#include "app/document/StyleChoices.h"
#include "app/document/ViewDirection.h"

namespace zrsheet {
namespace {

constexpr std::array<std::string_view, 10> kModes{"left",    "center", "right",        "top",
                                                  "bottom",  "middle", "distribute-x", "distribute-y",
                                                  "space-x", "space-y"};
constexpr std::array<std::string_view, 4> kCorners{"top-left", "top-right", "bottom-right", "bottom-left"};
constexpr std::array<std::string_view, 5> kLanguages{"en", "de", "fr", "es", "ja"};

}  // namespace

std::span<const std::string_view> ChoicesOf(std::string_view kind) {
    if (kind == "MODE") return kModes;
    if (kind == "CORNER") return kCorners;
    if (kind == "LANGUAGE") return kLanguages;
    if (kind == "LAYOUT") return kLayoutWords;
    if (kind == "PAPER") return kPaperWords;
    if (kind == "PATTERN") return kPatternWords;
    if (kind == "SHAPE") return kShapeWords;
    if (kind == "STYLE") return kPictureWords;
    if (kind == "TERMINATOR") return kTerminatorWords;
    if (kind == "VIEW") return ViewNames();
    return {};
}

}  // namespace zrsheet
