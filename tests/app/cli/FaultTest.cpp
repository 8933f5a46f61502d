// What authors meet when the machine, not their input, is at fault.

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "tests/app/cli/CliFixture.h"

namespace zrsheet {
namespace {

using Fault = CliFixture;

constexpr uid_t kNobody = 65534;

/// No file can grow beyond some bytes, as if the disk were full.
void FillDisk() {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{300, 300};
    setrlimit(RLIMIT_FSIZE, &limit);
}

/// Permissions do not stop the administrator, who runs tests in containers.
void BecomeNobody() {
    if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(126);
}

constexpr const char* kScript =
    "import wedge.gltf\ncreate\nsave a.zrsheet\nhide Wedge\nsave a.zrsheet\nquit discard\n";

TEST_F(Fault, AFullDiskLeavesWhatWasThere) {
    Write("wedge.gltf", SmallModel());
    Write("make.zrs", kScript);
    ASSERT_EQ(Run({"run", "make.zrs"}).exitCode, 0);
    Write("sheet.svg", "old sheet");
    Write("list.csv", "old list");
    const std::string project = Read(In("a.zrsheet"));
    ExpectRefused({"make", "wedge.gltf", "-o", "list.csv", "-o", "sheet.svg"}, "Make room on the disk",
                  FillDisk);
    const auto before = Files();
    const CliResult saving = Run({"run", "make.zrs"}, "/dev/null", FillDisk);
    EXPECT_EQ(saving.exitCode, 2);
    EXPECT_TRUE(saving.err.starts_with("make.zrs:3: command 'save': Cannot write")) << saving.err;
    EXPECT_EQ(Files(), before);
    EXPECT_EQ(Read(In("sheet.svg")), "old sheet");
    EXPECT_EQ(Read(In("list.csv")), "old list") << "it has room, but not both have";
    EXPECT_EQ(Read(In("a.zrsheet")), project);
}

TEST_F(Fault, AFolderThatMayNotBeWrittenIsNamedBeforeAnythingIsDrawn) {
    Write("wedge.gltf", SmallModel());
    std::filesystem::create_directory(In("folder"));
    ASSERT_EQ(chmod(In("folder").c_str(), 0555), 0);
    ASSERT_EQ(chmod(In("").c_str(), 0755), 0);
    if (RunProgram("/bin/sh", {"-c", "test -x " ZR_SHEET " && test ! -w folder"}, "/dev/null", BecomeNobody)
            .exitCode != 0)
        GTEST_SKIP() << "nobody may run the program here";
    ExpectRefused({"make", "wedge.gltf", "-o", "folder/sheet.svg"}, "Name a folder that you may write to",
                  BecomeNobody);
}

// An installation of which parts are lost or were exchanged. The loader's own words, and its exit code, would
// come before the program's first line.
TEST_F(Fault, ABrokenInstallationIsToldInOneLine) {
    const std::filesystem::path libraries = std::filesystem::path(ZR_SHEET).parent_path() / "../lib";
    std::filesystem::create_directories(In("bin"));
    std::filesystem::create_directories(In("lib"));
    const std::string program = In("bin/zrsheet");
    const std::string component = In("lib/libzrcallouts.so");
    std::filesystem::copy_file(ZR_SHEET, program);
    const auto expectRefused = [&](const std::string& culprit) {
        const CliResult result = RunProgram(program, {"--version"});
        EXPECT_EQ(result.exitCode, 2) << culprit;
        EXPECT_TRUE(result.err.starts_with("zrsheet: ")) << result.err;
        EXPECT_TRUE(result.err.ends_with("; install zrsheet again\n")) << result.err;
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result.err;
        EXPECT_NE(result.err.find(culprit), std::string::npos) << result.err;
        EXPECT_EQ(result.out, "");
    };
    expectRefused("cannot load libzrcallouts.so: cannot open shared object file");
    expectRefused("(libraries belong into " + In("lib") + ")");
    std::filesystem::copy_file(libraries / "libzr_other_component.so", component);
    expectRefused(component + " is of version 0.0.1, but this program needs ");
    const auto other = std::filesystem::copy_options::overwrite_existing;
    std::filesystem::copy_file(libraries / "libzrg.so", component, other);
    expectRefused("libzrcallouts.so tells no version");
    std::filesystem::copy_file(libraries / "libzrcallouts.so", component, other);
    expectRefused("cannot run " + In("bin/zrsheet-app"));
    std::filesystem::create_symlink(std::string(ZR_SHEET) + "-app", In("bin/zrsheet-app"));
    EXPECT_EQ(RunProgram(program, {"--version"}).exitCode, 0) << "nothing is missing any more";
}

TEST_F(Fault, TheSampleIsWrittenToAFileAndNothingElse) {
    Write("a.glb", "old");
    const std::vector<std::vector<std::string>> rows{
        {}, {"--wings"}, {"-o", "a.glb"}, {"a.glb", "b.glb"}, {"absent/a.glb"}, {"a.glb", "1", "2", "0"}};
    for (const auto& arguments : rows) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const CliResult result = RunProgram(ZR_SAMPLE, arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_TRUE(result.err.starts_with("zr_sample: ")) << result.err;
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result.err;
    }
    const CliResult help = RunProgram(ZR_SAMPLE, {"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.out.starts_with("usage: zr_sample OUT.glb")) << help.out;
    EXPECT_EQ(Files(), std::vector<std::string>{"a.glb"});
    EXPECT_EQ(Read(In("a.glb")), "old");
}

}  // namespace
}  // namespace zrsheet
