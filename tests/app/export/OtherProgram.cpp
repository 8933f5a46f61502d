#include "tests/app/export/OtherProgram.h"

#include <array>
#include <cstdio>
#include <stdexcept>

namespace zrsheet::test {

std::string OutputOf(const std::string& command) {
    std::FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 4096> bytes{};
    while (const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), pipe))
        output.append(bytes.data(), count);
    if (pclose(pipe) != 0) throw std::runtime_error("this failed: " + command + "\n" + output);
    return output;
}

}  // namespace zrsheet::test
