// What the author asks the program for.

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/sheet/SheetOptions.h"

namespace zrsheet {

struct MakeRequest {
    SheetOptions options;
    std::vector<std::filesystem::path> outputs;
    std::filesystem::path report;  // empty: none
    bool hasSize = false;          // the author gave the page's pixels
};

struct RunRequest {
    std::filesystem::path script;
    std::filesystem::path project;  // opened first; empty: none
    bool keepsGoing = false;
    unsigned threads = 0;                 // 0: as many as the machine has
    std::optional<std::string> language;  // of messages and new sheets; empty: English, and what sheets have
};

struct ShellRequest {
    std::filesystem::path file;  // a project or a model, opened first; empty: none
    unsigned threads = 0;
    std::optional<std::string> language;  // empty: at a terminal that of the machine
};

struct CheckRequest {
    std::filesystem::path project;
    std::filesystem::path model;  // where it is now; empty: where the project says
    bool asJson = false;
    unsigned threads = 0;                 // 0: as many as the machine has
    std::optional<std::string> language;  // of what is told; empty: that of the sheet
};

struct LintRequest {
    std::filesystem::path file;   // a project or a model
    std::filesystem::path model;  // of a project, where it is now; empty: where the project says
    bool asJson = false;
    unsigned threads = 0;                 // 0: as many as the machine has
    std::optional<std::string> language;  // of what is told; empty: that of the sheet
};

}  // namespace zrsheet
