// Keeps leaders off foreign labels.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "callouts/align/optimal/Seating.h"

namespace zrcallouts {

/// Crowded lanes go away from the model: the farther out, the steeper leaders leave their neighbours. Where
/// two sides meet, the one gives way that loses less by it. Both as far as the page has room.
class Clearing {
public:
    explicit Clearing(Seating& seating) : m_seating(seating) {}

    /// Returns whether anything changed.
    bool Run();

private:
    /// A leader runs into a label.
    struct Touch {
        std::uint32_t leader = 0;
        std::uint32_t label = 0;
    };
    /// One end of a lane.
    struct End {
        std::size_t lane = 0;
        bool isLeast = false;
    };

    [[nodiscard]] bool IsTouched(std::uint32_t label, std::uint32_t by) const;
    [[nodiscard]] bool HasTouches(std::size_t lane) const;
    [[nodiscard]] bool TouchesNeighbour(std::size_t lane, std::size_t index) const;
    [[nodiscard]] std::optional<Touch> FindTouch(std::size_t lane, std::size_t other) const;
    [[nodiscard]] End EndNear(std::uint32_t label) const;
    [[nodiscard]] double EndStep(std::size_t lane) const;
    [[nodiscard]] double LossBy(const End& end);
    bool PushOut(std::size_t lane);
    bool ClearCorner(std::size_t lane, std::size_t other);

    Seating& m_seating;
};

}  // namespace zrcallouts
