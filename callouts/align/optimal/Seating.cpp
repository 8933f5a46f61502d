#include "callouts/align/optimal/Seating.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace zrcallouts {
namespace {

constexpr double kEnough = 1e-4;      // of the cost: what a further round must save
constexpr double kSwitchCost = 8.0;   // pixels of leader that a label saves at least by going to another side
constexpr double kOrderCost = 3.0;    // pixels of leader that each label saves at least by another order
constexpr double kBlockCost = 300.0;  // pixels of leader for each obstacle that it leads over
constexpr double kStill = 0.25;       // pixels; what moves less has not moved

}  // namespace

Seating::Seating(const LayoutProblem& problem)
    : m_problem(problem),
      m_set(MakeLanes(problem)),
      m_rows(m_set.lanes.size()),
      m_seats(problem.labels.size()),
      m_thickest{GreatestLength(problem.labels, 0), GreatestLength(problem.labels, 1)} {
    m_firstAnchors.reserve(problem.labels.size() + 1);
    m_anchors.reserve(problem.labels.size());
    m_slants.reserve(problem.labels.size());
    for (const LayoutLabel& label : problem.labels) {
        m_firstAnchors.push_back(m_anchors.size());
        m_anchors.insert(m_anchors.end(), label.anchors.begin(), label.anchors.end());
        if (label.anchors.empty()) m_anchors.push_back(label.centre);
        m_slants.push_back(label.form.Slant(problem.rules.gap));
    }
    m_firstAnchors.push_back(m_anchors.size());
    FindHomes();
    m_fees.reserve(m_seats.size() * LaneCount());
    for (std::size_t lane = 0; lane < LaneCount(); ++lane) {
        for (std::uint32_t label = 0; label < m_seats.size(); ++label)
            m_fees.push_back(SwitchCost(label, lane));
    }
    m_isPlain = IsPlain();
    m_stands.resize(m_fees.size());
    m_alone.resize(m_fees.size());
    for (std::size_t lane = 0; lane < LaneCount(); ++lane) MeasureAlone(lane);
}

void Seating::FindHomes() {
    m_homes.assign(m_problem.labels.size(), -1);
    for (std::size_t i = 0; i < m_homes.size(); ++i) {
        const LayoutLabel& label = m_problem.labels[i];
        const ScreenBox box = label.form.BoxAt(label.centre);
        const auto home = [&](LaneSide side) { m_homes[i] = static_cast<int>(side); };
        if (box.x1 <= m_problem.model.x0) {
            home(LaneSide::Left);
        } else if (box.x0 >= m_problem.model.x1) {
            home(LaneSide::Right);
        } else if (box.y1 <= m_problem.model.y0) {
            home(LaneSide::Top);
        } else if (box.y0 >= m_problem.model.y1) {
            home(LaneSide::Bottom);
        }
    }
}

double Seating::SlantCost(std::uint32_t label, double along, double across) const {
    return kSlantCost * std::max(std::abs(along) - m_slants[label] * std::abs(across), 0.0);
}

/// For leaders over foreign obstacles; those of what an obstacle shows end inside it.
double Seating::BlockCost(const ScreenSegment& leader) const {
    double cost = 0.0;
    for (const ScreenBox& obstacle : m_problem.obstacles) {
        const ScreenBox end{leader.to.x, leader.to.y, leader.to.x, leader.to.y};
        if (!obstacle.Holds(end) && IsInside(leader, obstacle)) cost += kBlockCost;
    }
    return cost;
}

double Seating::SwitchCost(std::uint32_t label, std::size_t lane) const {
    return m_homes[label] < 0 || IsHome(label, lane) ? 0.0 : kSwitchCost;
}

ScreenPoint Seating::CentreAt(std::uint32_t label, std::size_t lane, double place, std::size_t index) const {
    const Lane& on = LaneAt(lane);
    if (HasStands(lane)) return StandOf(label, lane).Centre(place, on.Along());
    const bool isOuter = on.IsDouble() && index % 2 == 1;
    return on.Centre(m_problem.labels[label].form, place, isOuter, m_anchors[m_firstAnchors[label]]);
}

bool Seating::IsPlain() const {
    const auto& labels = m_problem.labels;
    const auto& lanes = m_set.lanes;
    return m_problem.obstacles.empty() && m_anchors.size() == labels.size() &&
           std::all_of(labels.begin(), labels.end(),
                       [](const auto& label) { return label.form.IsPlain(); }) &&
           std::all_of(lanes.begin(), lanes.end(), [](const Lane& lane) { return lane.IsStraight(); });
}

