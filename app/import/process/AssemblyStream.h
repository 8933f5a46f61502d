// Carries an assembly from the process that reads a file to the one that asked for it, as bytes of this
// machine.

#pragma once

#include <string>
#include <string_view>

#include "app/import/Assembly.h"

namespace zrsheet {

[[nodiscard]] std::string WriteAssembly(const Assembly& assembly);

/// The assembly whose bytes WriteAssembly made.
/// Throws ImportError unless all that Assembly.h promises about ranges and order holds: the writer may have
/// been misled by the file that it read.
[[nodiscard]] Assembly ReadAssembly(std::string_view bytes);

}  // namespace zrsheet
