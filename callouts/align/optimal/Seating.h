// Which label stands on which lane, in which order, and where.

#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "callouts/align/optimal/LabelSpacer.h"
#include "callouts/align/optimal/LaneMaker.h"
#include "callouts/align/optimal/LayoutProblem.h"
#include "callouts/align/optimal/PlaceOrder.h"

namespace zrcallouts {

/// The state of a layout under way. Labels and lanes go by their numbers; pinned labels have no seat. What a
/// lane costs is the length of its labels' leaders; more for leaders so slanting that they run into
/// neighbours; and a little for each label that left the side it was on, so that a layout stays when the
/// picture hardly changes. One thread. The problem must outlive it.
class Seating {
    // What Rows holds.
    struct Row {
        std::vector<std::uint32_t> labels;
        std::vector<double> places;
        double load = 0.0;
        std::uint64_t moved = 0;
    };
    struct LabelSeat {
        std::size_t lane = 0;
        std::size_t index = 0;
        ScreenPoint centre;
        double cost = 0.0;
        double length = 0.0;
        double pull = 0.0;
        SpacedLabel next;  // what it wishes where it is; without weight it has not been asked
        std::uint64_t moved = 0;
    };

public:
    using Labels = std::vector<std::uint32_t>;

    /// Neighbours on a lane, and the room between those around them.
    struct Window {
        std::size_t lane = 0;
        std::size_t first = 0;
        std::size_t end = 0;
        double least = 0.0;
        double greatest = 0.0;
    };

    /// Where a label would be if it was alone on a lane, and what that costs.
    struct Lone {
        ScreenPoint centre;
        double wish = 0.0;  // along the lane
        double length = 0.0;
        double cost = 0.0;
    };

    /// Who stands where, to come back to.
    class Rows {
        friend class Seating;
        std::vector<Row> m_rows;
        std::vector<LabelSeat> m_seats;
    };

    explicit Seating(const LayoutProblem& problem);
    Seating(const Seating&) = delete;
    Seating& operator=(const Seating&) = delete;

    [[nodiscard]] const LayoutProblem& Problem() const { return m_problem; }
    [[nodiscard]] std::size_t LaneCount() const { return m_set.lanes.size(); }
    [[nodiscard]] const Lane& LaneAt(std::size_t lane) const { return m_set.lanes[lane]; }
    [[nodiscard]] const Labels& RowOf(std::size_t lane) const { return m_rows[lane].labels; }
    [[nodiscard]] const std::vector<double>& PlacesOf(std::size_t lane) const { return m_rows[lane].places; }
    [[nodiscard]] std::size_t LaneOf(std::uint32_t label) const { return m_seats[label].lane; }
    [[nodiscard]] std::size_t IndexOf(std::uint32_t label) const { return m_seats[label].index; }
    [[nodiscard]] const ScreenPoint& CentreOf(std::uint32_t label) const { return m_seats[label].centre; }
    [[nodiscard]] double CostOf(std::uint32_t label) const { return m_seats[label].cost; }
    /// Of its leaders.
    [[nodiscard]] double LengthOf(std::uint32_t label) const { return m_seats[label].length; }
    /// How strongly the label's leaders pull it back along the lane: -1 to 1 for each leader.
    [[nodiscard]] double PullOf(std::uint32_t label) const { return m_seats[label].pull; }
    /// How much that pull grows with each pixel along the lane.
    [[nodiscard]] double StiffnessOf(std::uint32_t label) const {
        const LabelSeat& seat = m_seats[label];
        const std::size_t leaders = AnchorsOf(label).size();
        const double mean = leaders == 1 ? seat.pull : seat.pull / static_cast<double>(leaders);
        return seat.next.weight * (1.0 - mean * mean);
    }
    /// Counts up whenever labels move; the count of a label's last move.
    [[nodiscard]] std::uint64_t Now() const { return m_now; }
    [[nodiscard]] std::uint64_t LastMoveOf(std::uint32_t label) const { return m_seats[label].moved; }
    /// The same for any label of the lane; labels that came or went count as well.
    [[nodiscard]] std::uint64_t LastMoveOn(std::size_t lane) const { return m_rows[lane].moved; }
    /// What its leaders end at; its old centre where it has none.
    [[nodiscard]] std::span<const ScreenPoint> AnchorsOf(std::uint32_t label) const {
        const std::size_t first = m_firstAnchors[label];
        return {m_anchors.data() + first, m_firstAnchors[label + 1] - first};
    }
    /// Whether the label stood on the lane's side before the layout.
    [[nodiscard]] bool IsHome(std::uint32_t label, std::size_t lane) const {
        return m_homes[label] == static_cast<int>(LaneAt(lane).Side());
    }

