#include "app/cli/LintSheet.h"

#include <ostream>

#include "app/cli/ProgressBar.h"
#include "app/cli/Surroundings.h"
#include "app/command/Listing.h"
#include "app/command/Session.h"
#include "app/export/ExportSheet.h"
#include "app/export/ReportExporter.h"
#include "app/sheet/Figure.h"
#include "app/sheet/SheetMaker.h"

namespace zrsheet {
namespace {

/// What "make" does without options.
void Illustrate(Session& session, const LintRequest& request) {
    session.ImportModel(request.file, {});
    Document& document = session.Doc();
    document.CreateCallouts({}, [](int) { return true; });
    document.Settle();
    LayOutLabels(document, document.Callouts());
    FillFigure(document);
    document.Settle();
}

}  // namespace

bool LintSheet(const LintRequest& request) {
    ProgressBar progress;
    Session session(SurroundingsWith(progress, request.threads, request.language));
    if (HasExtension(request.file, ".zrsheet")) {
        session.OpenProject(request.file, request.model);
    } else {
        Illustrate(session, request);
    }
    const Sheet sheet = DrawSheet(session.Doc(), session.Threads());
    session.Out() << (request.asJson ? QualityText(sheet) : ListQuality(sheet)) << std::flush;
    return sheet.quality.faults.empty();
}

}  // namespace zrsheet
