// Every input of the corpus, those that once broke something among them, goes through its target.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/fuzz/FuzzTarget.h"

namespace {

std::vector<std::filesystem::path> Inputs() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(ZR_CORPUS)) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

TEST(ZR_REPLAY, EndsWellWithEveryInput) {
    const auto files = Inputs();
    EXPECT_FALSE(files.empty());
    for (const auto& file : files) {
        SCOPED_TRACE(file.filename());
        std::ifstream stream(file, std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(stream)), {});
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
}

}  // namespace