void Seating::FindStands(std::size_t lane) {
    if (!HasStands(lane)) return;
    const Lane& on = LaneAt(lane);
    const int axis = on.Along();
    for (std::uint32_t label = 0; label < m_seats.size(); ++label) {
        const LabelForm& form = m_problem.labels[label].form;
        const ScreenPoint& anchor = m_anchors[label];
        const double depth = on.Depth(form);
        const double reach = form.Reach();
        const double off = std::abs(depth - anchor[1 - axis]);
        const double across = axis == 0 ? off : std::max(off - reach, 0.0);
        m_stands[CellOf(label, lane)] = {depth, anchor[axis], axis == 0 ? reach : 0.0, across,
                                         m_slants[label] * across};
    }
}

void Seating::MeasureAlone(std::size_t lane) {
    FindStands(lane);
    for (std::uint32_t label = 0; label < m_seats.size(); ++label)
        m_alone[CellOf(label, lane)] = PlaceAlone(label, lane);
}

Seating::Lone Seating::PlaceAlone(std::uint32_t label, std::size_t lane) const {
    const Lane& on = LaneAt(lane);
    const int axis = on.Along();
    const double half = 0.5 * m_problem.labels[label].form.Length(axis);
    const double least = on.Least() + half;
    const double greatest = std::max(on.Greatest() - half, least);
    if (HasStands(lane)) {
        const Stand& stand = StandOf(label, lane);
        const double place = std::clamp(stand.anchor, least, greatest);
        const double along = stand.Along(place);
        const double length = stand.Length(along);
        return {stand.Centre(place, axis), place, length,
                stand.Cost(along, length, m_fees[CellOf(label, lane)])};
    }
    const double place = std::clamp(MiddleOf(label, axis), least, greatest);
    LabelSeat seat;
    seat.centre = CentreAt(label, lane, place);
    MeasureOne(label, lane, place, seat);
    return {seat.centre, place, seat.length, seat.cost};
}

/// Of what its leaders end at.
double Seating::MiddleOf(std::uint32_t label, int axis) const {
    const auto anchors = AnchorsOf(label);
    double sum = 0.0;
    for (const ScreenPoint& anchor : anchors) sum += anchor[axis];
    return anchors.size() == 1 ? sum : sum / static_cast<double>(anchors.size());
}

double Seating::CostAt(std::uint32_t label, std::size_t lane, double place) const {
    if (HasStands(lane)) {
        const Stand& stand = StandOf(label, lane);
        const double along = stand.Along(place);
        return stand.Cost(along, stand.Length(along), m_fees[CellOf(label, lane)]);
    }
    LabelSeat seat;
    seat.centre = CentreAt(label, lane, place);
    MeasureOne(label, lane, place, seat);
    return seat.cost;
}

const Seating::Lone& Seating::LonePlace(std::uint32_t label) const {
    const Lone* best = &m_alone[CellOf(label, 0)];
    for (std::size_t lane = 1; lane < LaneCount(); ++lane) {
        const Lone& lone = m_alone[CellOf(label, lane)];
        if (lone.length < best->length) best = &lone;
    }
    return *best;
}

ScreenPoint Seating::CentreInSeatOf(std::uint32_t label, std::uint32_t other) const {
    const LabelSeat& seat = m_seats[other];
    return CentreAt(label, seat.lane, m_rows[seat.lane].places[seat.index], seat.index);
}

double Seating::LengthAt(std::uint32_t label, const ScreenPoint& centre) const {
    double length = 0.0;
    for (const ScreenPoint& anchor : AnchorsOf(label))
        length += Distance(m_problem.labels[label].form.Start(centre, anchor), anchor);
    return length;
}

std::size_t Seating::PlaceIn(std::size_t lane, std::uint32_t label) const {
    const auto& places = PlacesOf(lane);
    const auto next = std::lower_bound(places.begin(), places.end(), WishOf(label, lane));
    return static_cast<std::size_t>(next - places.begin());
}

bool Seating::Fit(const std::vector<std::size_t>& lanes) const {
    std::vector<double> loads(LaneCount(), 0.0);
    for (std::uint32_t label = 0; label < lanes.size(); ++label) {
        if (m_problem.labels[label].isPinned) continue;
        loads[lanes[label]] += LoadOf(label, lanes[label]);
        if (!Holds(lanes[label], label) || loads[lanes[label]] > Capacity(lanes[label])) return false;
    }
    return true;
}

