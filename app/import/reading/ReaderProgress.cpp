#include "app/import/reading/ReaderProgress.h"

#include <fmt/format.h>

#include <cstdio>

#include "app/import/process/ChildProcess.h"

namespace zrsheet {

void TellReaderProgress(std::string_view stage, int percent) {
    std::fputs(fmt::format("{}{} {}\n", kProgressMark, percent, stage).c_str(), stderr);
}

}  // namespace zrsheet
