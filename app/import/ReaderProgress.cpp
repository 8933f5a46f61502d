#include "app/import/ReaderProgress.h"

#include <fmt/format.h>

#include <cstdio>

#include "app/import/ChildProcess.h"

namespace zrsheet {

void TellReaderProgress(std::string_view stage, int percent) {
    std::fputs(fmt::format("{}{} {}\n", kProgressMark, percent, stage).c_str(), stderr);
}

}  // namespace zrsheet
