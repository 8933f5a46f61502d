#include "app/document/InstancePattern.h"

#include <gtest/gtest.h>

#include <chrono>

namespace zrsheet {
namespace {

TEST(MatchesGlob, KnowsStarsQuestionMarksAndCase) {
    struct Row {
        const char* text;
        const char* pattern;
        bool isMatch;
    };
    const std::vector<Row> rows{
        {"Bolt", "Bolt", true},
        {"Bolt", "bOLT", true},
        {"Bolt", "Bol", false},
        {"Bol", "Bolt", false},
        {"Bolt M8", "Bolt*", true},
        {"Bolt", "Bolt*", true},
        {"Bolt", "B?lt", true},
        {"Blt", "B?lt", false},
        {"", "*", true},
        {"", "", true},
        {"", "?", false},
        {"x", "", false},
        {"abcabd", "*abd", true},
        {"aXbXc", "a*b*c", true},
        {"aXbX", "a*b*c", false},
        {"a.b", "a?b", true},
        {"a[1]", "a[1]", true},
        {"abab", "*ab", true},
        {"mississippi", "m*iss*pi", true},
        {"Bolt", "***t**", true},
        {"x*y", "x*y", true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(MatchesGlob(row.text, row.pattern), row.isMatch) << row.text << " ~ " << row.pattern;
}

TEST(IsSelected, HoldsNamesAndPathsAgainstTheRightPatterns) {
    struct Row {
        const char* path;
        std::vector<std::string> patterns;
        bool isSelected;
    };
    const std::vector<Row> rows{
        {"/Pump/Screw", {}, true},
        {"/Pump/Screw", {"Screw"}, true},
        {"/Pump/Screw:12", {"Screw"}, true},  // the number tells instances apart only
        {"/Pump/Screw:", {"Screw"}, false},   // no number
        {"/Pump/Screw-12", {"Screw"}, false},
        {"/Pump/Screw:12", {"/Pump/Screw:12"}, true},  // but it is part of the path
        {"/Pump/Screw:12", {"/Pump/Screw"}, false},
        {"/Pump/Screw", {"Pump"}, true},  // an assembly selects all in it
        {"/Pump/Rotor/Screw", {"/Pump/Rotor"}, true},
        {"/Pump/Rotor/Screw", {"/Pump/*"}, true},
        {"/Pump/Screw", {"/Pump/Rotor/*"}, false},
        {"/Pump/Screw", {"Bolt", "Scr*"}, true},  // any of them
        {"/Pump/Screw", {"Bolt", "crew"}, false},
        {"/Pump2/Screw", {"/Pump/*"}, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(IsSelected(row.path, row.patterns), row.isSelected)
            << row.path << " ~ " << testing::PrintToString(row.patterns);
    }
}

}  // namespace
}  // namespace zrsheet
