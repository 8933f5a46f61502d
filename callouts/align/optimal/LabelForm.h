// How large a label is on the screen, and where its leaders leave it.

#pragma once

#include <algorithm>

#include "callouts/ZrcalloutsExport.h"
#include "callouts/align/optimal/ScreenGeometry.h"
#include "zrannotations/CalloutStyle.h"

namespace zrcallouts {

struct ZRCALLOUTS_API LabelForm {
    double width = 26.0;  // pixels, as everything here; at least the height of one balloon unless bare text
    double height = 26.0;
    zrannotations::BalloonShape shape = zrannotations::BalloonShape::Round;
    unsigned stacked = 1;  // so many balloons share the height, one below the other

    [[nodiscard]] double Length(int axis) const { return axis == 0 ? width : height; }
    [[nodiscard]] ScreenBox BoxAt(const ScreenPoint& centre) const;
    /// Where the leader to `anchor` comes from: the nearest point of a balloon's middle line, or of the line
    /// under bare text. A leader is drawn from where that way leaves the balloon.
    [[nodiscard]] ScreenPoint Start(const ScreenPoint& centre, const ScreenPoint& anchor) const {
        if (!IsPlain()) return FarStart(centre, anchor);
        return {std::clamp(anchor.x, centre.x - Reach(), centre.x + Reach()), centre.y};
    }
    /// Whether it is one balloon: leaders then start within `Reach` of its middle, on its middle line.
    [[nodiscard]] bool IsPlain() const { return stacked <= 1 && shape != zrannotations::BalloonShape::None; }
    [[nodiscard]] double Reach() const { return std::max(0.5 * (width - height), 0.0); }
    /// Whether a foreign leader comes nearer to the label than `clearance`.
    [[nodiscard]] bool IsTouched(const ScreenPoint& centre, const ScreenSegment& leader,
                                 double clearance) const;
    /// How far aside of its anchor a label may stand, for each pixel across, before its leader runs into a
    /// neighbour of its form that is `gap` away.
    [[nodiscard]] double Slant(double gap) const;

private:
    [[nodiscard]] ScreenPoint FarStart(const ScreenPoint& centre, const ScreenPoint& anchor) const;
};

}  // namespace zrcallouts
