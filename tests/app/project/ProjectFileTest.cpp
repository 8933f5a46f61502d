#include "app/project/ProjectFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <string>

#include "app/document/UserError.h"
#include "app/project/ProjectWriter.h"
#include "tests/app/file/TemporaryFolder.h"
#include "tests/app/project/SampleProject.h"
#include "tests/support/ErrorOf.h"

namespace zrsheet::test {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using zrtest::ErrorOf;

/// Long enough that saving it takes a while.
ProjectData LongProject(const std::string& tag) {
    ProjectData project = SampleProject();
    for (unsigned id = 6; id < 150; ++id)
        project.items.push_back({id, tag, 0, 0, true, false, false, tag, {}});
    return project;
}

[[noreturn]] void SaveForever(const ProjectData& one, const ProjectData& other,
                              const std::filesystem::path& file) {
    for (;;) {
        SaveProject(one, file);
        SaveProject(other, file);
    }
}

/// Lets a process save over and over, and kills it.
void KillWhileSaving(const ProjectData& one, const ProjectData& other, const std::filesystem::path& file,
                     useconds_t after) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) SaveForever(one, other, file);
    usleep(after);
    kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
}

TEST(ProjectFile, IsTheOldOrTheNewOneWhenTheProgramIsKilled) {
    const TemporaryFolder folder;
    const auto file = folder / "a.zrsheet";
    const ProjectData one = LongProject("one");
    const ProjectData other = LongProject("other");
    SaveProject(one, file);
    constexpr unsigned kSeed = 20;
    std::mt19937 random(kSeed);
    const std::string oneText = ReadFile(file);
    const std::string otherText = WriteProject(other);
    int others = 0;
    for (int round = 0; round < 100; ++round) {
        // A busy machine takes longer until the first save.
        const unsigned longest = others > 0 ? 60000 : 60000 + 5000 * static_cast<unsigned>(round);
        KillWhileSaving(one, other, file, static_cast<useconds_t>(1000 + random() % longest));
        const std::string text = ReadFile(file);
        ASSERT_TRUE(text == oneText || text == otherText) << "round " << round << ", seed " << kSeed;
        others += text == otherText ? 1 : 0;
    }
    EXPECT_GT(others, 0) << "no round lasted long enough to save";
}

TEST(ProjectFile, ReplacesNothingButProjectsThatItKnows) {
    const TemporaryFolder folder;
    const auto saving = [&](const std::string& name) {
        return ErrorOf([&] { SaveProject(SampleProject(), folder / name); });
    };
    std::string newer = WriteProject(SampleProject());
    newer.replace(newer.find("\"version\": 1"), 12, "\"version\": 2");
    PutFile(folder / "newer.zrsheet", newer);
    PutFile(folder / "pump.glb", "glTF");
    PutFile(folder / "empty.zrsheet", "");
    EXPECT_THAT(saving("newer.zrsheet"), HasSubstr("made by a newer zrsheet"));
    EXPECT_THAT(saving("pump.glb"), HasSubstr("is no zrsheet project; save under another name"));
    EXPECT_THAT(saving("missing/a.zrsheet"), HasSubstr("Create the folder"));
    EXPECT_EQ(ReadFile(folder / "newer.zrsheet"), newer);
    EXPECT_EQ(ReadFile(folder / "pump.glb"), "glTF");
    EXPECT_EQ(saving("empty.zrsheet"), "no error");
    EXPECT_EQ(saving("empty.zrsheet"), "no error");
    EXPECT_EQ(LoadProject(folder / "empty.zrsheet"), SampleProject());
}

TEST(ProjectFile, IsNotWrittenWhenItCouldNotBeRead) {
    const TemporaryFolder folder;
    ProjectData project = SampleProject();
    project.insets[0].factor = 0.0;
    EXPECT_THAT(ErrorOf([&] { SaveProject(project, folder / "a.zrsheet"); }),
                HasSubstr("cannot be saved: insets[0].factor: expected"));
    EXPECT_EQ(folder.CountFiles(), 0);
}

TEST(ProjectFile, SaysWhatCannotBeLoaded) {
    const TemporaryFolder folder;
    const auto loading = [&](const std::string& name) {
        return ErrorOf([&] { static_cast<void>(LoadProject(folder / name)); });
    };
    std::filesystem::create_directory(folder / "folder.zrsheet");
    PutFile(folder / "huge.zrsheet", "{");
    std::filesystem::resize_file(folder / "huge.zrsheet", std::uintmax_t{129} << 20);
    EXPECT_THAT(loading("a.zrsheet"), AllOf(HasSubstr("a.zrsheet"), HasSubstr("there is no such file")));
    EXPECT_THAT(loading("folder.zrsheet"), HasSubstr("this is no file"));
    EXPECT_THAT(loading("huge.zrsheet"), HasSubstr("more than 128 MiB"));
}

TEST(ProjectFile, FindsTheModelWhereverBothAreMoved) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "old/models");
    std::filesystem::create_directory(folder / "old/projects");
    PutFile(folder / "old/models/abc.glb", "abc");
    ProjectModel model = DescribeModel(folder / "old/models/abc.glb");
    model.path = ModelPathFrom(folder / "old/projects/a.zrsheet", model.path);
    EXPECT_EQ(model.path, "../models/abc.glb");
    EXPECT_EQ(model.size, 3U);
    EXPECT_EQ(model.sha256, "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    std::filesystem::rename(folder / "old", folder / "new");
    EXPECT_EQ(FindModel(model, folder / "new/projects/a.zrsheet"), folder / "new/models/abc.glb");
    std::filesystem::remove(folder / "new/models/abc.glb");
    EXPECT_THAT(ErrorOf([&] { static_cast<void>(FindModel(model, folder / "new/projects/a.zrsheet")); }),
                AllOf(HasSubstr((folder / "new/models/abc.glb").string()), EndsWith("with --model FILE")));
}

}  // namespace
}  // namespace zrsheet::test
