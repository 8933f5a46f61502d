// Writes a file so that its name holds either all of the new content or what it held before.

#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zrsheet {

/// Writes to a temporary beside `path`, brings it to the disk and renames it, so that after a crash at any
/// moment the old or the new content is there; a former file's permissions stay. Throws FileError; what stood
/// at `path` is then untouched and the temporary gone. Any thread, not for one path from two at once.
void WriteFileAtomically(const std::filesystem::path& path, std::string_view content);

struct FileContent {
    std::filesystem::path path;
    std::string content;
};

/// The same for several: none takes its name before all are on the disk.
void WriteFilesAtomically(const std::vector<FileContent>& files);

/// Throws what WriteFileAtomically would throw when a file of that name cannot be made; changes nothing.
void CheckTarget(const std::filesystem::path& path);

}  // namespace zrsheet
