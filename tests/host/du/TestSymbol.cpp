#include "du/Symbol.h"

#include <gtest/gtest.h>

#include <string>
#include <unordered_set>
#include <vector>

#include "tests/support/OnThreads.h"

namespace du {
namespace {

TEST(Symbol, IsEqualExactlyWhenTheTextsAre) {
    const struct {
        std::string a;
        std::string b;
        bool isEqual;
    } rows[] = {
        {"callout", "callout", true},
        {"callout", "Callout", false},
        {"", "", true},
        {"", " ", false},
        {std::string("a\0b", 3), std::string("a\0c", 3), false},  // texts may hold zero bytes
        {std::string("a\0b", 3), "a", false},
    };
    for (const auto& row : rows) {
        const Symbol a(row.a);
        const Symbol b(row.b);
        EXPECT_EQ(a == b, row.isEqual) << row.a << " and " << row.b;
        EXPECT_EQ(&a.Text() == &b.Text(), row.isEqual);
        EXPECT_EQ(std::hash<Symbol>()(a) == std::hash<Symbol>()(b), row.isEqual);
        EXPECT_EQ(a.Text(), row.a);
        EXPECT_EQ(a.empty(), row.a.empty());
    }
    EXPECT_EQ(Symbol(), Symbol::EMPTY);
}

TEST(Symbol, CountsTheBytesOfNewTextsOnly) {
    const std::string text(1000, 'c');
    const std::size_t before = Symbol::GetBytesInUse();
    const Symbol first(text);
    const std::size_t after = Symbol::GetBytesInUse();
    EXPECT_GT(after, before + text.size());
    EXPECT_LT(after, before + text.size() + 200);
    EXPECT_EQ(Symbol(text), first);
    EXPECT_EQ(Symbol::GetBytesInUse(), after);
}

TEST(Symbol, GivesAllThreadsTheSameAddressForNewTexts) {
    constexpr int kThreads = 8;
    constexpr std::size_t kTexts = 5000;
    std::vector<std::vector<Symbol>> made(kThreads);
    zrtest::OnThreads(kThreads, [&made](std::size_t thread) {
        for (std::size_t i = 0; i < kTexts; ++i)
            made[thread].emplace_back("racing text " + std::to_string(i));
    });
    for (const auto& symbols : made) EXPECT_TRUE(symbols == made.front());
    EXPECT_EQ(std::unordered_set<Symbol>(made[0].begin(), made[0].end()).size(), kTexts);
    // The table grew under these symbols; their texts must still be where they were.
    for (std::size_t i = 0; i < kTexts; ++i) ASSERT_EQ(made[0][i].Text(), "racing text " + std::to_string(i));
}

}  // namespace
}  // namespace du
