// What the author asked for.

#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "app/document/ItemOrder.h"
#include "app/document/ItemRules.h"
#include "app/document/LayoutChoice.h"
#include "app/document/LeaderChoice.h"
#include "app/document/PaperChoice.h"
#include "app/document/PictureChoice.h"
#include "app/document/ViewDirection.h"
#include "zrannotations/CalloutStyle.h"
#include "zrk/illustration/Numbering.h"

namespace zrsheet {

struct SheetOptions {
    std::filesystem::path model;
    ViewDirection view;
    int width = 1600;  // of the page, pixels
    int height = 1000;
    PictureChoice picture;
    PaperChoice paper;
    PaperSize print = PaperSize::None;  // of a second sheet, beside one of pixels; None: there is no second
    LayoutChoice layout;
    LeaderChoice leaders = LeaderChoice::One;
    std::string labelTemplate = "{item}";  // a text, or the name of a template
    std::filesystem::path templates;       // a file of them; empty: the ready ones alone
    zrannotations::CalloutStyle style;
    std::string language = "en";
    zrk::illustration::Numbering numbering{};
    ItemOrder order = ItemOrder::Structure;  // of the numbers
    Corner corner = Corner::TopLeft;         // from which labels are counted, by place
    ItemRules rules;                         // which parts are items
    std::vector<std::string> selection;      // patterns; none: everything
    unsigned threads = 0;                    // 0: as many as the machine has
};

}  // namespace zrsheet
