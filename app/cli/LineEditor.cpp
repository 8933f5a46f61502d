#include "app/cli/LineEditor.h"

#include <histedit.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <system_error>
#include <utility>

namespace zrsheet {
namespace {

constexpr int kRememberedLines = 1000;
constexpr std::size_t kScreenWidth = 100;

volatile std::sig_atomic_t g_isInterrupted = 0;

void OnInterrupt(int) { g_isInterrupted = 1; }

std::size_t CharacterCount(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

/// What all candidates begin with.
std::string CommonBeginning(const std::vector<Completion::Candidate>& candidates) {
    std::string common = candidates.front().text;
    for (const auto& candidate : candidates) {
        const auto end =
            std::mismatch(common.begin(), common.end(), candidate.text.begin(), candidate.text.end());
        common.erase(end.first, common.end());
    }
    // Not the first bytes of a character alone.
    while (!common.empty() && common.size() < candidates.front().text.size() &&
           (static_cast<unsigned char>(candidates.front().text[common.size()]) & 0xC0U) == 0x80U) {
        common.pop_back();
    }
    return common;
}

void Print(const std::vector<Completion::Candidate>& candidates) {
    std::size_t column = 0;
    std::fputc('\n', stdout);
    for (const auto& candidate : candidates) {
        const std::size_t width = CharacterCount(candidate.text) + 2;
        if (column > 0 && column + width > kScreenWidth) {
            std::fputc('\n', stdout);
            column = 0;
        }
        std::fprintf(stdout, "%s  ", candidate.text.c_str());
        column += width;
    }
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

}  // namespace

/// The library's editor and history.
class LineEditor::Terminal {
public:
    Terminal(std::filesystem::path historyFile, Complete complete)
        : m_historyFile(std::move(historyFile)), m_complete(std::move(complete)) {
        std::setlocale(LC_CTYPE, "C.UTF-8");  // what scripts are written in
        CatchInterrupts();
        StartHistory();
        StartEditor();
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() {
        el_end(m_editor);
        history_end(m_history);
        sigaction(SIGINT, &m_formerAction, nullptr);
    }

    Outcome Read(const std::string& prompt, std::string& line) {
        m_prompt = prompt;
        g_isInterrupted = 0;
        el_resize(m_editor);
        int length = 0;
        const char* typed = el_gets(m_editor, &length);
        if (typed == nullptr || length <= 0) {
            std::fputc('\n', stdout);
            if (g_isInterrupted == 0) return Outcome::End;
            el_reset(m_editor);
            return Outcome::Interrupted;
        }
        line.assign(typed, static_cast<std::size_t>(length));
        line.erase(line.find_last_not_of("\r\n") + 1);
        return Outcome::Line;
    }

    void Remember(const std::string& line) {
        HistEvent event;
        history(m_history, &event, H_ENTER, line.c_str());
        if (m_historyFile.empty()) return;
        std::error_code error;
        std::filesystem::create_directories(m_historyFile.parent_path(), error);
        history(m_history, &event, H_SAVE, m_historyFile.c_str());
    }

private:
    // Without SA_RESTART the waiting read ends, and with it the line.
    void CatchInterrupts() {
        struct sigaction action {};
        action.sa_handler = OnInterrupt;
        sigaction(SIGINT, &action, &m_formerAction);
    }

    void StartHistory() {
        m_history = history_init();
        HistEvent event;
        history(m_history, &event, H_SETSIZE, kRememberedLines);
        history(m_history, &event, H_SETUNIQUE, 1);
        if (!m_historyFile.empty()) history(m_history, &event, H_LOAD, m_historyFile.c_str());
    }

    void StartEditor() {
        m_editor = el_init("zrsheet", stdin, stdout, stderr);
        el_set(m_editor, EL_CLIENTDATA, this);
        el_set(m_editor, EL_PROMPT, &PromptOf);
        el_set(m_editor, EL_EDITOR, "emacs");
        el_set(m_editor, EL_HIST, history, m_history);
        el_set(m_editor, EL_GETCFN, &ReadCharacter);
        el_set(m_editor, EL_ADDFN, "zr-complete", "Completes a word", &OnTab);
        el_set(m_editor, EL_BIND, "^I", "zr-complete", nullptr);
        el_set(m_editor, EL_BIND, "^R", "em-inc-search-prev", nullptr);
    }

    static Terminal& Of(EditLine* editor) {
        void* self = nullptr;
        el_get(editor, EL_CLIENTDATA, &self);
        return *static_cast<Terminal*>(self);
    }

    static char* PromptOf(EditLine* editor) { return Of(editor).m_prompt.data(); }

    /// The library would go on reading after an interrupt.
    static int ReadCharacter(EditLine*, wchar_t* character) {
        std::mbstate_t state{};
        while (true) {
            if (g_isInterrupted != 0) return -1;
            char byte = 0;
            const ssize_t count = read(STDIN_FILENO, &byte, 1);
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return static_cast<int>(count);
            const std::size_t used = std::mbrtowc(character, &byte, 1, &state);
            if (used == static_cast<std::size_t>(-2)) continue;  // more of the character follows
            if (used == static_cast<std::size_t>(-1)) {
                state = {};
                continue;  // no text: left out
            }
            return 1;
        }
    }

    static unsigned char OnTab(EditLine* editor, int) { return Of(editor).CompleteWord(); }

    unsigned char CompleteWord() {
        const LineInfo* info = el_line(m_editor);
        const std::string line(info->buffer, static_cast<std::size_t>(info->cursor - info->buffer));
        const Completion completion = m_complete(line);
        if (completion.candidates.empty()) return CC_REFRESH_BEEP;
        const std::string typed = line.substr(completion.begin);
        const bool isOnly = completion.candidates.size() == 1;
        std::string text = CommonBeginning(completion.candidates);
        if (isOnly && completion.candidates.front().endsWord) text += ' ';
        if (!isOnly && text.size() <= typed.size()) {
            Print(completion.candidates);
            return CC_REDISPLAY;
        }
        el_deletestr(m_editor, static_cast<int>(CharacterCount(typed)));
        el_insertstr(m_editor, text.c_str());
        return CC_REFRESH;
    }

    const std::filesystem::path m_historyFile;
    const Complete m_complete;
    std::string m_prompt;
    EditLine* m_editor = nullptr;
    History* m_history = nullptr;
    struct sigaction m_formerAction {};
};

LineEditor::LineEditor(std::filesystem::path historyFile, Complete complete)
    : m_terminal(std::make_unique<Terminal>(std::move(historyFile), std::move(complete))) {}

LineEditor::~LineEditor() = default;

LineEditor::Outcome LineEditor::Read(const std::string& prompt, std::string& line) {
    return m_terminal->Read(prompt, line);
}

void LineEditor::Remember(const std::string& line) { m_terminal->Remember(line); }

std::filesystem::path HistoryFile() {
    const char* state = std::getenv("XDG_STATE_HOME");
    if (state != nullptr && *state == '/') return std::filesystem::path(state) / "zrsheet" / "history";
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0') return {};
    return std::filesystem::path(home) / ".local" / "state" / "zrsheet" / "history";
}

}  // namespace zrsheet
