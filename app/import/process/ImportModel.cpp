#include "app/import/process/ImportModel.h"

#include <fmt/format.h>

#include <charconv>
#include <system_error>

#include "app/import/ImportError.h"
#include "app/import/Utf8Text.h"
#include "app/import/process/AssemblyStream.h"
#include "app/import/process/ChildProcess.h"

namespace zrsheet {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kCanLimitMemory = false;
#else
constexpr bool kCanLimitMemory = true;
#endif

// "37 Triangulating" as the reader writes it.
void TellProgress(std::string_view line, const ImportProgress& progress) {
    int percent = 0;
    const auto [rest, error] = std::from_chars(line.data(), line.data() + line.size(), percent);
    if (error != std::errc()) return;
    line.remove_prefix(static_cast<std::size_t>(rest - line.data()));
    if (line.starts_with(" ") && progress) progress(line.substr(1), percent);
}

ChildResult RunReader(const std::filesystem::path& file, const ImportLimits& limits,
                      const ImportProgress& progress) {
    const std::filesystem::path reader = limits.reader.empty() ? ReaderProgram() : limits.reader;
    const ChildLimits childLimits{kCanLimitMemory ? limits.memoryBytes : 0, limits.memoryBytes, limits.time};
    try {
        return RunChild(reader, {file.string()}, childLimits,
                        [&progress](std::string_view line) { TellProgress(line, progress); });
    } catch (const std::system_error& error) {
        throw ImportError(fmt::format("the reader {} cannot be started ({}); install zrsheet again",
                                      reader.string(), error.code().message()));
    }
}

std::string Complaint(const ChildResult& result, const ImportLimits& limits) {
    if (result.end == ChildResult::End::TimedOut) {
        return fmt::format("reading took longer than {} s; the file is probably damaged, otherwise split it",
                           std::chrono::duration<double>(limits.time).count());
    }
    if (result.end == ChildResult::End::TooMuchOutput) {
        return fmt::format("the model needs more than {} MiB; split it", limits.memoryBytes >> 20);
    }
    if (result.end == ChildResult::End::Signalled) {
        return fmt::format("the reader stopped with signal {}; the file is probably damaged, export it again",
                           result.code);
    }
    std::string message = OneLine(result.errors);
    if (!message.empty()) return message;
    return fmt::format("the reader ended with code {}; the file is probably damaged, export it again",
                       result.code);
}

}  // namespace

std::filesystem::path ReaderProgram() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "zrsheet-import";
}

Assembly ImportModel(const std::filesystem::path& file, const ImportLimits& limits,
                     const ImportProgress& progress) {
    try {
        const ChildResult result = RunReader(file, limits, progress);
        if (result.end != ChildResult::End::Exited || result.code != 0) {
            throw ImportError(Complaint(result, limits));
        }
        Assembly assembly = ReadAssembly(result.output);
        assembly.name = OneLine(file.stem().string());
        return assembly;
    } catch (const ImportError& error) {
        throw ImportError(OneLine(file.string()) + ": " + error.what());
    }
}

}  // namespace zrsheet
