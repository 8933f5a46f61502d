#include "app/document/TemplateFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "app/document/UserError.h"
#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class TemplateFile : public ::testing::Test {
protected:
    std::vector<NamedTemplate> Read(const std::string& text) const {
        std::ofstream(m_folder / "t.json", std::ios::binary) << text;
        return ReadTemplates(m_folder / "t.json");
    }
    std::string ErrorOf(const std::string& text) const {
        try {
            static_cast<void>(Read(text));
            return "none";
        } catch (const UserError& error) {
            return error.what();
        }
    }

    const TemporaryFolder m_folder;
};

TEST_F(TemplateFile, ComesBackAsItWasSaved) {
    const std::vector<NamedTemplate> templates{
        {"a \"b\"", "{item}{line}\u00e9", {}},
        {"c", "{item} of {quantity}", {{"de", "{1} von {0}"}, {"ja", "{0}"}}}};
    EXPECT_EQ(Read(TemplatesText(templates)), templates);
    EXPECT_EQ(Read(TemplatesText({})), std::vector<NamedTemplate>());
    EXPECT_EQ(ReadTemplates(ReadyTemplates()).at(0).text, "{item}") << "the ready ones are right";
}

TEST_F(TemplateFile, IsRefusedInOneLineThatSaysWhere) {
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
    for (const auto& [text, what] : rows)
        EXPECT_THAT(ErrorOf(text),
                    AllOf(StartsWith(m_folder / "t.json"), HasSubstr(what), Not(HasSubstr("\n"))));
}

}  // namespace
}  // namespace zrsheet::test
