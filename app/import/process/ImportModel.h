// Imports a model without trusting the file: a child process of limited memory and time reads it, so that a
// damaged or hostile file costs a message, never the application.

#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

#include "app/import/Assembly.h"

namespace zrsheet {

/// What a file may cost, and who reads it.
struct ImportLimits {
    std::uint64_t memoryBytes = std::uint64_t{8} << 30;  // address space of the reader
    std::chrono::milliseconds time{
        300'000};                  // from start to answer; of processor time that much for every core
    std::filesystem::path reader;  // empty: zrsheet-import beside the running program
};

/// The program that reads models, beside the running one.
[[nodiscard]] std::filesystem::path ReaderProgram();

/// Told what is being done, and how much of all is done.
using ImportProgress = std::function<void(std::string_view stage, int percent)>;

/// Reads a glTF 2.0, STEP, IGES or STL model; its content tells which, not its name.
/// Progress is told by the calling thread.
/// Throws ImportError if the file is not there, of another format, damaged beyond use, without triangles, or
/// over a limit. Any thread; the calling thread waits. Memory limits are left out under address and thread
/// sanitizers, which reserve terabytes.
[[nodiscard]] Assembly ImportModel(const std::filesystem::path& file, const ImportLimits& limits = {},
                                   const ImportProgress& progress = {});

}  // namespace zrsheet