bool Seating::FitsSwapped(std::uint32_t a, std::uint32_t b) const {
    const std::size_t laneA = LaneOf(a);
    const std::size_t laneB = LaneOf(b);
    if (laneA == laneB) return true;
    if (!Holds(laneA, b) || !Holds(laneB, a)) return false;
    const double moreA = LoadOf(b, laneA) - LoadOf(a, laneA);
    const double moreB = LoadOf(a, laneB) - LoadOf(b, laneB);
    return (moreA <= 0.0 || Load(laneA) + moreA <= Capacity(laneA)) &&
           (moreB <= 0.0 || Load(laneB) + moreB <= Capacity(laneB));
}

bool Seating::DoLeadersCross(std::uint32_t a, const ScreenPoint& atA, std::uint32_t b,
                             const ScreenPoint& atB) const {
    const auto& labels = m_problem.labels;
    for (const ScreenPoint& anchorA : AnchorsOf(a)) {
        const ScreenSegment leaderA{labels[a].form.Start(atA, anchorA), anchorA};
        for (const ScreenPoint& anchorB : AnchorsOf(b)) {
            if (DoCross(leaderA, {labels[b].form.Start(atB, anchorB), anchorB})) return true;
        }
    }
    return false;
}

void Seating::Seat(const std::vector<std::size_t>& lanes) {
    for (Row& row : m_rows) row = {};
    for (std::uint32_t label = 0; label < lanes.size(); ++label) {
        if (!m_problem.labels[label].isPinned) m_rows[lanes[label]].labels.push_back(label);
    }
    for (std::size_t lane = 0; lane < LaneCount(); ++lane) {
        const Labels sorted = SortedBy(RowOf(lane), [&](std::uint32_t label) { return WishOf(label, lane); });
        m_rows[lane].labels.clear();
        Replace(Whole(lane), KeepsOrder(lane, sorted) ? OldOrder(lane, sorted) : sorted);
    }
}

template <class Key>
Seating::Labels Seating::SortedBy(const Labels& labels, const Key& key) {
    std::vector<double> keys;
    keys.reserve(labels.size());
    for (const std::uint32_t label : labels) keys.push_back(key(label));
    const auto order = m_order.Sort(keys);
    Labels sorted(order.size());
    std::transform(order.begin(), order.end(), sorted.begin(), [&](std::uint32_t i) { return labels[i]; });
    return sorted;
}

/// The labels as they stood, those that come from elsewhere among them where they wish to be.
Seating::Labels Seating::OldOrder(std::size_t lane, const Labels& sorted) {
    Labels home;
    std::copy_if(sorted.begin(), sorted.end(), std::back_inserter(home),
                 [&](std::uint32_t label) { return IsHome(label, lane); });
    const int axis = LaneAt(lane).Along();
    home = SortedBy(home, [&](std::uint32_t label) { return m_problem.labels[label].centre[axis]; });
    Labels old = sorted;
    auto next = home.begin();
    for (std::uint32_t& label : old) {
        if (IsHome(label, lane)) label = *next++;
    }
    return old;
}

/// Whether the old order costs so little more than the new one that it is worth keeping.
bool Seating::KeepsOrder(std::size_t lane, const Labels& sorted) {
    const Labels old = OldOrder(lane, sorted);
    std::size_t moved = 0;
    for (std::size_t i = 0; i < old.size(); ++i) moved += old[i] != sorted[i];
    if (moved == 0) return false;
    const double loss = CostWith(Whole(lane), old) - CostWith(Whole(lane), sorted);
    return loss <= kOrderCost * static_cast<double>(moved);
}

Seating::Window Seating::Whole(std::size_t lane) const {
    return {lane, 0, m_rows[lane].labels.size(), LaneAt(lane).Least(), LaneAt(lane).Greatest()};
}

