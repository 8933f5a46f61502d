#include "callouts/align/optimal/LaneMaker.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace zrcallouts {
namespace {

constexpr double kFollowRoom = 600.0;  // pixels by which lanes along an outline may become smoother
constexpr double kScan = 4.0;          // pixels from one place that is tried to the next

struct SideFrame {
    LaneSide side;
    int axis;
    double outward;
};

constexpr SideFrame kLeft{LaneSide::Left, 1, -1.0};
constexpr SideFrame kRight{LaneSide::Right, 1, 1.0};
constexpr SideFrame kTop{LaneSide::Top, 0, -1.0};
constexpr SideFrame kBottom{LaneSide::Bottom, 0, 1.0};

std::vector<SideFrame> SidesOf(LayoutPattern pattern) {
    if (pattern == LayoutPattern::Columns) return {kLeft, kRight};
    if (pattern == LayoutPattern::Rows) return {kTop, kBottom};
    return {kLeft, kRight, kTop, kBottom};
}

bool FollowsOutline(LayoutPattern pattern) {
    return pattern == LayoutPattern::Circle || pattern == LayoutPattern::Silhouette;
}

struct Stretch {
    double least;
    double greatest;
};

/// What is left of the stretch without the boxes, each with `gap` around it.
std::vector<Stretch> WithoutBoxes(const Stretch& all, std::vector<ScreenBox> boxes, int axis, double gap) {
    std::sort(boxes.begin(), boxes.end(),
              [axis](const auto& a, const auto& b) { return a.Least(axis) < b.Least(axis); });
    std::vector<Stretch> rest;
    double from = all.least;
    for (const ScreenBox& box : boxes) {
        const double end = std::min(box.Least(axis) - gap, all.greatest);
        if (end > from) rest.push_back({from, end});
        from = std::max(from, box.Greatest(axis) + gap);
    }
    if (from < all.greatest) rest.push_back({from, all.greatest});
    return rest;
}

class Maker {
public:
    explicit Maker(const LayoutProblem& problem) : m_problem(problem), m_blocks(problem.obstacles) {
        for (const LayoutLabel& label : problem.labels) {
            if (label.isPinned) m_blocks.push_back(label.form.BoxAt(label.centre));
        }
    }

    LaneSet Make() {
        LaneSet set;
        const auto sides = SidesOf(m_problem.rules.pattern);
        set.profiles.reserve(sides.size());
        for (const SideFrame& side : sides) {
            if (FollowsOutline(m_problem.rules.pattern)) {
                set.profiles.emplace_back(m_problem, m_blocks, side.axis, side.outward);
                AddFollowing(side, set);
            } else {
                AddStraight(side, 0.0, set.lanes);
            }
        }
        if (!set.lanes.empty()) return set;
        for (const SideFrame& side : sides) AddStraight(side, kAnyRoom, set.lanes);
        return set;
    }

private:
    static constexpr double kAnyRoom = std::numeric_limits<double>::infinity();

    double Thick(int axis) const { return GreatestLength(m_problem.labels, 1 - axis); }

    double PageEnd(const SideFrame& side) const {
        return side.outward < 0.0 ? m_problem.page.Least(1 - side.axis)
                                  : m_problem.page.Greatest(1 - side.axis);
    }

    /// `reach`: how far over the model the lane may lie to stay on the page.
    void AddStraight(const SideFrame& side, double reach, std::vector<Lane>& lanes) const {
        const int depth = 1 - side.axis;
        const double thick = Thick(side.axis);
        double rim = (side.outward < 0.0 ? m_problem.model.Least(depth) : m_problem.model.Greatest(depth)) +
                     side.outward * m_problem.rules.distance;
        double room = (PageEnd(side) - rim) * side.outward;
        if (room < LeastLength(m_problem.labels, depth)) {
            if (thick - room > reach) return;
            rim = PageEnd(side) - side.outward * thick;
            room = thick;
        }
        const Stretch all = Along(side);
        for (const Stretch& free :
             WithoutBoxes(all, Within(side, rim, thick), side.axis, m_problem.rules.gap))
            lanes.emplace_back(side.side, rim, free.least, free.greatest, FreeRoom(side, rim, room, free));
    }

    /// The columns have the corners to themselves.
    Stretch Along(const SideFrame& side) const {
        const ScreenBox& page = m_problem.page;
        if (side.axis == 1 || m_problem.rules.pattern == LayoutPattern::Rows)
            return {page.Least(side.axis), page.Greatest(side.axis)};
        const double over = std::max(m_problem.rules.distance - m_problem.rules.gap, 0.0);
        return {std::max(m_problem.model.x0 - over, page.x0), std::min(m_problem.model.x1 + over, page.x1)};
    }

    /// What lies in the band of labels that begins at the rim.
    std::vector<ScreenBox> Within(const SideFrame& side, double rim, double thick) const {
        const int depth = 1 - side.axis;
        const double gap = m_problem.rules.gap;
        const double from = std::min(rim, rim + side.outward * thick) - gap;
        const double to = std::max(rim, rim + side.outward * thick) + gap;
        std::vector<ScreenBox> found;
        for (const ScreenBox& box : m_blocks) {
            if (box.Least(depth) < to && box.Greatest(depth) > from) found.push_back(box);
        }
        return found;
    }

    double FreeRoom(const SideFrame& side, double rim, double room, const Stretch& free) const {
        const int depth = 1 - side.axis;
        const double gap = m_problem.rules.gap;
        for (const ScreenBox& box : m_blocks) {
            if (box.Greatest(side.axis) + gap <= free.least || box.Least(side.axis) - gap >= free.greatest)
                continue;
            const double near = side.outward < 0.0 ? box.Greatest(depth) : box.Least(depth);
            const double way = (near - rim) * side.outward - gap;
            if (way >= 0.0) room = std::min(room, way);
        }
        return room;
    }

    /// As far to both sides of the middle as the labels stay on the page.
    void AddFollowing(const SideFrame& side, LaneSet& set) const {
        const LaneProfile& profile = set.profiles.back();
        const double thick = Thick(side.axis);
        const double half = 0.5 * GreatestLength(m_problem.labels, side.axis);
        const auto spareAt = [&](double place) {
            return (PageEnd(side) - profile.Rim(place, half)) * side.outward - thick;
        };
        const double middle = m_problem.model.Middle(side.axis);
        double least = middle;
        double greatest = middle;
        if (spareAt(middle) < 0.0) return;
        while (least - half - kScan >= profile.Least() && spareAt(least - kScan) >= 0.0) least -= kScan;
        while (greatest + half + kScan <= profile.Greatest() && spareAt(greatest + kScan) >= 0.0)
            greatest += kScan;
        Lane& lane = set.lanes.emplace_back(side.side, profile.Rim(middle, half), least - half,
                                            greatest + half, thick + kFollowRoom);
        lane.Follow(&profile, PageEnd(side));
    }

    const LayoutProblem& m_problem;
    std::vector<ScreenBox> m_blocks;
};

}  // namespace

LaneSet MakeLanes(const LayoutProblem& problem) { return Maker(problem).Make(); }

}  // namespace zrcallouts
