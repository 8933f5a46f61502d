#include "app/cli/CheckProject.h"

#include <iostream>

#include "app/check/CompletenessCheck.h"
#include "app/cli/ProgressBar.h"
#include "app/cli/Warning.h"
#include "app/command/Listing.h"
#include "app/command/Session.h"
#include "app/sheet/SheetMaker.h"

namespace zrsheet {

bool CheckProject(const CheckRequest& request) {
    ProgressBar progress;
    Session session({std::cout,
                     [&](std::string_view stage, int percent) { progress.Show(stage, percent); },
                     {},
                     ThreadCount(request.threads),
                     PrintWarning,
                     {},
                     request.language.value_or("en"),
                     request.language.has_value()});
    session.OpenProject(request.project, request.model);
    const auto findings = CheckCompleteness(session.OpenedProject());
    session.Out() << (request.asJson ? FindingsJson(findings) : ListFindings(findings)) << std::flush;
    return findings.empty();
}

}  // namespace zrsheet
