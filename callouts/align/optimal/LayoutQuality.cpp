#include "callouts/align/optimal/LayoutQuality.h"

#include <algorithm>
#include <numeric>
#include <tuple>

#include "callouts/align/optimal/Seating.h"

namespace zrcallouts {
namespace {

constexpr double kTolerance = 1e-6;  // pixels; what only touches does no harm
constexpr std::size_t kManyFaults = 100'000;

using Kind = LayoutFaultKind;

/// Something on the page that belongs to a label.
struct Item {
    ScreenBox box;
    std::uint32_t label = 0;
    bool isLeader = false;
    ScreenSegment leader{};
};

ScreenBox Narrowed(const ScreenBox& box) {
    return {box.x0 + kTolerance, box.y0 + kTolerance, box.x1 - kTolerance, box.y1 - kTolerance};
}

bool IsInside(const ScreenPoint& point, const ModelArea& area) {
    bool isInside = false;
    for (const auto& ring : area.rings) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const ScreenPoint& a = ring[i];
            const ScreenPoint& b = ring[(i + 1) % ring.size()];
            if ((a.y > point.y) == (b.y > point.y)) continue;
            if (point.x < a.x + (b.x - a.x) * (point.y - a.y) / (b.y - a.y)) isInside = !isInside;
        }
    }
    return isInside;
}

bool Covers(const ScreenBox& box, const ModelArea& area) {
    if (!box.Overlaps(area.box)) return false;
    for (const auto& ring : area.rings) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            if (IsInside(ScreenSegment{ring[i], ring[(i + 1) % ring.size()]}, box)) return true;
        }
    }
    return IsInside(ScreenPoint{box.Middle(0), box.Middle(1)}, area);
}

class Inspector {
public:
    Inspector(const LayoutProblem& problem, const std::vector<ScreenPoint>& centres)
        : m_problem(problem), m_centres(centres) {
        for (std::uint32_t label = 0; label < problem.labels.size(); ++label) AddItems(label);
    }

    LayoutQuality Inspect() {
        for (std::uint32_t label = 0; label < m_centres.size(); ++label) InspectPlace(label);
        InspectPairs();
        Compare();
        std::sort(m_quality.faults.begin(), m_quality.faults.end(), [](const auto& a, const auto& b) {
            return std::tie(a.kind, a.label, a.other) < std::tie(b.kind, b.label, b.other);
        });
        const auto end = std::unique(m_quality.faults.begin(), m_quality.faults.end());
        m_quality.faults.erase(end, m_quality.faults.end());
        return std::move(m_quality);
    }

private:
    void AddItems(std::uint32_t label) {
        const LayoutLabel& own = m_problem.labels[label];
        m_items.push_back({Narrowed(own.form.BoxAt(m_centres[label])), label});
        for (const ScreenPoint& anchor : own.anchors) {
            const ScreenSegment leader{own.form.Start(m_centres[label], anchor), anchor};
            m_items.push_back({leader.Box(), label, true, leader});
            m_quality.length += Distance(leader.from, leader.to);
        }
    }

    void Add(Kind kind, std::uint32_t label, std::uint32_t other) {
        m_quality.faults.push_back({kind, label, other});
    }

    void InspectPlace(std::uint32_t label) {
        const ScreenBox box = Narrowed(m_problem.labels[label].form.BoxAt(m_centres[label]));
        if (!m_problem.page.Holds(box)) Add(Kind::LabelOffPage, label, label);
        const auto& areas = m_problem.areas;
        const bool isOnModel =
            box.Overlaps(m_problem.model) &&
            (areas.empty() || std::any_of(areas.begin(), areas.end(),
                                          [&](const ModelArea& area) { return Covers(box, area); }));
        const auto& obstacles = m_problem.obstacles;
        const bool isOnObstacle = std::any_of(obstacles.begin(), obstacles.end(),
                                              [&](const auto& obstacle) { return box.Overlaps(obstacle); });
        if (isOnModel || isOnObstacle) Add(Kind::LabelOnModel, label, label);
    }

    /// Sweeps over the page from left to right.
    void InspectPairs() {
        std::stable_sort(m_items.begin(), m_items.end(),
                         [](const Item& a, const Item& b) { return a.box.x0 < b.box.x0; });
        std::vector<const Item*> open;
        for (const Item& item : m_items) {
            m_quality.isComplete = m_quality.faults.size() < kManyFaults;
            if (!m_quality.isComplete) return;
            std::erase_if(open, [&item](const Item* other) { return other->box.x1 < item.box.x0; });
            for (const Item* other : open) {
                if (other->box.y0 <= item.box.y1 && item.box.y0 <= other->box.y1) InspectPair(*other, item);
            }
            open.push_back(&item);
        }
    }

    void InspectPair(const Item& a, const Item& b) {
        if (a.label == b.label) return;
        const auto [first, second] = std::minmax(a.label, b.label);
        if (!a.isLeader && !b.isLeader) {
            if (a.box.Overlaps(b.box)) Add(Kind::LabelsOverlap, first, second);
        } else if (a.isLeader && b.isLeader) {
            if (DoCross(a.leader, b.leader)) Add(Kind::LeadersCross, first, second);
        } else {
            const Item& leader = a.isLeader ? a : b;
            const Item& label = a.isLeader ? b : a;
            const LabelForm& form = m_problem.labels[label.label].form;
            if (form.IsTouched(m_centres[label.label], leader.leader, -kTolerance))
                Add(Kind::LeaderMeetsLabel, leader.label, label.label);
        }
    }

    /// With every label alone on the page.
    void Compare() {
        LayoutProblem alone = m_problem;
        for (LayoutLabel& label : alone.labels) label.isPinned = false;
        const Seating seating(alone);
        std::size_t led = 0;
        for (std::uint32_t label = 0; label < alone.labels.size() && seating.LaneCount() > 0; ++label) {
            if (alone.labels[label].anchors.empty()) continue;
            const auto lone = seating.LonePlace(label);
            m_quality.shortest += std::min(lone.length, seating.LengthAt(label, m_centres[label]));
            m_quality.displacement += Distance(lone.centre, m_centres[label]);
            ++led;
        }
        if (led > 0) m_quality.displacement /= static_cast<double>(led);
    }

    const LayoutProblem& m_problem;
    const std::vector<ScreenPoint>& m_centres;
    std::vector<Item> m_items;
    LayoutQuality m_quality;
};

}  // namespace

std::size_t LayoutQuality::Count(LayoutFaultKind kind) const {
    return static_cast<std::size_t>(std::count_if(faults.begin(), faults.end(),
                                                  [kind](const auto& fault) { return fault.kind == kind; }));
}

LayoutQuality MeasureLayout(const LayoutProblem& problem, const std::vector<ScreenPoint>& centres) {
    return Inspector(problem, centres).Inspect();
}

}  // namespace zrcallouts
