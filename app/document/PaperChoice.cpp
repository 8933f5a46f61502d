#include "app/document/PaperChoice.h"

#include <utility>

#include "app/document/ChoiceWords.h"

namespace zrsheet {

PaperExtent ExtentOf(PaperSize size, PaperTurn turn) {
    constexpr std::array<PaperExtent, 4> kUpright{{{}, {210.0, 297.0}, {297.0, 420.0}, {215.9, 279.4}}};
    PaperExtent extent = kUpright.at(static_cast<std::size_t>(size));
    if (turn == PaperTurn::Landscape) std::swap(extent.width, extent.height);
    return extent;
}

PaperSize ParsePaperSize(std::string_view word) {
    return static_cast<PaperSize>(ParseChoice(word, kPaperWords, "size of paper"));
}

PaperTurn ParsePaperTurn(std::string_view word) {
    return static_cast<PaperTurn>(ParseChoice(word, kTurnWords, "orientation of paper"));
}

ListPlace ParseListPlace(std::string_view word) {
    return static_cast<ListPlace>(ParseChoice(word, kListWords, "place of the parts list"));
}

}  // namespace zrsheet