    /// Whether the lane is wide and long enough for the label.
    [[nodiscard]] bool Holds(std::size_t lane, std::uint32_t label) const {
        const LabelForm& form = m_problem.labels[label].form;
        return LaneAt(lane).Holds(form.Length(1 - LaneAt(lane).Along())) &&
               LoadOf(label, lane) <= Capacity(lane);
    }
    /// What the lane offers, what its labels take of that, and what one takes: its length and a gap.
    [[nodiscard]] double Capacity(std::size_t lane) const {
        return LaneAt(lane).Greatest() - LaneAt(lane).Least() + m_problem.rules.gap;
    }
    [[nodiscard]] double Load(std::size_t lane) const { return m_rows[lane].load; }
    [[nodiscard]] double LoadOf(std::uint32_t label, std::size_t lane) const {
        return LengthOn(LaneAt(lane), label) + m_problem.rules.gap;
    }
    /// Whether the lane holds one more label, this one.
    [[nodiscard]] bool HasRoom(std::size_t lane, std::uint32_t label) const {
        return Holds(lane, label) && Load(lane) + LoadOf(label, lane) <= Capacity(lane);
    }
    [[nodiscard]] double WishOf(std::uint32_t label, std::size_t lane) const {
        return m_alone[CellOf(label, lane)].wish;
    }
    [[nodiscard]] double LoneCost(std::uint32_t label, std::size_t lane) const {
        return m_alone[CellOf(label, lane)].cost;
    }
    /// Where the label's leaders are shortest if it has the page to itself. Requires: there is a lane.
    [[nodiscard]] const Lone& LonePlace(std::uint32_t label) const;
    /// Where the label would be at that place of the lane, in the inner row.
    [[nodiscard]] ScreenPoint CentreAt(std::uint32_t label, std::size_t lane, double place) const {
        return CentreAt(label, lane, place, 0);
    }
    /// What it would cost there, as if nothing else stood there.
    [[nodiscard]] double CostAt(std::uint32_t label, std::size_t lane, double place) const;
    /// Where the label would be if it had the other one's place.
    [[nodiscard]] ScreenPoint CentreInSeatOf(std::uint32_t label, std::uint32_t other) const;
    /// The length of its leaders if its centre was there.
    [[nodiscard]] double LengthAt(std::uint32_t label, const ScreenPoint& centre) const;
    /// The length of its leaders if it had the other one's place.
    [[nodiscard]] double LengthInSeatOf(std::uint32_t label, std::uint32_t other) const {
        const LabelSeat& seat = m_seats[other];
        return HasStands(seat.lane) ? StandOf(label, seat.lane).LengthAt(m_rows[seat.lane].places[seat.index])
                                    : LengthAt(label, CentreInSeatOf(label, other));
    }

    /// Whether these lanes, one for each label, have room for all.
    [[nodiscard]] bool Fit(const std::vector<std::size_t>& lanes) const;
    /// Whether the two lanes have room for the two the other way round.
    [[nodiscard]] bool FitsSwapped(std::uint32_t a, std::uint32_t b) const;
    /// Where in the lane's row the label would stand, as near to its wish as may be.
    [[nodiscard]] std::size_t PlaceIn(std::size_t lane, std::uint32_t label) const;
    /// Whether any leader of the one crosses one of the other, where they are or if they were elsewhere.
    [[nodiscard]] bool DoLeadersCross(std::uint32_t a, std::uint32_t b) const {
        return DoLeadersCross(a, CentreOf(a), b, CentreOf(b));
    }
    [[nodiscard]] bool DoLeadersCross(std::uint32_t a, const ScreenPoint& atA, std::uint32_t b,
                                      const ScreenPoint& atB) const;

    /// How far apart neighbours on the lane are at the least.
    [[nodiscard]] double Pitch(std::size_t lane, std::uint32_t a, std::uint32_t b) const {
        return Pitch(LaneAt(lane), a, b);
    }

    /// Of all labels; pinned ones and those without a lane stay where they were.
    [[nodiscard]] std::vector<ScreenPoint> Centres() const;

