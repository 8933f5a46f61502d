// What paper the author wants the sheet on, and what its parts list shows.

#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace zrsheet {

enum class PaperSize { None, A4, A3, Letter };  // None: a page of so many pixels, without frame
enum class PaperTurn { Landscape, Portrait };

/// Where the parts list stands.
enum class ListPlace {
    Sheet,  // on the first page, growing upwards from the title block, or on its own pages if it is too long
    Page,   // on its own pages, growing downwards
    None,
};

/// In the order of the enumerations.
inline constexpr std::array<std::string_view, 4> kPaperWords{"none", "a4", "a3", "letter"};
inline constexpr std::array<std::string_view, 2> kTurnWords{"landscape", "portrait"};
inline constexpr std::array<std::string_view, 3> kListWords{"sheet", "page", "none"};

struct PaperChoice {
    PaperSize size = PaperSize::None;
    PaperTurn turn = PaperTurn::Landscape;
    ListPlace list = ListPlace::Sheet;     // on paper
    std::string title;                     // empty: the model's name
    std::string date;                      // any text; empty: none is shown
    std::vector<std::string> listColumns;  // see ListColumn.h; none: the usual ones

    friend bool operator==(const PaperChoice&, const PaperChoice&) = default;
};

/// Width and height, as they lie.
struct PaperExtent {
    double width = 0.0;  // millimetres
    double height = 0.0;
};
/// Requires: a size other than None.
[[nodiscard]] PaperExtent ExtentOf(PaperSize size, PaperTurn turn);

/// All throw UserError for what is none.
[[nodiscard]] PaperSize ParsePaperSize(std::string_view word);
[[nodiscard]] PaperTurn ParsePaperTurn(std::string_view word);
[[nodiscard]] ListPlace ParseListPlace(std::string_view word);

}  // namespace zrsheet
