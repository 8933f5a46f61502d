// The terminal's interrupt key, for work that can be given up half-way.

#pragma once

#include <csignal>

namespace zrsheet {

/// While it lives the key does not end the program but is remembered; pressed once more it ends the program
/// after all. One at a time.
class InterruptKey {
public:
    InterruptKey();
    InterruptKey(const InterruptKey&) = delete;
    InterruptKey& operator=(const InterruptKey&) = delete;
    ~InterruptKey();

    /// Since this was made. Any thread.
    [[nodiscard]] static bool WasPressed();

private:
    struct sigaction m_former {};
};

}  // namespace zrsheet