    /// Fills the lanes; `lanes` has one for each label. Sorts the rows by wishes, as far as they are not in
    /// good order already, and places everything.
    void Seat(const std::vector<std::size_t>& lanes);
    /// The labels that move when room of a length is needed or given free at an index of the lane.
    [[nodiscard]] Window Around(std::size_t lane, std::size_t index, double length) const;
    [[nodiscard]] Window Whole(std::size_t lane) const;
    [[nodiscard]] double CostOf(const Window& window) const;
    /// Of all labels that have a seat.
    [[nodiscard]] double Cost() const;
    /// Makes a lane dearer for a label from now on.
    void Charge(std::uint32_t label, std::size_t lane, double more);
    /// What of the cost is charged.
    [[nodiscard]] double Charges() const;
    /// The cost of the window if these were its labels, in this order.
    double CostWith(const Window& window, const Labels& labels);
    /// Whether so much has been tried that more is not worth waiting for. A crowd without room enough could
    /// otherwise be bettered for hours.
    [[nodiscard]] bool IsSpent() const { return m_tried > kMostTried; }
    /// Gives the window other labels and places them.
    void Replace(const Window& window, const Labels& labels);
    /// The two change places; `Settle` then sees to their lanes.
    void Swap(std::uint32_t a, std::uint32_t b);
    [[nodiscard]] Rows Save() const;
    /// Requires: no lane has changed since.
    void Restore(const Rows& rows);
    /// Places the labels of the lane as its order wants them.
    void Settle(std::size_t lane) { Settle(lane, kManyRounds); }
    /// The same, nearly.
    void SettleRoughly(std::size_t lane) { Settle(lane, kFewRounds); }

    [[nodiscard]] double Thick(std::size_t lane) const { return m_thickest[1 - LaneAt(lane).Along()]; }
    /// Has the page room for a second row on the lane?
    [[nodiscard]] bool CanDouble(std::size_t lane) const;
    void Double(std::size_t lane);
    /// How much farther out its labels may go.
    [[nodiscard]] double Spare(std::size_t lane) const;
    /// Takes a piece off one end of the lane; `Settle` then sees to it.
    void Shorten(std::size_t lane, bool atLeast, double by);
    /// Moves the lane farther out; `Settle` then sees to it. What labels would cost alone there stays as it
    /// was.
    void Push(std::size_t lane, double by) {
        m_set.lanes[lane].Push(by);
        FindStands(lane);
    }

private:
    /// All that a label's leader depends on besides its place, where labels have one leader each and lanes
    /// are straight. Most are, and most of the time goes into asking what places cost.
    struct Stand {
        double depth = 0.0;   // of the label's middle, across the lane
        double anchor = 0.0;  // along the lane
        double reach = 0.0;   // along the lane, to either side of the middle, where the leader may start
        double across = 0.0;  // from where the leader starts to the anchor
        double slack = 0.0;   // along the lane, before the leader slants too much

        /// From the anchor to where the leader starts, along the lane.
        [[nodiscard]] double Along(double place) const {
            const double along = place - anchor;
            return along - std::clamp(along, -reach, reach);
        }
        [[nodiscard]] ScreenPoint Centre(double place, int axis) const {
            return axis == 0 ? ScreenPoint{place, depth} : ScreenPoint{depth, place};
        }
        /// Of the leader, `along` the lane.
        [[nodiscard]] double Length(double along) const { return std::sqrt(along * along + across * across); }
        [[nodiscard]] double LengthAt(double place) const { return Length(Along(place)); }
        /// Of a leader so long.
        [[nodiscard]] double Cost(double along, double length, double fee) const {
            return length + (kSlantCost * std::max(std::abs(along) - slack, 0.0) + fee);
        }
    };

    /// Labels being placed, one after the other.
    struct Trial {
        std::vector<double> places;
        std::vector<double> better;
        std::vector<LabelSeat> seats;
    };

    // Of placing one row; each makes it better, and two or three do.
    static constexpr int kManyRounds = 5;
    static constexpr int kFewRounds = 0;
    static constexpr std::size_t kMostTried = 20'000'000;
    static constexpr double kSlantCost = 2.0;  // pixels of leader for each that a label stands too far aside
    static constexpr double kShortest = 1.0;   // pixels that leaders count as at least where that divides
    // Pixels between inner labels, beyond the gap, for a leader to the outer row.
    static constexpr double kPassage = 6.0;

