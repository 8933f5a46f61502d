// The forms of balloons: how large each is for its text, and where its leaders begin. Page pixels.

#pragma once

#include <string>
#include <vector>

#include "app/sheet/Sheet.h"
#include "callouts/align/optimal/LabelForm.h"

namespace zrsheet {

struct BalloonSize {
    double width = 0.0;
    double height = 0.0;
};

/// What the author chose for the callout, else for the document, else as always: round, and split where the
/// label has lines.
[[nodiscard]] CalloutLook LookOf(const zrannotations::CalloutStyle& own,
                                 const zrannotations::CalloutStyle& ofDocument, const SheetStyle& style,
                                 const std::string& label);

/// The lines of a label as the shape sets them: a split balloon has two at most.
[[nodiscard]] std::vector<std::string> LabelLines(const std::string& label,
                                                  zrannotations::BalloonShape shape);
/// How far a line's middle lies below the balloon's.
[[nodiscard]] double LineOffset(const CalloutLook& look, std::size_t line, std::size_t lines);
/// As much as the text needs.
[[nodiscard]] BalloonSize SizeOf(const CalloutLook& look, const std::vector<std::string>& lines);
/// Of a balloon for each label, all as large as the largest.
[[nodiscard]] BalloonSize SizeOfStack(const CalloutLook& look, const std::vector<std::string>& labels);

/// The corners in their order; none for round balloons and bare text.
[[nodiscard]] std::vector<PagePoint> CornersOf(zrannotations::BalloonShape shape, const PageBox& box);

/// Its balloons from the top, which share the box's height.
[[nodiscard]] std::vector<PageBox> BalloonsOf(const PageBox& stack, std::size_t balloons);

/// Where the line to `anchor` leaves the label that fills the box, or the nearest of its balloons; `anchor`
/// itself when that lies inside.
[[nodiscard]] PagePoint LeaderEnd(const zrcallouts::LabelForm& form, const PageBox& box,
                                  const PagePoint& anchor);

}  // namespace zrsheet
