#include "app/document/TemplateFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/document/UserError.h"
#include "tests/app/file/TemporaryFolder.h"
#include "tests/support/ErrorOf.h"

namespace zrsheet::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

TEST(TemplateFile, IsRefusedInOneLineThatSaysWhere) {
    const TemporaryFolder folder;
    const auto file = folder / "t.json";
    const std::string begin = R"({"format": "zrsheet templates", "version": 1, "templates": [)";
    const std::pair<std::string, const char*> rows[] = {
        {"{", "no JSON"},
        {"[]", "no object"},
        {R"({"format": "zrsheet project", "version": 1, "templates": []})", "no file of templates"},
        {R"({"format": "zrsheet templates", "version": 2, "templates": []})", "version is not 1"},
        {R"({"format": "zrsheet templates", "version": 1})", "no list"},
        {begin + R"({"name": "a"}]})", "template 1 has no text \"text\""},
        {begin + R"({"name": "", "text": "{item}"}]})", "template 1 has no text \"name\""},
        {begin + R"({"name": "a", "text": "b", "texts": {}}]})", "'texts'"},
        {begin + R"({"name": "a", "text": "b"}, {"name": "a", "text": "c"}]})", "template 2 has the name"},
        {begin + R"({"name": "a", "text": "{what}"}]})", "template 1: template '{what}'"},
        {begin + R"({"name": "a", "text": "b", "translations": {"de": "{0}"}}]})", "translation '{0}'"},
        {begin + R"({"name": "a", "text": "b", "translations": {"de": 1}}]})", "no text \"de\""},
    };
    for (const auto& [text, what] : rows) {
        PutFile(file, text);
        EXPECT_THAT(zrtest::ErrorOf<UserError>([&] { static_cast<void>(ReadTemplates(file)); }),
                    AllOf(StartsWith(file), HasSubstr(what), Not(HasSubstr("\n"))));
    }
}

}  // namespace
}  // namespace zrsheet::test
