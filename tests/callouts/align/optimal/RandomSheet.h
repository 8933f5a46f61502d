// Sheets to lay out: a model's box on a page, with anchors in it.

#pragma once

#include <cstddef>
#include <random>

#include "callouts/align/optimal/LayoutProblem.h"

namespace zrcallouts {

/// What a sheet is made of; the same kind and seed make the same sheet with any compiler.
struct SheetKind {
    std::size_t labels = 20;
    double spread = 1.0;   // of the anchors, of the model's box; small ones crowd somewhere in it
    bool areAlike = true;  // labels are circles of one size, else capsules and larger ones too
    double margin = 90.0;  // of the page around the model
    LayoutPattern pattern = LayoutPattern::Sides;
};

/// From 0 to 1.
double Random(std::mt19937& random);

LayoutProblem MakeSheet(const SheetKind& kind, unsigned seed);

}  // namespace zrcallouts
