// Reads whole files.

#pragma once

#include <filesystem>
#include <string>

namespace zrsheet {

/// The file's bytes. Throws ImportError, which names no file, if it is not there, no plain file or not
/// readable.
[[nodiscard]] std::string ReadFile(const std::filesystem::path& file);

}  // namespace zrsheet
