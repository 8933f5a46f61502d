// What the author asked for.

#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "app/document/LeaderChoice.h"
#include "app/document/ViewDirection.h"
#include "zrannotations/CalloutStyle.h"

namespace zrsheet {

struct SheetOptions {
    std::filesystem::path model;
    ViewDirection view;
    int width = 1600;  // of the page, pixels
    int height = 1000;
    LeaderChoice leaders = LeaderChoice::One;
    std::string labelTemplate = "{item}";
    zrannotations::CalloutStyle style;
    std::string language = "en";
    bool isHierarchical = false;
    std::vector<std::string> selection;  // patterns; none: everything
    unsigned threads = 0;                // 0: as many as the machine has
};

}  // namespace zrsheet
