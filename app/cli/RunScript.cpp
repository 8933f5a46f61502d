#include "app/cli/RunScript.h"

#include <fstream>
#include <iostream>
#include <utility>

#include "app/cli/InterruptKey.h"
#include "app/cli/ProgressBar.h"
#include "app/cli/Surroundings.h"
#include "app/command/ScriptRunner.h"
#include "app/document/UserError.h"

namespace zrsheet {
namespace {

std::ifstream Opened(const std::filesystem::path& script) {
    std::ifstream file(script, std::ios::binary);
    if (!file || std::filesystem::is_directory(script)) {
        throw UserError("the script " + script.string() + " cannot be read; check its name");
    }
    return file;
}

}  // namespace

bool RunScript(const RunRequest& request) {
    std::ifstream script = Opened(request.script);
    ProgressBar progress;
    Session::Surroundings surroundings = SurroundingsWith(progress, request.threads, request.language);
    surroundings.isInterrupted = InterruptKey::WasPressed;
    Session session(std::move(surroundings));
    const InterruptKey interrupt;
    if (!request.project.empty()) session.OpenProject(request.project);
    ScriptRunner runner(session, std::cerr);
    const bool isDone = runner.Run(script, request.script.string(), request.keepsGoing);
    session.ReportUnsaved(std::cerr);
    return isDone;
}

}  // namespace zrsheet
