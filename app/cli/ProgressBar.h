// Shows on a terminal how far the work is.

#pragma once

#include <chrono>
#include <mutex>
#include <string_view>

namespace zrsheet {

/// Nothing is shown when standard error is no terminal, nor for work that is done within half a second. Any
/// thread.
class ProgressBar {
public:
    ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    /// Wipes the line.
    ~ProgressBar();

    void Show(std::string_view stage, int percent);

private:
    const bool m_isTerminal;
    const std::chrono::steady_clock::time_point m_start;
    std::mutex m_mutex;  // guards the line on the screen and m_isShown
    bool m_isShown = false;
};

}  // namespace zrsheet
