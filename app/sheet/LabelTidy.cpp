#include "app/sheet/LabelTidy.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "app/sheet/BalloonForm.h"
#include "app/sheet/SideChoice.h"

namespace zrsheet {
namespace {

constexpr double kGap = 8.0;             // between balloons
constexpr double kFrameDistance = 17.0;  // from the model to balloons
constexpr double kInset = 20.0;          // of balloons from the figure's ends
constexpr int kMostSweeps = 40;          // of uncrossing; in practice a handful
constexpr int kMostRounds = 40;          // of uncrossing and placing; in practice two

/// The balloons of one side; `along` is the axis that the side runs along, 0 for x and 1 for y.
struct Side {
    int along = 1;
    double outward = 1.0;  // the direction away from the model on the other axis
    double edge = 0.0;     // where the model ends there
    double least = 0.0;
    double greatest = 0.0;
    std::vector<Balloon*> balloons;
};

double& Coordinate(PagePoint& point, int axis) { return axis == 0 ? point.x : point.y; }
double Coordinate(const PagePoint& point, int axis) { return axis == 0 ? point.x : point.y; }
double Length(const Balloon& balloon, int axis) { return axis == 0 ? balloon.width : balloon.height; }

/// Neighbours that share one place until the next lies far enough.
struct Cluster {
    double sum = 0.0;     // of the wished places, less what lies before each in the cluster
    double offset = 0.0;  // from the cluster's start to the middle of the next balloon
    std::size_t count = 0;

