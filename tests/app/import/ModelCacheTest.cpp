#include "app/import/process/ModelCache.h"

#include <gmock/gmock.h>

#include <fstream>

#include "app/import/process/AssemblyStream.h"
#include "tests/app/import/ImportFixture.h"

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

class ModelCacheTest : public ImportFixture {
protected:
    ModelCacheTest() : m_reader(Write("reader", "program")), m_model(Write("pump.stp", "model")) {
        Write("bolt.stp", "bolt");
        m_assembly.parts.push_back({"Plate", {0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}});
        m_assembly.nodes.push_back({"Plate", -1, kIdentityMatrix, 0, {}});
        m_assembly.externalFiles = {"bolt.stp", "gone.stp"};
    }
    fs::path Folder() const { return m_model.parent_path() / "cache"; }
    ModelCache Cache() const { return {Folder(), m_reader}; }
    std::vector<fs::path> Kept() const {
        return {fs::directory_iterator(Folder()), fs::directory_iterator()};
    }

    fs::path m_reader;
    fs::path m_model;
    Assembly m_assembly;
};

TEST_F(ModelCacheTest, FindsWhatItKeptUntilAnythingChanges) {
    EXPECT_FALSE(Cache().Find(m_model));
    Cache().Keep(m_model, m_assembly);
    const auto found = Cache().Find(m_model);
    ASSERT_TRUE(found);
    EXPECT_EQ(WriteAssembly(*found), WriteAssembly(m_assembly));
    const std::vector<std::pair<const char*, const char*>> changes{
        {"pump.stp", "model"}, {"bolt.stp", "bolt"}, {"gone.stp", nullptr}, {"reader", "program"}};
    for (const auto& [name, former] : changes) {
        Write(name, "something else");
        EXPECT_FALSE(Cache().Find(m_model)) << name;
        former != nullptr ? Write(name, former) : fs::path();
        if (former == nullptr) fs::remove(m_model.parent_path() / name);
        Cache().Keep(m_model, m_assembly);
        EXPECT_TRUE(Cache().Find(m_model)) << name;
    }
    EXPECT_FALSE(Cache().Find(Write("other.stp", "model"))) << "parts may be named after the file";
}

TEST_F(ModelCacheTest, DoesNotFindWhatIsDamagedAndWritesItAnew) {
    Cache().Keep(m_model, m_assembly);
    ASSERT_EQ(Kept().size(), 1U);
    const fs::path kept = Kept()[0];
    for (const std::uint64_t place : {std::uint64_t{3}, std::uint64_t{80}, fs::file_size(kept) - 1}) {
        std::fstream file(kept, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(place)).put('?');
        file.close();
        EXPECT_FALSE(Cache().Find(m_model)) << place;
        Cache().Keep(m_model, m_assembly);
        EXPECT_TRUE(Cache().Find(m_model)) << place;
    }
    fs::resize_file(kept, 40);
    EXPECT_FALSE(Cache().Find(m_model));
}

TEST_F(ModelCacheTest, ForgetsWhatWasUsedLongestAgo) {
    Cache().Keep(m_model, m_assembly);
    const std::uint64_t size = fs::file_size(Kept()[0]);
    const ModelCache small(Folder(), m_reader, 2 * size + size / 2);
    const fs::path second = Write("second.stp", "2");
    small.Keep(second, m_assembly);
    for (const fs::path& file : Kept())
        fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(1));
    EXPECT_TRUE(small.Find(m_model));
    small.Keep(Write("third.stp", "3"), m_assembly);
    EXPECT_EQ(Kept().size(), 2U);
    EXPECT_TRUE(small.Find(m_model));
    EXPECT_FALSE(small.Find(second));
    ModelCache(Folder(), m_reader, size / 2).Keep(second, m_assembly);
    EXPECT_EQ(Kept().size(), 2U) << "what fits nowhere drives out nothing";
}

TEST_F(ModelCacheTest, DoesWithoutAFolder) {
    ModelCache({}, m_reader).Keep(m_model, m_assembly);
    EXPECT_FALSE(ModelCache({}, m_reader).Find(m_model));
    const ModelCache blocked(m_model / "cache", m_reader);
    blocked.Keep(m_model, m_assembly);
    EXPECT_FALSE(blocked.Find(m_model));
}

}  // namespace
}  // namespace zrsheet
