// Project files on the disk, and the model files that they refer to.

#pragma once

#include <filesystem>

#include "app/project/ProjectData.h"

namespace zrsheet {

/// After a crash at any moment the old or the new file is there, whole. Throws UserError or FileError, the
/// old file untouched, when it cannot be written, or what stands there is no project or one of a newer
/// program.
void SaveProject(const ProjectData& project, const std::filesystem::path& file);

/// Throws UserError when the file cannot be read, is damaged, or of a newer program.
[[nodiscard]] ProjectData LoadProject(const std::filesystem::path& file);

/// What the file is like now; its path is absolute. Throws UserError when it cannot be read. Reads the whole
/// file.
[[nodiscard]] ProjectModel DescribeModel(const std::filesystem::path& model);

/// What a project in `file` calls the model: its way from the project's folder.
[[nodiscard]] std::string ModelPathFrom(const std::filesystem::path& file, const std::string& model);

/// Where the model of the project in `file` is. Throws UserError when there is none.
[[nodiscard]] std::filesystem::path FindModel(const ProjectModel& model, const std::filesystem::path& file);

}  // namespace zrsheet
