// How a callout is drawn, as far as its author chose.

#pragma once

#include <optional>

namespace zrannotations {

enum class BalloonShape {
    Round,    // a circle, or a capsule as wide as its text asks for
    Hexagon,  // with points at both sides
    Box,
    None,   // underlined text alone
    Split,  // round, with a line between the first line of the text and the others
};

/// What a leader ends with on its part.
enum class Terminator {
    Auto,  // an arrow where it ends on an edge or outline that the view shows, else a dot
    Dot,
    Arrow,
    None,
};

/// What is not set is as elsewhere: as the document has it for a callout, as always for a document.
struct CalloutStyle {
    std::optional<BalloonShape> shape;
    std::optional<Terminator> terminator;
    std::optional<double> fontSize;   // pixels of the page
    std::optional<double> lineWidth;  // of the balloon, in pixels of the page; leaders go with it
    std::optional<bool> stacked{};    // a combined callout: a balloon for each member, one below the other

    friend bool operator==(const CalloutStyle&, const CalloutStyle&) = default;
};

}  // namespace zrannotations
