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

ProgressBar::~ProgressBar() {
    if (m_isShown) std::fputs(kWipe, stderr);
}

void ProgressBar::Show(std::string_view stage, int percent) {
    if (!m_isTerminal || std::chrono::steady_clock::now() - m_start < kPatience) return;
    const auto filled = static_cast<std::size_t>(std::clamp(percent, 0, 100) * kBarWidth / 100);
    const std::string bar = std::string(filled, '=') + std::string(kBarWidth - filled, ' ');
    const std::lock_guard hold(m_mutex);
    m_isShown = true;
    std::fprintf(stderr, "%s[%s] %.*s", kWipe, bar.c_str(), static_cast<int>(stage.size()), stage.data());
    std::fflush(stderr);
}

}  // namespace zrsheet
