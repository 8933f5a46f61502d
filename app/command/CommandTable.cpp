#include "app/command/CommandTable.h"

#include <set>
#include <string>

#include "app/command/topics/CalloutCommands.h"
#include "app/command/topics/CreationCommands.h"
#include "app/command/topics/FileCommands.h"
#include "app/command/topics/HistoryCommands.h"
#include "app/command/topics/InsetCommands.h"
#include "app/command/topics/ItemCommands.h"
#include "app/command/topics/LabelCommands.h"
#include "app/command/topics/ListCommands.h"
#include "app/command/topics/NumberingCommands.h"
#include "app/command/topics/PartCommands.h"
#include "app/command/topics/PictureCommands.h"
#include "app/command/topics/StyleCommands.h"
#include "app/command/topics/SymbolCommands.h"
#include "app/command/topics/TemplateCommands.h"
#include "app/document/UserError.h"

namespace zrsheet {
namespace {

std::string Joined(const std::vector<std::string_view>& words) {
    std::string text;
    for (const auto word : words) text += (text.empty() ? "" : ", ") + std::string(word);
    return text;
}

}  // namespace

const CommandTable& CommandTable::Get() {
    static const CommandTable kTable;
    return kTable;
}

CommandTable::CommandTable()
    : m_topics{FileCommands(),   PartCommands(),     CreationCommands(), CalloutCommands(),   LabelCommands(),
               StyleCommands(),  TemplateCommands(), ItemCommands(),     NumberingCommands(), InsetCommands(),
               SymbolCommands(), PictureCommands(),  HistoryCommands(),  ListCommands()} {}

const Command* CommandTable::Find(std::string_view name) const {
    for (const CommandTopic& topic : m_topics) {
        for (const Command& command : topic.commands) {
            if (command.name == name) return &command;
        }
    }
    return nullptr;
}

const Command& CommandTable::Resolve(const std::vector<Word>& words) const {
    const std::string& first = words.front().text;
    if (words.size() > 1 && words[1].IsPlain()) {
        if (const Command* command = Find(first + " " + words[1].text)) return *command;
    }
    if (const Command* command = Find(first)) return *command;
    const auto seconds = SecondWords(first);
    if (seconds.empty()) throw UserError("'" + first + "' is no command; 'help' lists them");
    throw UserError("command '" + first + "': it goes on with one of " + Joined(seconds) +
                    (words.size() > 1 ? ", not with '" + words[1].text + "'" : "") + "; 'help " + first +
                    "' tells more");
}

std::vector<std::string_view> CommandTable::FirstWords() const {
    std::set<std::string_view> words;
    for (const CommandTopic& topic : m_topics) {
        for (const Command& command : topic.commands)
            words.insert(command.name.substr(0, command.name.find(' ')));
    }
    return {words.begin(), words.end()};
}

std::vector<std::string_view> CommandTable::SecondWords(std::string_view first) const {
    std::set<std::string_view> words;
    for (const CommandTopic& topic : m_topics) {
        for (const Command& command : topic.commands) {
            const std::size_t space = command.name.find(' ');
            if (space == std::string_view::npos || command.name.substr(0, space) != first) continue;
            words.insert(command.name.substr(space + 1));
        }
    }
    return {words.begin(), words.end()};
}

std::size_t CommandTable::WordCount(const Command& command) {
    return command.name.find(' ') == std::string_view::npos ? 1 : 2;
}

}  // namespace zrsheet