    void FindHomes();
    template <class Key>
    Labels SortedBy(const Labels& labels, const Key& key);
    [[nodiscard]] Labels OldOrder(std::size_t lane, const Labels& sorted);
    [[nodiscard]] bool KeepsOrder(std::size_t lane, const Labels& sorted);
    [[nodiscard]] double BlockCost(const ScreenSegment& leader) const;
    [[nodiscard]] double SlantCost(std::uint32_t label, double along, double across) const;
    [[nodiscard]] bool IsPlain() const;
    /// Two rows have none.
    [[nodiscard]] bool HasStands(std::size_t lane) const { return m_isPlain && !LaneAt(lane).IsDouble(); }
    /// Where what is known of a label on a lane is kept: lane by lane.
    [[nodiscard]] std::size_t CellOf(std::uint32_t label, std::size_t lane) const {
        return lane * m_seats.size() + label;
    }
    [[nodiscard]] const Stand& StandOf(std::uint32_t label, std::size_t lane) const {
        return m_stands[CellOf(label, lane)];
    }
    void FindStands(std::size_t lane);
    void MeasureAlone(std::size_t lane);
    [[nodiscard]] double MiddleOf(std::uint32_t label, int axis) const;
    [[nodiscard]] Lone PlaceAlone(std::uint32_t label, std::size_t lane) const;
    [[nodiscard]] double SwitchCost(std::uint32_t label, std::size_t lane) const;
    [[nodiscard]] ScreenPoint CentreAt(std::uint32_t label, std::size_t lane, double place,
                                       std::size_t index) const;
    /// What a label takes along the lane. By turns in two rows each takes half, as the largest does.
    [[nodiscard]] double LengthOn(const Lane& lane, std::uint32_t label) const {
        if (!lane.IsDouble()) return m_problem.labels[label].form.Length(lane.Along());
        const double gap = m_problem.rules.gap;
        return 0.5 * (m_thickest[lane.Along()] + gap + kPassage) - gap;
    }
    [[nodiscard]] double Pitch(const Lane& lane, std::uint32_t a, std::uint32_t b) const {
        return 0.5 * (LengthOn(lane, a) + LengthOn(lane, b)) + m_problem.rules.gap;
    }
    void Settle(std::size_t lane, int rounds);
    double Arrange(const Window& window, const Labels& labels, int rounds);
    double ArrangeEvenly(const Window& window, const Labels& labels);
    void Wish(const Window& window, const Labels& labels);
    double Measure(const Window& window, const Labels& labels);
    void SpaceOuterRow(const Lane& lane, const Labels& labels);
    void MeasureOne(std::uint32_t label, std::size_t lane, double place, LabelSeat& seat) const;
    double MeasureStands(std::size_t lane, const Labels& labels);
    /// The same as `MeasureOne`, where all is known but the place.
    static void MeasureStand(const Stand& stand, double fee, double place, LabelSeat& seat) {
        const double along = stand.Along(place);
        seat.length = stand.Length(along);
        const double weight = 1.0 / std::max(seat.length, kShortest);
        seat.pull = weight * along;
        seat.cost = stand.Cost(along, seat.length, fee);
        seat.next = {place - along, weight, 0.0};
    }
    [[nodiscard]] SpacedLabel FirstWish(std::uint32_t label, std::size_t lane, std::size_t index) const;
    std::span<const double> Spread(const Window& window);
    void Take(const Window& window);

    const LayoutProblem& m_problem;
    LaneSet m_set;
    std::vector<Row> m_rows;  // of each lane
    std::vector<LabelSeat> m_seats;
    std::vector<ScreenPoint> m_anchors;  // of all labels
    std::vector<std::size_t> m_firstAnchors;
    std::vector<int> m_homes;      // the side where each label is already; -1: none
    std::vector<double> m_slants;  // of each label's form
    bool m_isPlain;                // whether straight rows have stands
    std::vector<Stand> m_stands;   // of each lane's cells
    std::vector<double> m_fees;    // of each lane's cells, wherever the label stands there
    std::vector<Lone> m_alone;     // of each lane's cells
    ScreenPoint m_thickest;        // the largest label along each axis
    std::uint64_t m_now = 0;
    std::size_t m_tried = 0;  // labels placed to see what that costs

    LabelSpacer m_spacer;
    PlaceOrder m_order;
    std::vector<SpacedLabel> m_spaced;
    std::vector<SpacedLabel> m_outer;
    Trial m_trial;
};

}  // namespace zrcallouts
