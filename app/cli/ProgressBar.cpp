#include "app/cli/ProgressBar.h"

#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>

namespace zrsheet {
namespace {

constexpr std::size_t kBarWidth = 30;
constexpr std::size_t kUsualColumns = 80;
constexpr std::chrono::milliseconds kPatience{500};
constexpr std::chrono::seconds kWorthTelling{2};
constexpr const char* kWipe = "\r\033[K";

std::size_t Columns() {
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualColumns;
}

}  // namespace

ProgressBar::ProgressBar() : m_isTerminal(isatty(STDERR_FILENO) == 1) {}

ProgressBar::~ProgressBar() {
    if (m_watch.joinable()) {
        m_watch.request_stop();
        m_watch.join();
    }
    Wipe();
}

void ProgressBar::Show(std::string_view stage, int percent) {
    if (!m_isTerminal) return;
    const std::lock_guard hold(m_mutex);
    const auto now = Clock::now();
    if (stage.empty()) Wipe();
    if (m_stage.empty()) m_start = now;
    if (stage != m_stage) m_stageStart = now;
    m_stage = stage;
    m_percent = percent;
    if (m_stage.empty()) return;
    if (!m_watch.joinable()) StartWatch();
    Draw();
    m_wake.notify_one();
}

// Signals are for the thread that waits for keys: taken here, they would not end its wait.
void ProgressBar::StartWatch() {
    sigset_t all;
    sigset_t former;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &former);
    m_watch = std::jthread([this](const std::stop_token& stop) { Watch(stop); });
    pthread_sigmask(SIG_SETMASK, &former, nullptr);
}

void ProgressBar::Watch(const std::stop_token& stop) {
    std::unique_lock hold(m_mutex);
    while (!stop.stop_requested()) {
        if (m_stage.empty()) {
            m_wake.wait(hold, stop, [this] { return !m_stage.empty(); });
        } else {
            m_wake.wait_for(hold, stop, kPatience, [] { return false; });
            Draw();
        }
    }
}

// The line leaves the terminal's last column free, where some would begin the next one.
void ProgressBar::Draw() {
    const auto now = Clock::now();
    if (m_stage.empty() || now - m_start < kPatience) return;
    const auto filled = static_cast<std::size_t>(std::clamp(m_percent, 0, 100)) * kBarWidth / 100;
    std::string line = "[" + std::string(filled, '=') + std::string(kBarWidth - filled, ' ') + "] " + m_stage;
    if (now - m_stageStart >= kWorthTelling) {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - m_stageStart).count();
        line.append(", ").append(std::to_string(seconds)).append(" s");
    }
    line.resize(std::min(line.size(), Columns() - 1));
    if (line == m_shown) return;
    std::fprintf(stderr, "%s%s", kWipe, line.c_str());
    std::fflush(stderr);
    m_shown = line;
}

void ProgressBar::Wipe() {
    if (!m_shown.empty()) std::fputs(kWipe, stderr);
    m_shown.clear();
}

}  // namespace zrsheet
