// Where frame, title block, picture and parts list lie on paper.

#pragma once

#include <string>
#include <vector>

#include "app/document/Document.h"
#include "app/sheet/Sheet.h"

namespace zrsheet {

/// The paper never grows.
struct PaperLayout {
    double width = 0.0;  // page pixels, as everything here
    double height = 0.0;
    SheetFrame frame;
    PageBox figure;                        // whole pixels
    std::vector<SheetTable> tables;        // on the first page, growing upwards from the title block
    std::vector<SheetListPage> listPages;  // when the list has pages of its own
};

/// What the picture is to show, without balloons: how wide and high in any unit.
struct PaperContent {
    double width = 1.0;
    double height = 1.0;
};

/// What the author chose, or the model's name.
[[nodiscard]] std::string TitleOf(const Document& document);

/// The document's list, of these items, as it is to be printed in that style. It stands beside or below the
/// picture, in as many tables and rows as close as let the content be largest; a list that leaves it too
/// little goes to pages of its own. Requires: the document is on paper; the content is not empty.
[[nodiscard]] PaperLayout LayOutPaper(const Document& document, const std::vector<SheetItem>& items,
                                      const SheetStyle& style, const PaperContent& content);

/// The style for the same paper with `factor` times as many pixels: frame, title block and parts list remain
/// as large as they are, and the picture gets so many more pixels.
[[nodiscard]] SheetStyle Refined(SheetStyle style, double factor);

}  // namespace zrsheet
