#include "app/import/process/ImportModel.h"

#include <gmock/gmock.h>

#include "app/import/ImportError.h"
#include "tests/app/import/ImportFixture.h"

namespace zrsheet {
namespace {

using testing::HasSubstr;

class ImportModelTest : public ImportFixture {
protected:
    // Limits with a shell script in the reader's place.
    ImportLimits WithReader(const std::string& script) const {
        ImportLimits limits;
        limits.reader = Write("reader.sh", "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(limits.reader, std::filesystem::perms::owner_all);
        return limits;
    }
};

TEST_F(ImportModelTest, TellsHowTheReaderEnded) {
    const std::filesystem::path file = Save(Tetrahedron());
    EXPECT_THAT(Complaint(file, WithReader("kill -SEGV $$")), HasSubstr("stopped with signal 11"));
    EXPECT_THAT(Complaint(file, WithReader("exit 3")), HasSubstr("ended with code 3"));
    EXPECT_THAT(Complaint(file, WithReader("printf 'two\\nlines' >&2; exit 1")), HasSubstr("two lines"));
    EXPECT_THAT(Complaint(file, WithReader("echo nonsense")), HasSubstr("answer is damaged"));
    ImportLimits missing;
    missing.reader = "/nowhere/reader";
    EXPECT_THAT(Complaint(file, missing), HasSubstr("cannot be started"));
}

// However much of it there is, it leaves room for what is wrong.
TEST_F(ImportModelTest, PassesOnHowFarTheReaderIs) {
    std::string told;
    const auto tell = [&told](std::string_view stage, int percent) {
        told += std::string(stage) + std::to_string(percent);
    };
    const ImportLimits limits = WithReader(
        "printf '@5 Reading it\\n@6' >&2; printf '0 Turning it\\n@x\\n' >&2; "
        "for i in $(seq 3000); do echo @70 >&2; done; echo wrong >&2; exit 1");
    EXPECT_THROW(static_cast<void>(ImportModel(Save(Tetrahedron()), limits, tell)), ImportError);
    EXPECT_EQ(told, "Reading it5Turning it60");
    EXPECT_THAT(Complaint(Save(Tetrahedron()), limits), testing::EndsWith("gltf: wrong"));
}

TEST_F(ImportModelTest, StopsAReaderThatTakesTooLong) {
    ImportLimits limits = WithReader("exec sleep 100");
    limits.time = std::chrono::milliseconds(300);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(Complaint(Save(Tetrahedron()), limits), HasSubstr("took longer than 0.3 s"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

// Sixteen million vertices that no bytes stand behind: a small file that wants much memory.
TEST_F(ImportModelTest, RefusesAModelThatNeedsTooMuchMemory) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "sanitizers reserve more memory than any limit";
#endif
    Json model = Tetrahedron();
    model["accessors"][0] = {{"componentType", 5126}, {"type", "VEC3"}, {"count", 16'000'000}};
    ImportLimits limits;
    limits.memoryBytes = std::uint64_t{160} << 20;
    EXPECT_THAT(Complaint(Save(model), limits), HasSubstr("more memory than allowed"));
}

}  // namespace
}  // namespace zrsheet
