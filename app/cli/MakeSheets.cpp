#include "app/cli/MakeSheets.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "app/cli/ProgressBar.h"
#include "app/cli/Warning.h"
#include "app/export/ExportSheet.h"
#include "app/export/ReportExporter.h"
#include "app/file/AtomicFile.h"
#include "app/import/OpenModel.h"
#include "app/sheet/SheetMaker.h"
#include "app/sheet/SheetQuality.h"

namespace zrsheet {
namespace {

double SecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// All files or none are written, and nobody waits for a sheet that has nowhere to go.
void CheckTargets(const MakeRequest& request) {
    for (const auto& output : request.outputs) CheckTarget(output);
    if (!request.report.empty()) CheckTarget(request.report);
}

bool IsPrint(const std::filesystem::path& file) { return HasExtension(file, ".pdf"); }

/// Who asks for no page in particular gets PDF on paper, beside other files with a sheet of its own.
SheetOptions WithPrint(const MakeRequest& request) {
    SheetOptions options = request.options;
    const auto& outputs = request.outputs;
    const bool isFree = options.paper.size == PaperSize::None && !request.hasSize;
    if (!isFree || std::none_of(outputs.begin(), outputs.end(), IsPrint)) return options;
    const bool isAll = request.report.empty() && std::all_of(outputs.begin(), outputs.end(), IsPrint);
    (isAll ? options.paper.size : options.print) = PaperSize::A4;
    return options;
}

std::vector<SheetFile> FilesOf(const MakeRequest& request, const SheetPair& sheets) {
    std::vector<SheetFile> files;
    files.reserve(request.outputs.size());
    for (const auto& output : request.outputs)
        files.push_back({IsPrint(output) && sheets.print ? *sheets.print : sheets.sheet, output});
    return files;
}

}  // namespace

void MakeSheets(const MakeRequest& request) {
    CheckTargets(request);
    ProgressBar progress;
    const auto start = std::chrono::steady_clock::now();
    progress.Show("Reading the model", 0);
    const auto show = [&progress](std::string_view stage, int percent) { progress.Show(stage, percent); };
    Assembly assembly = OpenModel(request.options.model, show);
    if (!assembly.warnings.empty()) progress.Show({}, 100);
    for (const std::string& warning : assembly.warnings)
        PrintWarning(request.options.model.string() + ": " + warning);
    const double importSeconds = SecondsSince(start);
    SheetPair sheets = MakeSheetPair(std::move(assembly), WithPrint(request), show);
    sheets.sheet.seconds.load += importSeconds;
    progress.Show({}, 100);
    for (const std::string& notice : FaultNotices(sheets.sheet)) PrintWarning(notice);
    const auto writing = std::chrono::steady_clock::now();
    progress.Show("Writing the files", 0);
    ExportSheets(FilesOf(request, sheets));
    sheets.sheet.seconds.write = SecondsSince(writing);
    if (!request.report.empty()) ExportReport(sheets.sheet, request.report);
}

}  // namespace zrsheet
