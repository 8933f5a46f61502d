#include "app/render/CleanText.h"

#include <gtest/gtest.h>

#include <string_view>

namespace zrsheet {
namespace {

TEST(CleanText, KeepsWhatXmlAllowsAndNothingElse) {
    const struct {
        const char* text;
        const char* clean;
    } kCases[] = {
        {"Ventil <&\"'> \u9600 \U0001F529", "Ventil <&\"'> \u9600 \U0001F529"},
        {"a\x01\x1f\x7f\u0085z", "az"},
        {"two\nlines\tand\rmore", "two lines and more"},
        {"\uFFFE\uFFFFx", "x"},
        {"Latin \xE4\xF6", "Latin \uFFFD\uFFFD"},
        {"cut \xE9\x98", "cut \uFFFD\uFFFD"},
        {"overlong \xC0\xAF\xE0\x80\xAF", "overlong \uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"surrogate \xED\xA0\x80", "surrogate \uFFFD\uFFFD\uFFFD"},
        {"beyond \xF4\x90\x80\x80\xFF", "beyond \uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
    };
    for (const auto& test : kCases) EXPECT_EQ(CleanText(test.text), test.clean) << test.text;
    EXPECT_EQ(CleanText(std::string_view("\u9600", 2)), "\uFFFD\uFFFD");
}

}  // namespace
}  // namespace zrsheet
