#include "app/export/ExportSheet.h"

#include <algorithm>
#include <array>
#include <string>

#include "app/catalogue/CatalogueHtml.h"
#include "app/export/CsvExporter.h"
#include "app/export/ExportError.h"
#include "app/export/JsonExporter.h"
#include "app/export/PngExporter.h"
#include "app/export/SvgExporter.h"
#include "app/file/AtomicFile.h"

namespace zrsheet {
namespace {

constexpr std::array<std::string_view, 5> kExtensions{".svg", ".png", ".html", ".json", ".csv"};

std::string ExtensionOf(const std::filesystem::path& path) {
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return extension;
}

std::string ContentFor(const Sheet& sheet, const std::string& extension, const ExportOptions& options) {
    if (extension == ".svg") return SvgText(sheet);
    if (extension == ".png") return PngBytes(sheet, options.pngScale);
    if (extension == ".html") return CatalogueHtml(sheet, SvgText(sheet));
    if (extension == ".json") return JsonText(sheet);
    return CsvText(sheet);
}

std::string KnownExtensions() {
    std::string list;
    for (const std::string_view extension : kExtensions)
        list.append(list.empty() ? "" : ", ").append(extension);
    return list;
}

}  // namespace

std::span<const std::string_view> ExportExtensions() { return kExtensions; }

bool CanExport(const std::filesystem::path& path) {
    return std::find(kExtensions.begin(), kExtensions.end(), ExtensionOf(path)) != kExtensions.end();
}

void ExportSheet(const Sheet& sheet, const std::filesystem::path& path, const ExportOptions& options) {
    if (!CanExport(path)) {
        throw ExportError("Cannot write \"" + path.string() +
                          "\": its format is not known. Name a file that ends in one of " +
                          KnownExtensions() + ".");
    }
    WriteFileAtomically(path, ContentFor(sheet, ExtensionOf(path), options));
}

}  // namespace zrsheet
