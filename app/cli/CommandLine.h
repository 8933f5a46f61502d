// What the author types.

#pragma once

#include <variant>

#include "app/cli/Requests.h"

namespace zrsheet {

/// The outcome of reading the command line: go on with a request, or stop with an exit code.
using CommandLine = std::variant<int, MakeRequest, RunRequest, ShellRequest, CheckRequest, LintRequest>;

/// Prints help, version, or one line that says what is wrong with the arguments.
[[nodiscard]] CommandLine ReadCommandLine(int argc, const char* const* argv);

}  // namespace zrsheet
