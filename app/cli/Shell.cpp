#include "app/cli/Shell.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <iterator>
#include <sstream>

#include "app/cli/InterruptKey.h"
#include "app/cli/Warning.h"
#include "app/command/Completer.h"
#include "app/command/ScriptRunner.h"
#include "app/command/WordSplitter.h"
#include "app/document/UserError.h"
#include "app/sheet/SheetMaker.h"
#include "app/text/ProgramText.h"
#include "du/Localizer.h"

namespace zrsheet {
namespace {

constexpr const char* kContinued = "... ";

/// That which the machine is set to speak; English if the program has no texts in it. "de_AT.UTF-8" is
/// German.
std::string LanguageOfMachine() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (value == nullptr || *value == '\0') continue;
        const std::string locale(value);
        const std::string language = locale.substr(0, locale.find_first_of("_.@"));
        return du::Localizer::HasLanguage(language) ? language : "en";
    }
    return "en";
}

/// Whether it is one of the words of that text.
bool IsAnswer(const std::string& answer, const char* id) {
    std::istringstream words(Text(id));
    const std::istream_iterator<std::string> end;
    return std::find(std::istream_iterator<std::string>(words), end, answer) != end;
}

}  // namespace

Shell::Shell(const ShellRequest& request)
    : m_request(request),
      m_isTerminal(isatty(STDIN_FILENO) == 1),
      m_session(
          {std::cout, [this](std::string_view stage, int percent) { m_progress.Show(stage, percent); },
           m_isTerminal ? std::bind_front(&Shell::Ask, this) : std::function<Session::Answer(std::string)>(),
           ThreadCount(request.threads), PrintWarning, InterruptKey::WasPressed,
           request.language.value_or(m_isTerminal ? LanguageOfMachine() : "en"),
           request.language.has_value()}) {}

Shell::~Shell() = default;

bool Shell::Run() {
    OpenFile();
    if (!m_isTerminal) return RunPipe();
    RunTerminal();
    return true;
}

void Shell::OpenFile() {
    if (m_request.file.empty()) return;
    const bool isProject = m_request.file.extension() == ".zrsheet";
    const auto& table = CommandTable::Get();
    Interpreter(table, m_session).Execute({{isProject ? "open" : "import", 0}, {m_request.file.string(), 0}});
}

bool Shell::RunPipe() {
    ScriptRunner runner(m_session, std::cerr);
    const bool isDone = runner.Run(std::cin, "stdin", true);
    m_session.ReportUnsaved(std::cerr);
    return isDone;
}

void Shell::RunTerminal() {
    const Completer completer(CommandTable::Get(), m_session);
    m_editor = std::make_unique<LineEditor>(
        HistoryFile(), [&completer](std::string_view line) { return completer.Complete(line); });
    std::cout << Text("greeting") << std::endl;
    std::vector<Word> words;
    while (!m_session.IsQuitting()) {
        try {
            if (!ReadCommand(words)) words = {{"quit", 0}};
            if (!words.empty()) Execute(words);
        } catch (const UserError& error) {
            std::cout.flush();
            std::cerr << error.what() << std::endl;
        }
        std::cout.flush();
    }
    m_editor.reset();
}

// A command that waits for an answer of the author's is none that runs on.
void Shell::Execute(const std::vector<Word>& words) {
    const InterruptKey interrupt;
    Interpreter(CommandTable::Get(), m_session).Execute(words);
}

// A line that is interrupted, and an empty line, is no words.
bool Shell::ReadCommand(std::vector<Word>& words) {
    WordSplitter splitter;
    std::string line;
    bool goesOn = true;
    words.clear();
    for (std::string prompt = Prompt(); goesOn; prompt = kContinued) {
        const auto outcome = m_editor->Read(prompt, line);
        if (outcome == LineEditor::Outcome::End) return false;
        if (outcome == LineEditor::Outcome::Interrupted) return true;
        if (!line.empty()) m_editor->Remember(line);
        goesOn = splitter.Add(line);
    }
    words = splitter.Take();
    return true;
}

std::string Shell::Prompt() const {
    if (!m_session.HasDocument()) return "zrsheet> ";
    const std::string name =
        m_session.File().empty() ? m_session.Doc().Model().Name() : m_session.File().stem().string();
    return name + (m_session.IsModified() ? "*> " : "> ");
}

Session::Answer Shell::Ask(const std::string& question) {
    const std::string prompt = question + " " + Text("answers");
    std::string answer;
    while (m_editor->Read(prompt, answer) == LineEditor::Outcome::Line) {
        if (IsAnswer(answer, "answers-yes")) return Session::Answer::Save;
        if (IsAnswer(answer, "answers-no")) return Session::Answer::Discard;
        if (IsAnswer(answer, "answers-cancel")) break;
    }
    return Session::Answer::Cancel;
}

}  // namespace zrsheet
