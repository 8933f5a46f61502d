#include "app/import/process/AssemblyStream.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "app/import/ImportError.h"

namespace zrsheet {
namespace {

Assembly Small() {
    Assembly assembly;
    assembly.name = "small";
    assembly.parts.push_back(
        {"Plate", {0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}, {{true, {0, 1}}, {false, {1, 2, 0}}}});
    assembly.nodes.push_back({"Top", -1, kIdentityMatrix, -1, {{"No", "1"}, {"Material", ""}}});
    assembly.nodes.push_back(
        {"Plate", 0, {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 5, 6, 7, 1}, 0, {}, AssemblyColor{0, 0.5F, 1}});
    assembly.warnings = {"bolt.stp is missing"};
    assembly.externalFiles = {"bolt.stp"};
    return assembly;
}

// All that is written comes back, told by writing it again; every shorter answer is refused, and so is a
// longer one.
TEST(AssemblyStream, BringsBackWhatWasWrittenWholly) {
    const std::string bytes = WriteAssembly(Small());
    const Assembly read = ReadAssembly(bytes);
    EXPECT_EQ(read.nodes[1].matrix, Small().nodes[1].matrix);
    EXPECT_EQ(read.nodes[0].properties, Small().nodes[0].properties);
    EXPECT_EQ(read.nodes[1].color, Small().nodes[1].color);
    EXPECT_EQ(read.parts[0].edges[1].vertices, Small().parts[0].edges[1].vertices);
    EXPECT_EQ(read.warnings, Small().warnings);
    EXPECT_EQ(WriteAssembly(read), bytes);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_THROW(static_cast<void>(ReadAssembly(bytes.substr(0, size))), ImportError) << size;
    }
    EXPECT_THROW(static_cast<void>(ReadAssembly(bytes + " ")), ImportError);
}

// A count that is no longer true must not be allocated for: any other exception than the refusal fails here.
TEST(AssemblyStream, EndsInAnAssemblyOrARefusalWhateverByteIsWrong) {
    const std::string bytes = WriteAssembly(Small());
    std::size_t refused = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::string changed = bytes;
        changed[i] = '\xFF';
        try {
            static_cast<void>(ReadAssembly(changed));
        } catch (const ImportError&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, bytes.size() / 4);
}

}  // namespace
}  // namespace zrsheet
