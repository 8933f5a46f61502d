// What a session of the program reaches the world through.

#pragma once

#include <optional>
#include <string>

#include "app/cli/ProgressBar.h"
#include "app/command/Session.h"

namespace zrsheet {

/// Standard output, warnings on standard error, the bar for progress, nobody to ask. Without a language
/// English, until a sheet with another one is open. The bar must outlive them.
[[nodiscard]] Session::Surroundings SurroundingsWith(ProgressBar& progress, unsigned threads,
                                                     const std::optional<std::string>& language);

}  // namespace zrsheet
