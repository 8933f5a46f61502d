// Shows on a terminal how far the work is.

#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace zrsheet {

/// One line on standard error: a bar, what is being done and, once that takes seconds, how many. It goes on
/// while the work says nothing. Nothing is shown when standard error is no terminal, nor for work that is
/// done within half a second. Any thread.
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
    using Clock = std::chrono::steady_clock;

    void StartWatch();
    void Watch(const std::stop_token& stop);
    void Draw();
    void Wipe();

    const bool m_isTerminal;
    std::mutex m_mutex;  // guards the line on the screen and all below
    std::condition_variable_any m_wake;
    Clock::time_point m_start;       // of the work
    Clock::time_point m_stageStart;  // of what is being done now
    std::string m_stage;             // empty: there is no work
    int m_percent = 0;
    std::string m_shown;   // empty: nothing
    std::jthread m_watch;  // draws while the work says nothing; the last member, so that it ends first
};

}  // namespace zrsheet
