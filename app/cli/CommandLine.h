// What the author types.

#pragma once

#include <filesystem>
#include <vector>

#include "app/sheet/SheetOptions.h"

namespace zrsheet {

struct MakeRequest {
    SheetOptions options;
    std::vector<std::filesystem::path> outputs;
    std::filesystem::path report;  // empty: none
};

/// The outcome of reading the command line: go on with the request, or stop with the exit code.
struct CommandLine {
    bool isRequest = false;
    int exitCode = 0;
    MakeRequest request;
};

/// Prints help, version, or one line that says what is wrong with the arguments.
[[nodiscard]] CommandLine ReadCommandLine(int argc, const char* const* argv);

}  // namespace zrsheet
