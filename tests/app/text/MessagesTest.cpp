// The catalogues of messages against each other, and against the table of commands.

#include <gmock/gmock.h>
#include <unicode/messagepattern.h>
#include <unicode/resbund.h>

#include <map>
#include <set>
#include <string>

#include "app/command/CommandTable.h"

namespace zrsheet {
namespace {

using Messages = std::map<std::string, icu::UnicodeString>;

constexpr std::array<const char*, 4> kTranslations{"de", "fr", "es", "ja"};

/// Those that stand in the catalogue itself.
Messages Read(const std::string& catalogue, const char* language) {
    UErrorCode status = U_ZERO_ERROR;
    const std::string package = std::string(ZR_MESSAGES).append("/").append(catalogue);
    icu::ResourceBundle bundle(icu::UnicodeString::fromUTF8(package), icu::Locale(language), status);
    EXPECT_EQ(status, U_ZERO_ERROR) << catalogue << " has no file for " << language;
    Messages messages;
    while (U_SUCCESS(status) && bundle.hasNext()) {
        const icu::ResourceBundle message = bundle.getNext(status);
        messages[message.getKey()] = message.getString(status);
    }
    return messages;
}

std::set<std::string> KeysOf(const Messages& messages) {
    std::set<std::string> keys;
    for (const auto& [key, text] : messages) keys.insert(key);
    return keys;
}

/// The names in its braces; the text itself if it cannot be read.
std::set<std::string> PlaceholdersOf(const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::MessagePattern pattern(text, nullptr, status);
    std::set<std::string> names;
    std::string name;
    if (U_FAILURE(status)) return {"unreadable: " + text.toUTF8String(name)};
    for (int i = 0; i < pattern.countParts(); ++i) {
        const auto& part = pattern.getPart(i);
        if (part.getType() != UMSGPAT_PART_TYPE_ARG_NAME) continue;
        name.clear();
        names.insert(pattern.getSubstring(part).toUTF8String(name));
    }
    return names;
}

TEST(Messages, AreThereInEveryLanguageWithTheSamePlaceholders) {
    for (const char* catalogue :
         {"zrbase/zrmodulesStrings", "zrsheet/sheet", "zrsheet/program", "zrsheet/catalogue"}) {
        const Messages english = Read(catalogue, "root");
        for (const char* language : kTranslations) {
            const Messages translated = Read(catalogue, language);
            EXPECT_EQ(KeysOf(translated), KeysOf(english)) << catalogue << ", " << language;
            for (const auto& [key, text] : english) {
                const auto same = translated.find(key);
                if (same == translated.end()) continue;
                EXPECT_EQ(PlaceholdersOf(same->second), PlaceholdersOf(text)) << key << ", " << language;
            }
        }
    }
}

// Who adds a command sees here that its summary and its title are to be translated.
TEST(Messages, TranslateTheTableOfCommands) {
    std::set<std::string> wanted;
    for (const CommandTopic& topic : CommandTable::Get().Topics()) {
        wanted.insert(std::string(topic.title));
        for (const Command& command : topic.commands) {
            wanted.insert(std::string(command.name));
            if (!command.title.empty()) wanted.insert(std::string(command.title));
        }
    }
    for (const char* language : kTranslations)
        EXPECT_EQ(KeysOf(Read("zrsheet/commands", language)), wanted) << language;
}

}  // namespace
}  // namespace zrsheet
