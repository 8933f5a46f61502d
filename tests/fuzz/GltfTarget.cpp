// The glTF reader: any file is refused in one line or gives an assembly that keeps its promises.

#include <gtest/gtest.h>

#include <string_view>

#include "app/import/ImportError.h"
#include "app/import/gltf/GltfReader.h"
#include "app/import/process/AssemblyStream.h"
#include "tests/app/file/TemporaryFolder.h"
#include "tests/fuzz/FuzzTarget.h"

namespace zrsheet {
namespace {

void ExpectWhole(const Assembly& assembly) {
    for (const AssemblyNode& node : assembly.nodes) {
        EXPECT_FALSE(node.name.empty());
        EXPECT_EQ(node.name.find('\n'), std::string::npos);
    }
    const std::string bytes = WriteAssembly(assembly);
    EXPECT_EQ(WriteAssembly(ReadAssembly(bytes)), bytes);
}

}  // namespace
}  // namespace zrsheet

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const zrsheet::test::TemporaryFolder folder;
    const auto file = folder / "model.gltf";
    zrsheet::test::PutFile(file, std::string(reinterpret_cast<const char*>(data), size));
    try {
        zrsheet::ExpectWhole(zrsheet::ReadGltf(file));
    } catch (const zrsheet::ImportError& error) {
        EXPECT_NE(std::string_view(error.what()), "");
    } catch (const std::bad_alloc&) {
        // The reader's process says so.
    }
    return 0;
}
