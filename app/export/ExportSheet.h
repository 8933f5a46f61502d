// Writes the sheet in the format that the file name asks for.

#pragma once

#include <filesystem>
#include <span>
#include <string_view>

#include "app/sheet/Sheet.h"

namespace zrsheet {

struct ExportOptions {
    int pngScale = 1;  // picture pixels of a PNG per page pixel, at least 1
};

/// The known extensions with their dots, for help texts: ".svg" and so on.
[[nodiscard]] std::span<const std::string_view> ExportExtensions();

/// Is the extension known? Upper and lower case are alike.
[[nodiscard]] bool CanExport(const std::filesystem::path& path);

/// Throws ExportError when the extension is not known, FileError when the file cannot be written; nothing is
/// half written then.
void ExportSheet(const Sheet& sheet, const std::filesystem::path& path, const ExportOptions& options = {});

}  // namespace zrsheet
