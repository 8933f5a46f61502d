#include "app/export/ExportSheet.h"

#include <algorithm>
#include <array>
#include <string>

#include "app/catalogue/CatalogueHtml.h"
#include "app/export/CsvExporter.h"
#include "app/export/ExportError.h"
#include "app/export/JsonExporter.h"
#include "app/export/PdfExporter.h"
#include "app/export/PngExporter.h"
#include "app/export/SvgExporter.h"
#include "app/export/XlsxExporter.h"
#include "app/export/XmlExporter.h"
#include "app/file/AtomicFile.h"

namespace zrsheet {
namespace {

constexpr std::array<std::string_view, 8> kExtensions{".svg",  ".png", ".html", ".pdf",
                                                      ".json", ".csv", ".xlsx", ".xml"};

std::string ExtensionOf(const std::filesystem::path& path) {
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return extension;
}

/// The picture that goes with the file: the SVG among those that are written, else the one of its name.
std::string GraphicFor(const SheetFile& file, const std::vector<SheetFile>& files) {
    for (const SheetFile& other : files) {
        if (ExtensionOf(other.path) == ".svg") return other.path.filename().string();
    }
    return file.path.stem().string() + ".svg";
}

std::string ContentFor(const SheetFile& file, const std::vector<SheetFile>& files,
                       const ExportOptions& options) {
    const std::string extension = ExtensionOf(file.path);
    if (extension == ".svg") return SvgText(file.sheet);
    if (extension == ".png") return PngBytes(file.sheet, options.pngScale);
    if (extension == ".html") return CatalogueHtml(file.sheet, SvgText(file.sheet));
    if (extension == ".pdf") return PdfBytes(file.sheet);
    if (extension == ".json") return JsonText(file.sheet);
    if (extension == ".xlsx") return XlsxBytes(file.sheet);
    if (extension == ".xml") return XmlText(file.sheet, GraphicFor(file, files));
    return CsvText(file.sheet);
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

bool HasExtension(const std::filesystem::path& path, std::string_view extension) {
    return ExtensionOf(path) == extension;
}

void ExportSheets(const std::vector<SheetFile>& files, const ExportOptions& options) {
    std::vector<FileContent> contents;
    contents.reserve(files.size());
    for (const SheetFile& file : files) {
        if (!CanExport(file.path)) {
            throw ExportError("Cannot write \"" + file.path.string() +
                              "\": its format is not known. Name a file that ends in one of " +
                              KnownExtensions() + ".");
        }
        contents.push_back({file.path, ContentFor(file, files, options)});
    }
    WriteFilesAtomically(contents);
}

void ExportSheet(const Sheet& sheet, const std::filesystem::path& path, const ExportOptions& options) {
    ExportSheets({{sheet, path}}, options);
}

}  // namespace zrsheet