/// Beyond so much slack nobody has to move. In two rows all that follow change rows.
Seating::Window Seating::Around(std::size_t lane, std::size_t index, double length) const {
    const Lane& on = LaneAt(lane);
    const auto& labels = m_rows[lane].labels;
    const auto& places = m_rows[lane].places;
    Window window = Whole(lane);
    if (on.IsDouble() || m_problem.rules.pattern == LayoutPattern::Rectangle) return window;
    double slack = 0.0;
    for (std::size_t i = index; i-- > 0 && window.first == 0;) {
        if (i + 1 < labels.size()) slack += places[i + 1] - places[i] - Pitch(on, labels[i], labels[i + 1]);
        if (slack < length) continue;
        window.first = i + 1;
        window.least = places[i] + 0.5 * LengthOn(on, labels[i]) + m_problem.rules.gap;
    }
    slack = 0.0;
    for (std::size_t i = index; i < labels.size() && window.end == labels.size(); ++i) {
        if (i > 0) slack += places[i] - places[i - 1] - Pitch(on, labels[i - 1], labels[i]);
        if (slack < length || i == index) continue;
        window.end = i;
        window.greatest = places[i] - 0.5 * LengthOn(on, labels[i]) - m_problem.rules.gap;
    }
    return window;
}

double Seating::CostOf(const Window& window) const {
    double cost = 0.0;
    for (std::size_t i = window.first; i < window.end; ++i) cost += CostOf(m_rows[window.lane].labels[i]);
    return cost;
}

double Seating::Cost() const {
    double cost = 0.0;
    for (std::size_t lane = 0; lane < LaneCount(); ++lane) cost += CostOf(Whole(lane));
    return cost;
}

double Seating::Charges() const {
    double charges = 0.0;
    for (std::size_t lane = 0; lane < LaneCount(); ++lane) {
        for (const std::uint32_t label : RowOf(lane))
            charges += m_fees[CellOf(label, lane)] - SwitchCost(label, lane);
    }
    return charges;
}

void Seating::Charge(std::uint32_t label, std::size_t lane, double more) {
    m_fees[CellOf(label, lane)] += more;
    m_alone[CellOf(label, lane)].cost += more;
}

double Seating::CostWith(const Window& window, const Labels& labels) {
    m_tried += labels.size();
    return Arrange(window, labels, kFewRounds);
}

void Seating::Replace(const Window& window, const Labels& labels) {
    Row& row = m_rows[window.lane];
    const auto at = [](auto& all, std::size_t i) { return all.begin() + static_cast<std::ptrdiff_t>(i); };
    Arrange(window, labels, kManyRounds);
    row.labels.erase(at(row.labels, window.first), at(row.labels, window.end));
    row.labels.insert(at(row.labels, window.first), labels.begin(), labels.end());
    row.places.resize(std::max(row.places.size(), window.end));
    row.places.erase(at(row.places, window.first), at(row.places, window.end));
    row.places.insert(at(row.places, window.first), m_trial.places.begin(), m_trial.places.end());
    row.load = 0.0;
    for (std::size_t i = 0; i < row.labels.size(); ++i) {
        row.load += LoadOf(row.labels[i], window.lane);
        m_seats[row.labels[i]].lane = window.lane;
        m_seats[row.labels[i]].index = i;
    }
    Take({window.lane, window.first, window.first + labels.size(), window.least, window.greatest});
    row.moved = m_now;
}

void Seating::Settle(std::size_t lane, int rounds) {
    const Window window = Whole(lane);
    Arrange(window, m_rows[lane].labels, rounds);
    m_rows[lane].places = m_trial.places;
    Take(window);
}

/// Remembers what the trial found for the window's labels.
void Seating::Take(const Window& window) {
    ++m_now;
    Row& row = m_rows[window.lane];
    for (std::size_t i = window.first; i < window.end; ++i) {
        LabelSeat& seat = m_seats[row.labels[i]];
        const LabelSeat& found = m_trial.seats[i - window.first];
        const double x = found.centre.x - seat.centre.x;
        const double y = found.centre.y - seat.centre.y;
        if (x * x + y * y > kStill * kStill) seat.moved = row.moved = m_now;
        seat.centre = found.centre;
        seat.cost = found.cost;
        seat.length = found.length;
        seat.pull = found.pull;
        seat.next = found.next;
    }
}

Seating::Rows Seating::Save() const {
    Rows rows;
    rows.m_rows = m_rows;
    rows.m_seats = m_seats;
    return rows;
}

void Seating::Restore(const Rows& rows) {
    m_rows = rows.m_rows;
    m_seats = rows.m_seats;
    ++m_now;
    for (Row& row : m_rows) row.moved = m_now;
}

