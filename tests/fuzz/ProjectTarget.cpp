// Project files: any text is refused in one line, or it is a project that is written and read again without
// loss and that opens with a model that it was not made for.

#include <gtest/gtest.h>

#include <string_view>

#include "app/document/UserError.h"
#include "app/project/Project.h"
#include "app/project/ProjectReader.h"
#include "app/project/ProjectWriter.h"
#include "tests/app/document/AssemblyMaker.h"
#include "tests/app/file/TemporaryFolder.h"
#include "tests/fuzz/FuzzTarget.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet {
namespace {

/// Some of the parts that the corpus's projects tell of, and some that they do not.
Assembly OtherRig() {
    AssemblyMaker maker("rig");
    const int wedge = maker.Box("Wedge", 1, 1, 1);
    const int cover = maker.Box("Cover", 4, 4, 4);
    const int frame = maker.Node("Frame", -1, -1);
    maker.Node("Left Wedge", frame, wedge);
    maker.Node("Cover", frame, cover, {5, 0, 0});
    return maker.Get();
}

void ExpectReadAgain(const ProjectData& project) {
    EXPECT_TRUE(ReadProject(WriteProject(project), "again") == project);
}

void ExpectOpens(const ProjectData& project) {
    static const test::TemporaryFolder folder;
    const auto model = folder / "model.glb";
    test::PutFile(model, "a model");
    const zrkapp::illustration::HostSession host(1);
    const Project opened(project, OtherRig(), model);
    const ProjectData captured = opened.Capture();
    ExpectReadAgain(captured);
}

}  // namespace
}  // namespace zrsheet

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const auto project =
            zrsheet::ReadProject(std::string_view(reinterpret_cast<const char*>(data), size), "fuzzed");
        zrsheet::ExpectReadAgain(project);
        zrsheet::ExpectOpens(project);
    } catch (const zrsheet::UserError& error) {
        EXPECT_EQ(std::string_view(error.what()).find('\n'), std::string_view::npos) << error.what();
    }
    return 0;
}
