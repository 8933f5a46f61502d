#include "app/import/Utf8Text.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace zrsheet {
namespace {

#define BAD "\xEF\xBF\xBD"

TEST(Utf8Text, ReplacesOnlyWhatIsNotWellFormed) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases{
        {"a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\xA7",
         "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\xA7"},                         // one to four bytes
        {"\xF4\x8F\xBF\xBD\xED\x9F\xBF", "\xF4\x8F\xBF\xBD\xED\x9F\xBF"},  // last of their kinds
        {"M\xFCller", "M" BAD "ller"},                                     // another encoding
        {"\xC0\xAF", BAD BAD},                                             // longer than need be
        {"\xE0\x80\xAF", BAD BAD BAD},
        {"\xF0\x80\x80\xAF", BAD BAD BAD BAD},
        {"\xED\xA0\x80", BAD BAD BAD},  // a surrogate
        {"\xF4\x90\x80\x80", BAD BAD BAD BAD},
        {"\xE2\x82", BAD BAD},  // cut off
        {"\x80", BAD},
    };
    for (const auto& [text, valid] : cases) EXPECT_EQ(ValidUtf8(text), valid) << text;
}

TEST(Utf8Text, MakesOneLine) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases{
        {"  two\nlines\t", "two lines"},
        {"\x7F x\xC2\x85y \xEF\xBF\xBF", "x y"},
        {" \r\n", ""},
        {"\xFF", BAD}};
    for (const auto& [text, line] : cases) EXPECT_EQ(OneLine(text), line) << text;
}

}  // namespace
}  // namespace zrsheet
