#include "app/document/LabelTemplate.h"

#include <gtest/gtest.h>

#include "app/document/UserError.h"
#include "tests/support/ErrorOf.h"

namespace zrsheet {
namespace {

/// The pieces with what they are: 'text' or [group|name].
std::string Pieces(const std::string& text) {
    std::string pieces;
    for (const auto& content : ParseLabelTemplate(text)) {
        pieces += content->Kind() == 0
                      ? "'" + content->TextOrGroup() + "'"
                      : "[" + content->TextOrGroup() + "|" + content->PropertyName() +
                            (content->InstanceScope().empty() ? "" : "|" + content->InstanceScope()) + "]";
    }
    return pieces;
}

TEST(LabelTemplate, ReadsPlaceholdersTextAndBraces) {
    const std::vector<std::pair<const char*, const char*>> rows{
        {"{item}", "[System|zrITM]"},
        {"{item} ({quantity}x)", "[System|zrITM]' ('[System|zrQTY]'x)'"},
        {"{tag}{name}", "[System|zrTAG][|Name]"},
        {"{property:Part No}", "[|Part No]"},
        {"{property:a:b}", "[|a:b]"},
        {"{parent:Name}{root:Name}", "[|Name|Parent][|Name|Root]"},
        {"{file:Title}", "[Document|Title]"},
        {"{item}{line}{quantity}x", "[System|zrITM]'\n'[System|zrQTY]'x'"},
        {"plain", "'plain'"},
        {"{{{item}}}", "'{'[System|zrITM]'}'"},  // doubled braces around a placeholder
        {"{{item}}", "'{item}'"},
        {"Pos. \xC3\xA4 {item}", "'Pos. \xC3\xA4 '[System|zrITM]"},
    };
    for (const auto& [text, pieces] : rows) EXPECT_EQ(Pieces(text), pieces) << text;
}

TEST(LabelTemplate, SaysWhatIsWrongAndWhere) {
    const std::vector<std::pair<const char*, const char*>> rows{
        {"", "empty"},
        {"{nonsense}", "{nonsense}"},
        {"{Item}", "{Item}"},
        {"{}", "{}"},
        {"{property:}", "{property:}"},
        {"{parent:}", "{parent:}"},
        {"no {item", "character 4"},
        {"no } here", "character 4"},
        {"{{item}", "character 7"},
    };
    for (const auto& [text, culprit] : rows) {
        const std::string error =
            zrtest::ErrorOf<UserError>([&] { static_cast<void>(ParseLabelTemplate(text)); });
        EXPECT_NE(error.find(culprit), std::string::npos) << text << ": " << error;
    }
}

TEST(LabelTemplate, RefusesTranslationsThatNameNoPlaceholder) {
    const auto isTaken = [](const char* translation) {
        return zrtest::ErrorOf<UserError>([&] {
                   CheckLabelTemplate("{item} of {quantity}", {{"de", translation}});
               }) == "no error";
    };
    for (const char* good : {"{1} von {0}", "{0}{0}", "von", "{1}"}) EXPECT_TRUE(isTaken(good)) << good;
    for (const char* bad : {"", "{2}", "{-1}", "{item}", "{}", "{0", "0}", "{{0}}", "{0 }", "}0}"})
        EXPECT_FALSE(isTaken(bad)) << bad;
}

}  // namespace
}  // namespace zrsheet