    double Start() const { return sum / static_cast<double>(count); }
};

double Distance(const Side& side, std::size_t i) {
    return 0.5 * (Length(*side.balloons[i - 1], side.along) + Length(*side.balloons[i], side.along)) + kGap;
}

/// The room from the first balloon's middle to the last one's when all touch.
double TightLength(const Side& side) {
    double length = 0.0;
    for (std::size_t i = 1; i < side.balloons.size(); ++i) length += Distance(side, i);
    return length;
}

/// The places, in order and apart, whose squared distances to the wished ones add up to least: clusters that
/// would overlap are merged until none does.
std::vector<double> Spread(const Side& side) {
    std::vector<Cluster> clusters;
    std::vector<double> before;  // the distance from the start of its cluster for each balloon
    for (std::size_t i = 0; i < side.balloons.size(); ++i) {
        clusters.push_back({Coordinate(side.balloons[i]->anchor, side.along), 0.0, 1});
        while (clusters.size() > 1) {
            Cluster& left = clusters[clusters.size() - 2];
            const Cluster right = clusters.back();
            const double gap = Distance(side, i + 1 - right.count);
            if (left.Start() + left.offset + gap <= right.Start()) break;
            const double shift = left.offset + gap;
            left.sum += right.sum - shift * static_cast<double>(right.count);
            left.offset = shift + right.offset;
            left.count += right.count;
            clusters.pop_back();
        }
    }
    std::vector<double> places;
    for (const Cluster& cluster : clusters) {
        // Clusters stay in order when they are held inside the side's ends.
        const double last = std::max(side.greatest - cluster.offset, side.least);
        double place = std::clamp(cluster.Start(), side.least, last);
        for (std::size_t k = 0; k < cluster.count; ++k) {
            if (k > 0) place += Distance(side, places.size());
            places.push_back(place);
        }
    }
    return places;
}

/// What the clamping at the ends pushed together is pushed apart, from the near end on and back from the far
/// one.
void KeepApart(const Side& side, std::vector<double>& places) {
    for (std::size_t i = 1; i < places.size(); ++i)
        places[i] = std::max(places[i], places[i - 1] + Distance(side, i));
    if (places.empty() || places.back() <= side.greatest) return;
    places.back() = std::max(side.greatest, side.least + TightLength(side));
    for (std::size_t i = places.size() - 1; i > 0; --i) {
        places[i - 1] = std::min(places[i - 1], places[i] - Distance(side, i));
    }
}

double Turn(const PagePoint& a, const PagePoint& b, const PagePoint& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

PagePoint StartOf(const Balloon& balloon) {
    const PageBox box = NearestBalloon(balloon.Box(), balloon.stacked, balloon.anchor);
    return LeaderStart(balloon.shape, box, balloon.anchor);
}

bool DoLeadersCross(const Balloon& a, const Balloon& b) {
    const PagePoint p = StartOf(a);
    const PagePoint q = StartOf(b);
    return Turn(p, a.anchor, q) * Turn(p, a.anchor, b.anchor) < 0.0 &&
           Turn(q, b.anchor, p) * Turn(q, b.anchor, a.anchor) < 0.0;
}

void Place(Side& side) {
    std::vector<double> places = Spread(side);
    KeepApart(side, places);
    for (std::size_t i = 0; i < places.size(); ++i)
        Coordinate(side.balloons[i]->centre, side.along) = places[i];
}

/// Two crossing leaders swap their balloons, which shortens both; so the sweeps come to an end. Returns
/// whether any did.
bool Uncross(Side& side) {
    bool hasSwapped = false;
    for (int sweep = 0; sweep < kMostSweeps; ++sweep) {
        bool isAnySwapped = false;
        for (std::size_t i = 0; i < side.balloons.size(); ++i) {
            for (std::size_t j = i + 1; j < side.balloons.size(); ++j) {
                if (!DoLeadersCross(*side.balloons[i], *side.balloons[j])) continue;
                std::swap(Coordinate(side.balloons[i]->centre, side.along),
                          Coordinate(side.balloons[j]->centre, side.along));
                std::swap(side.balloons[i], side.balloons[j]);
                isAnySwapped = true;
            }
        }
        if (!isAnySwapped) break;
        hasSwapped = true;
    }
    return hasSwapped;
}

void Tidy(Side& side) {
    std::stable_sort(side.balloons.begin(), side.balloons.end(), [&side](const Balloon* a, const Balloon* b) {
        return Coordinate(a->anchor, side.along) < Coordinate(b->anchor, side.along);
    });
    Place(side);
    // Balloons of other widths in another order stand elsewhere, where leaders may cross anew.
    for (int round = 0; round < kMostRounds && Uncross(side); ++round) Place(side);
}

Side SideAt(BalloonSide place, const PageBox& model, const PageBox& figure) {
    // The upright sides have the corners to themselves.
    const double top = figure.y0 + kInset;
    const double bottom = figure.y1 - kInset;
    if (place == kLeftSide) return {1, -1.0, model.x0, top, bottom, {}};
    if (place == kRightSide) return {1, 1.0, model.x1, top, bottom, {}};
    if (place == kTopSide) return {0, -1.0, model.y0, model.x0, model.x1, {}};
    return {0, 1.0, model.y1, model.x0, model.x1, {}};
}

/// Takes the balloons to the side, where they begin in one line however large they are.
void LineUp(Side& side) {
    for (Balloon* balloon : side.balloons) {
        const double distance = kFrameDistance + 0.5 * Length(*balloon, 1 - side.along);
        Coordinate(balloon->centre, 1 - side.along) = side.edge + side.outward * distance;
    }
}

bool IsBeside(const Balloon& a, const Balloon& b) {
    return std::abs(a.centre.x - b.centre.x) < 0.5 * (a.width + b.width) + kGap;
}

/// A row that reaches over a column beside it, because it has too many balloons or wide ones, lines up beyond
/// the column.
void ClearColumn(Side& row, const Side& column) {
    const double edge = row.edge;
    for (const Balloon* balloon : column.balloons) {
        const bool isReached =
            std::any_of(row.balloons.begin(), row.balloons.end(),
                        [balloon](const Balloon* own) { return IsBeside(*own, *balloon); });
        const double end = balloon->centre.y + row.outward * 0.5 * balloon->height;
        if (isReached && (end - row.edge) * row.outward > 0.0) row.edge = end;
    }
    if (row.edge == edge) return;
    LineUp(row);
    Tidy(row);
}

}  // namespace

void TidyBalloons(std::vector<Balloon>& balloons, const PageBox& model, const PageBox& figure) {
    std::array<Side, kBalloonSides> sides;
    std::array<double, kBalloonSides> rooms{};
    for (const BalloonSide place : {kLeftSide, kRightSide, kTopSide, kBottomSide}) {
        sides[place] = SideAt(place, model, figure);
        rooms[place] = sides[place].greatest - sides[place].least;
    }
    const std::vector<BalloonSide> places = ChooseSides(balloons, model, rooms, kGap);
    for (std::size_t i = 0; i < balloons.size(); ++i) {
        sides[places[i]].balloons.push_back(&balloons[i]);
    }
    for (Side& side : sides) {
        LineUp(side);
        Tidy(side);
    }
    for (const BalloonSide row : {kTopSide, kBottomSide}) {
        for (const BalloonSide column : {kLeftSide, kRightSide}) ClearColumn(sides[row], sides[column]);
    }
}

}  // namespace zrsheet