std::vector<ScreenPoint> Seating::Centres() const {
    std::vector<ScreenPoint> centres;
    centres.reserve(m_seats.size());
    for (std::size_t i = 0; i < m_seats.size(); ++i) {
        const LayoutLabel& label = m_problem.labels[i];
        centres.push_back(label.isPinned || LaneCount() == 0 ? label.centre : m_seats[i].centre);
    }
    return centres;
}

void Seating::Swap(std::uint32_t a, std::uint32_t b) {
    std::swap(m_seats[a].lane, m_seats[b].lane);
    std::swap(m_seats[a].index, m_seats[b].index);
    ++m_now;
    for (const std::uint32_t label : {a, b}) {
        LabelSeat& seat = m_seats[label];
        Row& row = m_rows[seat.lane];
        row.labels[seat.index] = label;
        seat.centre = CentreAt(label, seat.lane, row.places[seat.index], seat.index);
        MeasureOne(label, seat.lane, row.places[seat.index], seat);
        seat.moved = row.moved = m_now;
    }
    const double more = LoadOf(b, LaneOf(b)) - LoadOf(a, LaneOf(b));
    m_rows[LaneOf(b)].load += more;
    m_rows[LaneOf(a)].load += LoadOf(a, LaneOf(a)) - LoadOf(b, LaneOf(a));
}

/// Least squares with weights that make them lengths: from round to round the sum of the lengths falls, until
/// it is the least that the order allows.
double Seating::Arrange(const Window& window, const Labels& labels, int rounds) {
    if (m_problem.rules.pattern == LayoutPattern::Rectangle) return ArrangeEvenly(window, labels);
    Wish(window, labels);
    const auto first = Spread(window);
    m_trial.places.assign(first.begin(), first.end());
    double cost = Measure(window, labels);
    for (int round = 0; round < rounds; ++round) {
        const auto next = Spread(window);
        m_trial.places.assign(next.begin(), next.end());
        const double before = std::exchange(cost, Measure(window, labels));
        if (cost >= before * (1.0 - kEnough)) break;
    }
    return cost;
}

double Seating::ArrangeEvenly(const Window& window, const Labels& labels) {
    const Lane& lane = LaneAt(window.lane);
    double taken = 0.0;
    for (const std::uint32_t label : labels) taken += LengthOn(lane, label);
    const double gap = (window.greatest - window.least - taken) / static_cast<double>(labels.size() + 1);
    m_spaced.resize(labels.size());
    m_trial.places.clear();
    double from = window.least;
    for (const std::uint32_t label : labels) {
        const double length = LengthOn(lane, label);
        m_trial.places.push_back(from + gap + 0.5 * length);
        from += gap + length;
    }
    return Measure(window, labels);
}

/// Labels that stand on the lane know better by now than what they wished at first.
void Seating::Wish(const Window& window, const Labels& labels) {
    m_spaced.resize(labels.size());
    const Lane& lane = LaneAt(window.lane);
    for (std::size_t k = 0; k < labels.size(); ++k) {
        const LabelSeat& seat = m_seats[labels[k]];
        const bool isKnown = seat.lane == window.lane && seat.next.weight > 0.0;
        m_spaced[k] = isKnown ? seat.next : FirstWish(labels[k], window.lane, window.first + k);
        m_spaced[k].length = LengthOn(lane, labels[k]);
    }
}

/// Straight beside the anchors; far anchors mind less.
SpacedLabel Seating::FirstWish(std::uint32_t label, std::size_t lane, std::size_t index) const {
    const int axis = LaneAt(lane).Along();
    double weights = 0.0;
    double sum = 0.0;
    for (const ScreenPoint& anchor : AnchorsOf(label)) {
        const ScreenPoint centre = CentreAt(label, lane, anchor[axis], index);
        const double weight = 1.0 / std::max(std::abs(centre[1 - axis] - anchor[1 - axis]), kShortest);
        weights += weight;
        sum += weight * anchor[axis];
    }
    return {sum / weights, weights, 0.0};
}

std::span<const double> Seating::Spread(const Window& window) {
    const Lane& lane = LaneAt(window.lane);
    // In two rows labels take less than their length; at the ends they need it.
    const double over = lane.IsDouble() ? 0.5 * (m_thickest[lane.Along()] - LengthOn(lane, 0)) : 0.0;
    return m_spacer.Space(m_spaced, m_problem.rules.gap, window.least + over, window.greatest - over);
}

