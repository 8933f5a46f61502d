#include "app/command/Completer.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>
#include <system_error>

#include "app/command/Choices.h"
#include "app/command/Quoting.h"
#include "app/command/SceneNames.h"
#include "app/command/WordSplitter.h"
#include "app/document/CalloutIds.h"
#include "app/document/UserError.h"

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

/// The alternatives of a usage: "[PART...|all] [hidden=yes|no]" are "PART", "all", "hidden=yes" and
/// "hidden=no".
std::vector<std::string> Alternatives(std::string_view usage) {
    std::vector<std::string> found(1);
    std::string option;  // with its equals sign
    for (const char c : usage) {
        if (c == ' ') option.clear();
        if (c == '|' || c == ' ') {
            found.push_back(option);
        } else if (c != '[' && c != ']' && c != '.') {
            found.back() += c;
        }
        if (c == '=') option = found.back();
    }
    return found;
}

bool IsToBeFilledIn(std::string_view word) {
    return std::any_of(word.begin(), word.end(), [](unsigned char c) { return std::isupper(c) != 0; });
}

void AddFiles(std::vector<std::string>& texts, std::string_view begun) {
    const fs::path path(begun);
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const fs::path name = entry->path().filename();
        const bool isHidden = name.string().starts_with('.') && !path.filename().string().starts_with('.');
        if (isHidden) continue;
        const fs::path found = path.has_parent_path() ? path.parent_path() / name : name;
        texts.push_back(found.string() + (entry->is_directory(error) ? "/" : ""));
    }
}

/// Names of parts; behind a slash paths, level by level.
void AddParts(const Document& document, std::vector<std::string>& texts, std::string_view begun) {
    for (const auto& instance : document.Model().Instances()) {
        const std::string path = instance->GetIdentifier().Text();
        if (!begun.starts_with('/')) {
            texts.push_back(instance->GetName());
            continue;
        }
        const std::size_t slash = path.starts_with(begun) ? path.find('/', begun.size()) : std::string::npos;
        texts.push_back(slash == std::string::npos ? path : path.substr(0, slash + 1));
    }
}

}  // namespace

Completion Completer::Complete(std::string_view line) const {
    WordSplitter splitter;
    Completion completion;
    try {
        splitter.Add(line);
    } catch (const UserError&) {
        return completion;
    }
    const WordSplitter::Unfinished unfinished = splitter.TakeUnfinished();
    if (unfinished.words.empty()) return completion;
    completion.begin = unfinished.lastBegin;
    const std::string& begun = unfinished.words.back().text;
    const Texts texts = TextsFor(unfinished.words);
    for (const std::string& text : std::set<std::string>(texts.begin(), texts.end())) {
        if (!text.starts_with(begun) || text.empty()) continue;
        const bool endsWord = text.back() != '/' && text.back() != '=';
        completion.candidates.push_back({Quoted(text, unfinished.openQuote, !endsWord), endsWord});
    }
    return completion;
}

Completer::Texts Completer::TextsFor(const std::vector<Word>& words) const {
    Texts texts;
    const auto add = [&texts](const std::vector<std::string_view>& more) {
        texts.insert(texts.end(), more.begin(), more.end());
    };
    const std::size_t before = words.size() - 1;
    const std::string& first = words.front().text;
    if (before == 0) add(m_table.FirstWords());
    if (before == 1) add(m_table.SecondWords(first));
    if (before >= 1 && first == "help") return TextsFor({words.begin() + 1, words.end()});
    const Command* command = before >= 1 ? m_table.Find(first) : nullptr;
    if (before >= 2) {
        const Command* longer = m_table.Find(first + " " + words[1].text);
        if (longer != nullptr) command = longer;
    }
    if (command != nullptr) AddArguments(*command, texts, words.back().text);
    return texts;
}

void Completer::AddArguments(const Command& command, Texts& texts, std::string_view begun) const {
    for (const std::string& word : Alternatives(command.arguments)) {
        const std::size_t equals = word.find('=');
        if (equals != std::string::npos) {
            AddOption(word.substr(0, equals + 1), word.substr(equals + 1), texts, begun);
        } else if (IsToBeFilledIn(word)) {
            AddKind(word, texts, begun);
        } else {
            texts.push_back(word);
        }
    }
}

/// First its name, then what it may be.
void Completer::AddOption(std::string_view name, std::string_view value, Texts& texts,
                          std::string_view begun) const {
    if (!begun.starts_with(name)) {
        texts.emplace_back(name);
        return;
    }
    Texts values{std::string(value)};
    if (IsToBeFilledIn(values.front())) {
        values.clear();
        AddKind(value, values, begun.substr(name.size()));
    }
    for (const std::string& each : values) texts.push_back(std::string(name) + each);
}

void Completer::AddKind(std::string_view kind, Texts& texts, std::string_view begun) const {
    if (kind == "FILE" || kind == "PROJECT" || kind == "MODEL") AddFiles(texts, begun);
    const auto choices = ChoicesOf(kind);
    texts.insert(texts.end(), choices.begin(), choices.end());
    if (!m_session.HasDocument()) return;
    if (kind == "PART") AddParts(m_session.Doc(), texts, begun);
    AddNamesFromDocument(kind, texts);
}

void Completer::AddNamesFromDocument(std::string_view kind, Texts& texts) const {
    const Document& document = m_session.Doc();
    const auto add = [&texts](const Texts& more) { texts.insert(texts.end(), more.begin(), more.end()); };
    if (kind == "CALLOUT") add(CalloutIds(document.Callouts()));
    if (kind == "TEMPLATE") add(document.Templates().Names());
    if (kind == "ITEM") {
        for (const unsigned id : document.Items()->GetItemIds()) texts.push_back(ItemLabel(document, id));
    }
    if (kind == "INSET") {
        for (std::size_t i = 0; i < document.Insets().size(); ++i) texts.push_back(InsetName(i));
    }
    if (kind == "SYMBOL") {
        for (const auto& symbol : Symbols(document)) texts.push_back(SymbolName(*symbol));
    }
}

}  // namespace zrsheet
