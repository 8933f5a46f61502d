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

    /// An empty stage wipes the line: the work is done, and other work may begin.
    void Show(std::string_view stage, int percent);

private:
    void Wipe();

    const bool m_isTerminal;
    std::mutex m_mutex;  // guards the line on the screen and the two below
    std::chrono::steady_clock::time_point m_start;
    bool m_isShown = false;
};

}  // namespace zrsheet
