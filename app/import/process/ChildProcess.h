// Runs a program that may fail in every way there is, and tells how it ended.

#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zrsheet {

struct ChildLimits {
    std::uint64_t memoryBytes = 0;  // address space; 0: not limited
    std::uint64_t outputBytes = 0;  // of standard output; standard error keeps its first kilobytes
    std::chrono::milliseconds time{0};
};

/// How a child ended, and what it wrote until then.
struct ChildResult {
    enum class End { Exited, Signalled, TimedOut, TooMuchOutput };
    End end = End::Exited;
    int code = 0;  // exit code, or number of the signal
    std::string output;
    std::string errors;
};

/// How a child tells how far it is: a line on standard error that begins with this.
inline constexpr char kProgressMark = '@';

/// Runs `program` with `arguments`, standard input empty, and waits until it has ended; a child over a limit
/// is killed. Lines of progress go to `onProgress`, without their mark, and not to the errors. Nothing of it
/// outlives the call. Throws std::system_error if the program cannot be started. Any thread.
[[nodiscard]] ChildResult RunChild(const std::filesystem::path& program,
                                   const std::vector<std::string>& arguments, const ChildLimits& limits,
                                   const std::function<void(std::string_view)>& onProgress = {});

}  // namespace zrsheet
