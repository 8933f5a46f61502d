#include "app/export/ExportSheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/export/ExportError.h"
#include "tests/app/export/SampleSheet.h"

namespace zrsheet::test {
namespace {

using ::testing::StartsWith;

TEST(ExportSheet, WritesTheFormatOfTheExtension) {
    const TemporaryFolder folder;
    const struct {
        const char* name;
        const char* start;
    } kCases[] = {{"a.svg", "<?xml"}, {"a.PNG", "\x89PNG"}, {"a.b.json", "{"}, {"a.csv", "Item,"}};
    for (const auto& test : kCases) {
        EXPECT_TRUE(CanExport(test.name)) << test.name;
        ExportSheet(SampleSheet(), folder / test.name);
        EXPECT_THAT(ReadFile(folder / test.name), StartsWith(test.start)) << test.name;
    }
    EXPECT_EQ(ExportExtensions().size(), std::size(kCases));
}

TEST(ExportSheet, RefusesOtherExtensions) {
    const TemporaryFolder folder;
    for (const char* name : {"a.pdf", "a", ".svg", "svg", "a.svg.bak"}) {
        EXPECT_FALSE(CanExport(name)) << name;
        EXPECT_THROW(ExportSheet(SampleSheet(), folder / name), ExportError) << name;
    }
    EXPECT_EQ(folder.CountFiles(), 0);
}

}  // namespace
}  // namespace zrsheet::test
