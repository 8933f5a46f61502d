#include "app/sheet/SideChoice.h"

#include <algorithm>
#include <tuple>

namespace zrsheet {
namespace {

using Distances = std::array<double, kBalloonSides>;

Distances DistancesOf(const PagePoint& anchor, const PageBox& model) {
    return {anchor.x - model.x0, model.x1 - anchor.x, anchor.y - model.y0, model.y1 - anchor.y};
}

double RoomOf(const Balloon& balloon, std::size_t side, double gap) {
    return (side == kLeftSide || side == kRightSide ? balloon.height : balloon.width) + gap;
}

/// What it costs to move a balloon to another side.
struct Option {
    double loss;
    std::size_t balloon;
    BalloonSide side;

    friend bool operator<(const Option& a, const Option& b) {
        return std::tie(a.loss, a.balloon, a.side) < std::tie(b.loss, b.balloon, b.side);
    }
};

class SideChooser {
public:
    SideChooser(const std::vector<Balloon>& balloons, const PageBox& model, const Distances& rooms,
                double gap)
        : m_balloons(balloons), m_gap(gap), m_spare(rooms) {
        for (const Balloon& balloon : balloons) {
            m_distances.push_back(DistancesOf(balloon.anchor, model));
            const auto nearest = std::min_element(m_distances.back().begin(), m_distances.back().end());
            m_sides.push_back(static_cast<BalloonSide>(nearest - m_distances.back().begin()));
            m_spare[m_sides.back()] -= RoomOf(balloon, m_sides.back(), gap);
        }
    }

    std::vector<BalloonSide> Choose() {
        for (const Option& option : Options()) {
            BalloonSide& side = m_sides[option.balloon];
            const Balloon& balloon = m_balloons[option.balloon];
            const double needed = RoomOf(balloon, option.side, m_gap);
            if (m_spare[side] >= 0.0 || m_spare[option.side] < needed) continue;
            m_spare[side] += RoomOf(balloon, side, m_gap);
            m_spare[option.side] -= needed;
            side = option.side;
        }
        return std::move(m_sides);
    }

private:
    /// Ways off the sides that are too full, the cheapest first.
    std::vector<Option> Options() const {
        std::vector<Option> options;
        for (std::size_t i = 0; i < m_sides.size(); ++i) {
            if (m_spare[m_sides[i]] >= 0.0) continue;
            for (const BalloonSide side : {kLeftSide, kRightSide, kTopSide, kBottomSide}) {
                if (side != m_sides[i])
                    options.push_back({m_distances[i][side] - m_distances[i][m_sides[i]], i, side});
            }
        }
        std::sort(options.begin(), options.end());
        return options;
    }

    const std::vector<Balloon>& m_balloons;
    const double m_gap;
    Distances m_spare;  // room left on each side, negative when it is too full
    std::vector<Distances> m_distances;
    std::vector<BalloonSide> m_sides;
};

}  // namespace

std::vector<BalloonSide> ChooseSides(const std::vector<Balloon>& balloons, const PageBox& model,
                                     const std::array<double, kBalloonSides>& rooms, double gap) {
    return SideChooser(balloons, model, rooms, gap).Choose();
}

}  // namespace zrsheet