/// The cost of the trial's places; it also notes the wishes of the next round. In one piece, for layouts
/// spend their time in here.
[[gnu::flatten]] double Seating::Measure(const Window& window, const Labels& labels) {
    m_trial.seats.resize(labels.size());
    if (HasStands(window.lane)) return MeasureStands(window.lane, labels);
    const Lane& lane = LaneAt(window.lane);
    for (std::size_t k = 0; k < labels.size(); ++k)
        m_trial.seats[k].centre = CentreAt(labels[k], window.lane, m_trial.places[k], window.first + k);
    if (lane.IsDouble()) SpaceOuterRow(lane, labels);
    double cost = 0.0;
    for (std::size_t k = 0; k < labels.size(); ++k) {
        LabelSeat& seat = m_trial.seats[k];
        MeasureOne(labels[k], window.lane, m_trial.places[k], seat);
        m_spaced[k].wish = seat.next.wish;
        m_spaced[k].weight = seat.next.weight;
        cost += seat.cost;
    }
    return cost;
}

double Seating::MeasureStands(std::size_t lane, const Labels& labels) {
    const int axis = LaneAt(lane).Along();
    double cost = 0.0;
    for (std::size_t k = 0; k < labels.size(); ++k) {
        const Stand& stand = StandOf(labels[k], lane);
        LabelSeat& seat = m_trial.seats[k];
        const double place = m_trial.places[k];
        seat.centre = stand.Centre(place, axis);
        MeasureStand(stand, m_fees[CellOf(labels[k], lane)], place, seat);
        m_spaced[k].wish = seat.next.wish;
        m_spaced[k].weight = seat.next.weight;
        cost += seat.cost;
    }
    return cost;
}

/// Leaders to the outer row may run together on their way.
void Seating::SpaceOuterRow(const Lane& lane, const Labels& labels) {
    m_outer.clear();
    for (std::size_t k = 1; k < labels.size(); k += 2) {
        const double length = m_problem.labels[labels[k]].form.Length(lane.Along());
        m_outer.push_back({m_trial.seats[k].centre[lane.Along()], 1.0, length});
    }
    const auto places = m_spacer.Space(m_outer, m_problem.rules.gap, lane.Least(), lane.Greatest());
    for (std::size_t k = 1; k < labels.size(); k += 2) m_trial.seats[k].centre[lane.Along()] = places[k / 2];
}

/// What standing at its centre means for a label.
void Seating::MeasureOne(std::uint32_t label, std::size_t lane, double place, LabelSeat& seat) const {
    if (HasStands(lane)) return MeasureStand(StandOf(label, lane), m_fees[CellOf(label, lane)], place, seat);
    const LabelForm& form = m_problem.labels[label].form;
    const int axis = LaneAt(lane).Along();
    const auto anchors = AnchorsOf(label);
    seat.length = seat.pull = 0.0;
    double weights = 0.0;
    double along = 0.0;
    double extra = m_fees[CellOf(label, lane)];
    for (const ScreenPoint& anchor : anchors) {
        const ScreenPoint start = form.Start(seat.centre, anchor);
        const double length = Distance(start, anchor);
        const double weight = 1.0 / std::max(length, kShortest);
        along = start[axis] - anchor[axis];
        seat.length += length;
        seat.pull += weight * along;
        weights += weight;
        extra += SlantCost(label, along, start[1 - axis] - anchor[1 - axis]);
        if (!m_problem.obstacles.empty()) extra += BlockCost({start, anchor});
    }
    seat.cost = seat.length + extra;
    // One leader wishes its start above its end, whatever it weighs; most labels have one.
    seat.next = {place - (anchors.size() == 1 ? along : seat.pull / weights), weights, 0.0};
}

bool Seating::CanDouble(std::size_t lane) const {
    return m_problem.rules.rows > 1 && LaneAt(lane).IsStraight() && !LaneAt(lane).IsDouble() &&
           Thick(lane) > 0.0 && Spare(lane) >= Thick(lane) + m_problem.rules.gap;
}

void Seating::Double(std::size_t lane) { m_set.lanes[lane].Double(Thick(lane) + m_problem.rules.gap); }

void Seating::Shorten(std::size_t lane, bool atLeast, double by) {
    m_set.lanes[lane].Shorten(atLeast, by);
    MeasureAlone(lane);
}

double Seating::Spare(std::size_t lane) const { return LaneAt(lane).Spare(Thick(lane)); }

}  // namespace zrcallouts
