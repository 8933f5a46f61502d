#include "app/command/WordSplitter.h"

#include <gmock/gmock.h>

#include <sstream>

#include "app/command/Quoting.h"
#include "app/command/ScriptReader.h"
#include "app/document/UserError.h"

namespace zrsheet {
namespace {

using Texts = std::vector<std::string>;

/// The words of each command; "!" and the complaint for one that is none.
std::vector<Texts> Commands(const std::string& script) {
    std::istringstream in(script);
    ScriptReader reader(in);
    std::vector<Texts> commands;
    std::vector<Word> words;
    for (bool goesOn = true; goesOn;) {
        Texts texts;
        try {
            goesOn = reader.Next(words);
            for (const Word& word : words) texts.push_back(word.text);
        } catch (const UserError& error) {
            texts = {"!", error.what()};
        }
        if (goesOn) commands.push_back(texts);
    }
    return commands;
}

TEST(WordSplitter, SplitsAsTheManualSays) {
    const std::vector<std::pair<std::string, std::vector<Texts>>> rows{
        {"move a by 1,2,3", {{"move", "a", "by", "1,2,3"}}},
        {" \t a\t b  ", {{"a", "b"}}},
        {"", {}},
        {"\n\n# all\n  # of it\n", {}},
        {"a # b", {{"a"}}},
        {"a#b", {{"a#b"}}},
        {"'#7' \"#8\" \\#9", {{"#7", "#8", "#9"}}},
        {"'a b' \"c d\"", {{"a b", "c d"}}},
        {"a'b c'd", {{"ab cd"}}},
        {"''", {{""}}},
        {R"('it\'s' "\"" a\ b \\)", {{"it's", "\"", "a b", "\\"}}},
        {"\"'\" '\"'", {{"'", "\""}}},
        {"a \\\n b", {{"a", "b"}}},
        {"a\\\nb", {{"ab"}}},
        {"'a \\\nb'", {{"a b"}}},
        {"a\nb", {{"a"}, {"b"}}},
        {"a\r\nb\r\n", {{"a"}, {"b"}}},
        {"# a \\\nb", {{"b"}}},
        {"\xEF\xBB\xBF"
         "a",
         {{"a"}}},
        {"Gehäuse '部品 1' \\ß", {{"Gehäuse", "部品 1", "ß"}}},
    };
    for (const auto& [script, commands] : rows) EXPECT_EQ(Commands(script), commands) << script;
}

TEST(WordSplitter, SaysWhatIsNoCommandAndGoesOn) {
    const std::string longest(WordSplitter::kLongestCommand, 'x');
    const std::vector<std::pair<std::string, std::string>> rows{
        {"ä 'b",
         "the quote ' at character 3 has no partner; close it, or write \\' for the character itself"},
        {"a 'b\" c",
         "the quote ' at character 3 has no partner; close it, or write \\' for the character itself"},
        {"ä\x01", "character 2 is no text; a script is a plain text file"},
        {"a\xFF", "the line is not UTF-8; save the script in that encoding"},
        {longest + "x",
         "the command is longer than 65536 bytes; use patterns such as 'Bolt*' or several commands"},
        {longest + "\\\nx",
         "the command is longer than 65536 bytes; use patterns such as 'Bolt*' or several commands"},
    };
    for (const auto& [line, complaint] : rows) {
        EXPECT_THAT(Commands(line + "\nnext"), testing::ElementsAre(Texts{"!", complaint}, Texts{"next"}));
    }
    EXPECT_THAT(Commands("a \\"),
                testing::ElementsAre(
                    Texts{"!", "the backslash at the end goes on with a line that is not there; remove it"}));
    EXPECT_EQ(Commands(longest), std::vector<Texts>{{longest}});
}

TEST(WordSplitter, ReadsBackWhatIsQuoted) {
    for (const char* text :
         {"plain", "", "a b", "it's", "say \"x\"", "#7", "back\\slash", "tab\there", "=>[0:1]"}) {
        for (const char quote : {'\0', '\'', '"'}) {
            EXPECT_EQ(Commands(Quoted(text, quote)), std::vector<Texts>{{text}}) << text << " in " << quote;
        }
    }
}

}  // namespace
}  // namespace zrsheet
