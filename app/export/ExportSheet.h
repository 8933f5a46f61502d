// Writes the sheet in the format that the file name asks for.

#pragma once

#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

#include "app/sheet/Sheet.h"

namespace zrsheet {

struct ExportOptions {
    int pngScale = 1;  // picture pixels of a PNG per page pixel, at least 1
};

/// The known extensions with their dots, for help texts: ".svg" and so on.
[[nodiscard]] std::span<const std::string_view> ExportExtensions();

/// Is the extension known? Upper and lower case are alike.
[[nodiscard]] bool CanExport(const std::filesystem::path& path);

/// Upper and lower case are alike; `extension` has its dot and is in lower case.
[[nodiscard]] bool HasExtension(const std::filesystem::path& path, std::string_view extension);

/// A sheet on its way into a file.
struct SheetFile {
    const Sheet& sheet;
    std::filesystem::path path;
};

/// Writes all or, when it throws, none: ExportError when an extension is not known or a content cannot be
/// made, FileError when a file cannot be written. Where one refers to another, as parts data to their
/// picture, it is to one of these.
void ExportSheets(const std::vector<SheetFile>& files, const ExportOptions& options = {});

/// The same for one.
void ExportSheet(const Sheet& sheet, const std::filesystem::path& path, const ExportOptions& options = {});

}  // namespace zrsheet
