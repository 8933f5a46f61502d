// What counts as a line, and how exactly lines are found.

#pragma once

namespace zrsheet {

struct LineRule {
    double creaseAngle = 32.0;  // degrees; faces that turn less are one smooth surface
    bool withHidden = false;    // covered lines too
    bool withCrossings = true;  // where parts run through each other
};

}  // namespace zrsheet
