// The report for programs: where every callout stands on the page and how long each stage took.

#pragma once

#include <filesystem>
#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// JSON; places are page pixels with the origin at the top left, numbers rounded to 2 decimals.
[[nodiscard]] std::string ReportText(const Sheet& sheet);

/// The part of it that tells what is wrong with the places of labels, alone.
[[nodiscard]] std::string QualityText(const Sheet& sheet);

/// Throws FileError.
void ExportReport(const Sheet& sheet, const std::filesystem::path& path);

}  // namespace zrsheet
