// What programs of others make of a file.

#pragma once

#include <string>

namespace zrsheet::test {

/// Runs a shell command to its end. Its output; throws std::runtime_error when it fails.
std::string OutputOf(const std::string& command);

}  // namespace zrsheet::test
