#include "app/cli/MakeSheets.h"

#include <chrono>
#include <utility>

#include "app/cli/ProgressBar.h"
#include "app/cli/Warning.h"
#include "app/export/ExportSheet.h"
#include "app/export/ReportExporter.h"
#include "app/file/AtomicFile.h"
#include "app/import/OpenModel.h"
#include "app/sheet/SheetMaker.h"

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
    Sheet sheet = MakeSheet(std::move(assembly), request.options, show);
    sheet.seconds.load += importSeconds;
    const auto writing = std::chrono::steady_clock::now();
    for (const auto& output : request.outputs) ExportSheet(sheet, output);
    sheet.seconds.write = SecondsSince(writing);
    if (!request.report.empty()) ExportReport(sheet, request.report);
}

}  // namespace zrsheet
