// The simplest part.

#pragma once

#include <vector>

#include "du/SmartPtr.h"
#include "zrg/Shape.h"

namespace zrtest {

/// A cube from (low, low, low) to (high, high, high).
inline du::SmartPtr<zrg::Shape> MakeCube(float low, float high) {
    std::vector<float> positions;
    for (unsigned corner = 0; corner < 8; ++corner) {
        for (unsigned axis = 0; axis < 3; ++axis)
            positions.push_back((corner >> axis & 1U) != 0 ? high : low);
    }
    return new zrg::Shape(positions, {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                                      2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5});
}

}  // namespace zrtest
