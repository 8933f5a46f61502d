#include "app/document/LabelTemplate.h"

#include <gtest/gtest.h>

#include "app/document/UserError.h"

namespace zrsheet {
namespace {

/// The pieces with what they are: 'text' or [group|name].
std::string Pieces(const std::string& text) {
    std::string pieces;
    for (const auto& content : ParseLabelTemplate(text)) {
        pieces += content->Kind() == 0 ? "'" + content->TextOrGroup() + "'"
                                       : "[" + content->TextOrGroup() + "|" + content->PropertyName() + "]";
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
        {"no {item", "character 4"},
        {"no } here", "character 4"},
        {"{{item}", "character 7"},
    };
    for (const auto& [text, culprit] : rows) {
        try {
            static_cast<void>(ParseLabelTemplate(text));
            ADD_FAILURE() << "taken: " << text;
        } catch (const UserError& error) {
            EXPECT_NE(std::string(error.what()).find(culprit), std::string::npos) << error.what();
        }
    }
}

}  // namespace
}  // namespace zrsheet
