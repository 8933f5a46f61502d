// The reader: one file in, its assembly on standard output. Whatever is wrong goes to standard error as one
// line. It runs in a process of its own because files may be damaged in ways that nobody has thought of.

#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include "app/import/AssemblyStream.h"
#include "app/import/gltf/GltfReader.h"

namespace {

int Fail(const std::string& message) {
    std::fputs((message + "\n").c_str(), stderr);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return Fail("usage: zrsheet-import FILE");
    try {
        const std::string bytes = zrsheet::WriteAssembly(zrsheet::ReadGltf(argv[1]));
        const bool written = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
        return written && std::fflush(stdout) == 0 ? 0 : Fail("the answer cannot be written");
    } catch (const std::bad_alloc&) {
        return Fail(
            "reading it needs more memory than allowed; the file is probably damaged, otherwise split it");
    } catch (const std::exception& error) {
        return Fail(error.what());
    }
}
