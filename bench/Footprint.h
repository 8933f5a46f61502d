// How much memory a piece of work needs while it runs.

#pragma once

#include <cstddef>

namespace zrbench {

/// From its making on. What the process had freed before is given back to the system first, so that using it
/// again counts. One at a time.
class Footprint {
public:
    Footprint();

    /// The most that the process had at once since then, beyond what it had then. Bytes.
    [[nodiscard]] std::size_t Peak() const;
    /// What the process has now beyond that. Bytes.
    [[nodiscard]] std::size_t Kept() const;

private:
    std::size_t m_start;
};

}  // namespace zrbench
