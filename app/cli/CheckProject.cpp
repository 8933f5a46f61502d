#include "app/cli/CheckProject.h"

#include <ostream>

#include "app/check/CompletenessCheck.h"
#include "app/cli/ProgressBar.h"
#include "app/cli/Surroundings.h"
#include "app/command/Listing.h"
#include "app/command/Session.h"

namespace zrsheet {

bool CheckProject(const CheckRequest& request) {
    ProgressBar progress;
    Session session(SurroundingsWith(progress, request.threads, request.language));
    session.OpenProject(request.project, request.model);
    const auto findings = CheckCompleteness(session.OpenedProject());
    session.Out() << (request.asJson ? FindingsJson(findings) : ListFindings(findings)) << std::flush;
    return findings.empty();
}

}  // namespace zrsheet
