// The reader: one file in, its assembly on standard output. Whatever is wrong goes to standard error as one
// line. It runs in a process of its own because files may be damaged in ways that nobody has thought of.

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>

#include "app/import/process/AssemblyStream.h"
#include "app/import/reading/ReadModel.h"

namespace {

// Ends the process without destroying what libraries keep: a damaged file may have damaged it too.
[[noreturn]] void End(int code) {
    std::fflush(nullptr);
    std::_Exit(code);
}

[[noreturn]] void Fail(const std::string& message) {
    std::fputs((message + "\n").c_str(), stderr);
    End(1);
}

// Keeps the answer's way free of what libraries print: to them, standard output is standard error.
std::FILE* TakeStandardOutput() {
    std::FILE* answer = fdopen(dup(STDOUT_FILENO), "wb");
    if (answer == nullptr || dup2(STDERR_FILENO, STDOUT_FILENO) < 0) Fail("the answer cannot be written");
    return answer;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) Fail("usage: zrsheet-import FILE");
    try {
        std::FILE* answer = TakeStandardOutput();
        const std::string bytes = zrsheet::WriteAssembly(zrsheet::ReadModel(argv[1]));
        const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), answer) == bytes.size();
        if (!isWritten || std::fflush(answer) != 0) Fail("the answer cannot be written");
        End(0);
    } catch (const std::bad_alloc&) {
        Fail("reading it needs more memory than allowed; the file is probably damaged, otherwise split it");
    } catch (const std::exception& error) {
        Fail(error.what());
    }
}
