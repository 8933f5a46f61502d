// zrsheet: an assembly in, an illustrated parts sheet out.

#include <chrono>
#include <cstdio>
#include <exception>
#include <system_error>

#include "app/cli/CommandLine.h"
#include "app/cli/ProgressBar.h"
#include "app/document/UserError.h"
#include "app/export/ExportError.h"
#include "app/export/ExportSheet.h"
#include "app/export/ReportExporter.h"
#include "app/file/AtomicFile.h"
#include "app/import/ImportError.h"
#include "app/import/ImportModel.h"
#include "app/sheet/SheetMaker.h"

namespace {

constexpr int kBadInput = 2;

double SecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// All files or none are written, and nobody waits for a sheet that has nowhere to go.
void CheckTargets(const zrsheet::MakeRequest& request) {
    for (const auto& output : request.outputs) zrsheet::CheckTarget(output);
    if (!request.report.empty()) zrsheet::CheckTarget(request.report);
}

void Make(const zrsheet::MakeRequest& request) {
    CheckTargets(request);
    zrsheet::ProgressBar progress;
    const auto start = std::chrono::steady_clock::now();
    progress.Show("Reading the model", 0);
    zrsheet::Assembly assembly = zrsheet::ImportModel(request.options.model);
    const double importSeconds = SecondsSince(start);
    zrsheet::Sheet sheet = zrsheet::MakeSheet(
        std::move(assembly), request.options,
        [&progress](std::string_view stage, int percent) { progress.Show(stage, percent); });
    sheet.seconds.load += importSeconds;
    const auto writing = std::chrono::steady_clock::now();
    for (const auto& output : request.outputs) zrsheet::ExportSheet(sheet, output);
    sheet.seconds.write = SecondsSince(writing);
    if (!request.report.empty()) zrsheet::ExportReport(sheet, request.report);
}

int Fail(const char* message) {
    std::fprintf(stderr, "zrsheet: %s\n", message);
    return kBadInput;
}

}  // namespace

int main(int argc, char** argv) {
    const zrsheet::CommandLine line = zrsheet::ReadCommandLine(argc, argv);
    if (!line.isRequest) return line.exitCode;
    try {
        Make(line.request);
    } catch (const std::bad_alloc&) {
        return Fail(
            "the memory of this machine is not enough for this model; close other programs or use a smaller "
            "--size");
    } catch (const std::exception& error) {
        return Fail(error.what());
    }
    return 0;
}
