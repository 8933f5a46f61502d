#include "app/cli/Surroundings.h"

#include <iostream>

#include "app/cli/Warning.h"
#include "app/sheet/SheetMaker.h"

namespace zrsheet {

Session::Surroundings SurroundingsWith(ProgressBar& progress, unsigned threads,
                                       const std::optional<std::string>& language) {
    return {std::cout,
            [&progress](std::string_view stage, int percent) { progress.Show(stage, percent); },
            {},
            ThreadCount(threads),
            PrintWarning,
            {},
            language.value_or("en"),
            language.has_value()};
}

}  // namespace zrsheet
