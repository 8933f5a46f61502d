// zrsheet: an assembly in, an illustrated parts sheet out.

#include <cstdio>
#include <exception>
#include <new>
#include <variant>

#include "app/cli/CheckProject.h"
#include "app/cli/CommandLine.h"
#include "app/cli/LintSheet.h"
#include "app/cli/MakeSheets.h"
#include "app/cli/RunScript.h"
#include "app/cli/Shell.h"

namespace {

constexpr int kFound = 1;
constexpr int kBadInput = 2;

/// One for each request; returns the exit code.
struct Doing {
    int operator()(int exitCode) const { return exitCode; }
    int operator()(const zrsheet::MakeRequest& request) const {
        zrsheet::MakeSheets(request);
        return 0;
    }
    int operator()(const zrsheet::RunRequest& request) const {
        return zrsheet::RunScript(request) ? 0 : kBadInput;
    }
    int operator()(const zrsheet::ShellRequest& request) const {
        return zrsheet::Shell(request).Run() ? 0 : kBadInput;
    }
    int operator()(const zrsheet::CheckRequest& request) const {
        return zrsheet::CheckProject(request) ? 0 : kFound;
    }
    int operator()(const zrsheet::LintRequest& request) const {
        return zrsheet::LintSheet(request) ? 0 : kFound;
    }
};

int Fail(const char* message) {
    std::fprintf(stderr, "zrsheet: %s\n", message);
    return kBadInput;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return std::visit(Doing(), zrsheet::ReadCommandLine(argc, argv));
    } catch (const std::bad_alloc&) {
        return Fail(
            "the memory of this machine is not enough for this model; close other programs or use a smaller "
            "--size");
    } catch (const std::exception& error) {
        return Fail(error.what());
    }
}
