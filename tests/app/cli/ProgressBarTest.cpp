#include "app/cli/ProgressBar.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <thread>

namespace zrsheet {
namespace {

/// Standard error is a terminal of so many columns, until this goes.
class Terminal {
public:
    explicit Terminal(unsigned short columns) : m_former(dup(STDERR_FILENO)) {
        const winsize size{24, columns, 0, 0};
        int slave = -1;
        EXPECT_EQ(openpty(&m_master, &slave, nullptr, nullptr, &size), 0);
        dup2(slave, STDERR_FILENO);
        close(slave);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() {
        dup2(m_former, STDERR_FILENO);
        close(m_former);
        close(m_master);
    }

    /// What comes within so long.
    std::string Read(int milliseconds) const {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
        std::array<char, 4096> block{};
        pollfd wait{m_master, POLLIN, 0};
        const ssize_t count = poll(&wait, 1, 0) > 0 ? read(m_master, block.data(), block.size()) : 0;
        return {block.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }

private:
    int m_former;
    int m_master = -1;
};

const std::string kWipe = "\r\033[K";

// Much of the work is done by libraries that say nothing for a minute.
TEST(ProgressBar, IsThereAndCountsSecondsWhileTheWorkSaysNothing) {
    const Terminal terminal(100);
    ProgressBar bar;
    bar.Show("Reading", 50);
    EXPECT_EQ(terminal.Read(100), "") << "it may be done in no time";
    const std::string line = kWipe + "[===============               ] Reading";
    EXPECT_EQ(terminal.Read(900), line) << "drawn once, for it stays the same";
    EXPECT_EQ(terminal.Read(2200).substr(0, line.size() + 5), line + ", 2 s");
    bar.Show({}, 100);
    EXPECT_EQ(terminal.Read(700), kWipe) << "and remains so";
    bar.Show("Drawing", 0);
    EXPECT_EQ(terminal.Read(100), "") << "this is other work";
}

// A line that is too long wraps, and then no return carriage gets back to its beginning.
TEST(ProgressBar, FitsIntoTheTerminal) {
    const Terminal terminal(36);
    ProgressBar bar;
    bar.Show("Triangulating its parts", 100);
    const std::string text = terminal.Read(900);
    EXPECT_EQ(text, kWipe + "[==============================] Tr");
}

}  // namespace
}  // namespace zrsheet
