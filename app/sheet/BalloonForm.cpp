#include "app/sheet/BalloonForm.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "app/render/TextMetrics.h"

namespace zrsheet {
namespace {

using zrannotations::BalloonShape;

// In font sizes.
constexpr double kLinePitch = 1.15;
constexpr double kSplitPitch = 1.3;  // leaves room for the line between
/// What stands around the text, both sides together.
struct Padding {
    double width;
    double height;  // and the line itself
};
constexpr Padding kRoundPadding{0.7, 2.0};
constexpr Padding kHexagonPadding{0.7, 2.0};
constexpr Padding kBoxPadding{0.95, 1.8};
constexpr Padding kBarePadding{0.4, 1.5};

// Of its height: a regular hexagon when the text is short.
constexpr double kHexagonPoint = 0.288675;
constexpr double kBareRise = 0.12;  // of bare text above the middle of its box, in font sizes

const Padding& PaddingOf(BalloonShape shape) {
    if (shape == BalloonShape::Hexagon) return kHexagonPadding;
    if (shape == BalloonShape::Box) return kBoxPadding;
    return shape == BalloonShape::None ? kBarePadding : kRoundPadding;
}

bool IsRound(BalloonShape shape) { return shape == BalloonShape::Round || shape == BalloonShape::Split; }

/// How far the outline stands in from the box's ends at that distance from the middle line.
double InsetAt(BalloonShape shape, double height, double distance) {
    if (shape == BalloonShape::Hexagon) return 2.0 * kHexagonPoint * distance;
    if (!IsRound(shape)) return 0.0;
    const double radius = 0.5 * height;
    return radius - std::sqrt(std::max(radius * radius - distance * distance, 0.0));
}

double LeastWidth(BalloonShape shape, double height) {
    if (shape == BalloonShape::None) return 0.0;
    return shape == BalloonShape::Hexagon ? std::round(4.0 * kHexagonPoint * height) : height;
}

PagePoint TowardsCircle(const PagePoint& centre, double radius, const PagePoint& to) {
    const double distance = std::hypot(to.x - centre.x, to.y - centre.y);
    if (distance <= radius) return to;
    return {centre.x + (to.x - centre.x) * radius / distance,
            centre.y + (to.y - centre.y) * radius / distance};
}

/// Requires: `from` lies inside the corners, which are convex.
PagePoint TowardsCorners(const std::vector<PagePoint>& corners, const PagePoint& from, const PagePoint& to) {
    double share = 1.0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const PagePoint& a = corners[i];
        const PagePoint& b = corners[(i + 1) % corners.size()];
        const auto outside = [&](const PagePoint& p) {
            return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
        };
        const double before = outside(from);
        const double after = outside(to);
        if (before * after < 0.0) share = std::min(share, before / (before - after));
    }
    return {from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)};
}

}  // namespace

CalloutLook LookOf(const zrannotations::CalloutStyle& own, const zrannotations::CalloutStyle& ofDocument,
                   const SheetStyle& style, const std::string& label) {
    const bool hasLines = label.find('\n') != std::string::npos;
    const auto usual = hasLines ? BalloonShape::Split : BalloonShape::Round;
    return {own.shape.value_or(ofDocument.shape.value_or(usual)),
            own.fontSize.value_or(ofDocument.fontSize.value_or(style.fontSize)),
            own.lineWidth.value_or(ofDocument.lineWidth.value_or(style.balloonWidth))};
}

std::vector<std::string> LabelLines(const std::string& label, BalloonShape shape) {
    std::vector<std::string> lines;
    std::istringstream stream(label);
    for (std::string line; std::getline(stream, line);) {
        const bool isMore = shape == BalloonShape::Split && lines.size() == 2;
        if (isMore) {
            lines.back() += ' ' + line;
        } else {
            lines.push_back(line);
        }
    }
    if (lines.empty()) lines.emplace_back();
    return lines;
}

double LineOffset(const CalloutLook& look, std::size_t line, std::size_t lines) {
    const double pitch = look.shape == BalloonShape::Split ? kSplitPitch : kLinePitch;
    const double rise = look.shape == BalloonShape::None ? kBareRise : 0.0;
    return look.fontSize *
           ((static_cast<double>(line) - 0.5 * static_cast<double>(lines - 1)) * pitch - rise);
}

BalloonSize SizeOf(const CalloutLook& look, const std::vector<std::string>& lines) {
    const Padding& padding = PaddingOf(look.shape);
    const double more = static_cast<double>(lines.size() - 1) * kLinePitch;
    const double height = std::round((padding.height + more) * look.fontSize);
    double width = LeastWidth(look.shape, height);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const double reach = std::abs(LineOffset(look, i, lines.size())) + 0.5 * CapHeight(look.fontSize);
        // The padding does for a single line in a round balloon.
        const bool isAlone = lines.size() == 1 && IsRound(look.shape);
        const double inset = isAlone ? 0.0 : InsetAt(look.shape, height, reach);
        const double text = TextWidth(lines[i], look.fontSize);
        width = std::max(width, std::round(text + padding.width * look.fontSize + 2.0 * inset));
    }
    return {width, height};
}

BalloonSize SizeOfStack(const CalloutLook& look, const std::vector<std::string>& labels) {
    BalloonSize largest;
    for (const std::string& label : labels) {
        const BalloonSize size = SizeOf(look, LabelLines(label, look.shape));
        largest = {std::max(largest.width, size.width), std::max(largest.height, size.height)};
    }
    return {largest.width, largest.height * static_cast<double>(labels.size())};
}

std::vector<PageBox> BalloonsOf(const PageBox& stack, std::size_t balloons) {
    const double height = (stack.y1 - stack.y0) / static_cast<double>(balloons);
    std::vector<PageBox> boxes;
    boxes.reserve(balloons);
    for (std::size_t i = 0; i < balloons; ++i) {
        const double top = stack.y0 + static_cast<double>(i) * height;
        boxes.push_back({stack.x0, top, stack.x1, top + height});
    }
    return boxes;
}

std::vector<PagePoint> CornersOf(BalloonShape shape, const PageBox& box) {
    if (shape == BalloonShape::Box)
        return {{box.x0, box.y0}, {box.x1, box.y0}, {box.x1, box.y1}, {box.x0, box.y1}};
    if (shape != BalloonShape::Hexagon) return {};
    const double point = kHexagonPoint * (box.y1 - box.y0);
    const double middle = 0.5 * (box.y0 + box.y1);
    return {{box.x0, middle}, {box.x0 + point, box.y0}, {box.x1 - point, box.y0},
            {box.x1, middle}, {box.x1 - point, box.y1}, {box.x0 + point, box.y1}};
}

PagePoint LeaderEnd(const zrcallouts::LabelForm& form, const PageBox& box, const PagePoint& anchor) {
    const zrcallouts::ScreenPoint centre{0.5 * (box.x0 + box.x1), 0.5 * (box.y0 + box.y1)};
    const zrcallouts::ScreenPoint from = form.Start(centre, {anchor.x, anchor.y});
    const PagePoint start{from.x, from.y};
    if (form.shape == BalloonShape::None) return start;
    const double radius = 0.5 * form.height / form.stacked;
    if (IsRound(form.shape)) return TowardsCircle(start, radius, anchor);
    return TowardsCorners(CornersOf(form.shape, {box.x0, start.y - radius, box.x1, start.y + radius}), start,
                          anchor);
}

}  // namespace zrsheet
