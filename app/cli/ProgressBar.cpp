#include "app/cli/ProgressBar.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace zrsheet {
namespace {

constexpr int kBarWidth = 30;
constexpr std::chrono::milliseconds kPatience{500};
constexpr const char* kWipe = "\r\033[K";

}  // namespace

ProgressBar::ProgressBar()
    : m_isTerminal(isatty(STDERR_FILENO) == 1), m_start(std::chrono::steady_clock::now()) {}

ProgressBar::~ProgressBar() { Wipe(); }

void ProgressBar::Wipe() {
    if (m_isShown) std::fputs(kWipe, stderr);
    m_isShown = false;
}

void ProgressBar::Show(std::string_view stage, int percent) {
    if (!m_isTerminal) return;
    const std::lock_guard hold(m_mutex);
    const auto now = std::chrono::steady_clock::now();
    if (stage.empty()) {
        Wipe();
        m_start = now;
    }
    if (now - m_start < kPatience) return;
    const auto filled = static_cast<std::size_t>(std::clamp(percent, 0, 100) * kBarWidth / 100);
    const std::string bar = std::string(filled, '=') + std::string(kBarWidth - filled, ' ');
    m_isShown = true;
    std::fprintf(stderr, "%s[%s] %.*s", kWipe, bar.c_str(), static_cast<int>(stage.size()), stage.data());
    std::fflush(stderr);
}

}  // namespace zrsheet
