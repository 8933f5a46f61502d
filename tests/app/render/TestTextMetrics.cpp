#include "app/render/TextMetrics.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace zrsheet {
namespace {

// Rounding to whole pixels would make a page at twice the scale another page.
TEST(TextMetrics, GrowEvenlyWithTheSize) {
    for (const char* text : {"Hexagon screw M6x20", "iiii", "1"}) {
        EXPECT_NEAR(TextWidth(text, 39), 3.0 * TextWidth(text, 13), 0.05) << text;
    }
    EXPECT_NEAR(CapHeight(130), 10.0 * CapHeight(13), 0.1);
}

TEST(TextMetrics, AreThoseOfTheFont) {
    EXPECT_NEAR(CapHeight(100), 72.9, 0.5);
    EXPECT_NEAR(TextWidth("0123456789", 100), 636.2, 1.0);
    EXPECT_GT(TextWidth("Screw", 12, true), TextWidth("Screw", 12));
    EXPECT_GT(TextAscent(100), CapHeight(100));
    EXPECT_EQ(TextWidth("", 12), 0.0);
    EXPECT_EQ(TextWidth("a\x01\x7f", 12), TextWidth("a", 12));
    EXPECT_EQ(TextWidth("\xFF", 12), TextWidth("\uFFFD", 12));
}

TEST(TextMetrics, EllipsizeKeepsAsMuchAsFits) {
    const std::string text = "Zylinderschraube";
    EXPECT_EQ(Ellipsize(text, 12, TextWidth(text, 12)), text);
    for (std::size_t kept = 1; kept + 1 < text.size(); ++kept) {
        const std::string cut = text.substr(0, kept) + "\u2026";
        EXPECT_EQ(Ellipsize(text, 12, TextWidth(cut, 12) + 0.01), cut);
    }
    EXPECT_EQ(Ellipsize(text, 12, 1.0), "");
    EXPECT_EQ(Ellipsize("left hand", 12, TextWidth("left \u2026", 12) + 0.01), "left\u2026");
}

// Half a character is no UTF-8, and whoever reads the file stops there.
TEST(TextMetrics, EllipsizeCutsBetweenCharacters) {
    const std::string text = "\u01C4\u9600\u01C4\u9580\u01C4\u9600";
    for (double width = 5; width < TextWidth(text, 12); width += 0.7) {
        const std::string cut = Ellipsize(text, 12, width);
        EXPECT_EQ(cut.find("\uFFFD"), std::string::npos);
        const std::string kept = cut.substr(0, cut.size() - std::min<std::size_t>(cut.size(), 3));
        EXPECT_TRUE(text.starts_with(kept));
        EXPECT_TRUE(kept.size() == text.size() ||
                    (static_cast<unsigned char>(text[kept.size()]) & 0xC0U) != 0x80U);
    }
}

TEST(TextMetrics, AreTheSameOnEveryThread) {
    const double expected = TextWidth("Pump housing", 13);
    std::vector<double> widths(4);
    {
        std::vector<std::jthread> threads;
        for (double& width : widths)
            threads.emplace_back([&width] { width = TextWidth("Pump housing", 13); });
    }
    EXPECT_EQ(widths, std::vector<double>(4, expected));
}

}  // namespace
}  // namespace zrsheet
