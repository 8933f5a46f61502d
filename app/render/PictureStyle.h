// How the illustration of a model is drawn.

#pragma once

#include <vector>

#include "dg/Color.h"

namespace zrsheet {

/// Line widths are in page pixels and count for parts that are large on the picture; small parts get finer
/// lines.
struct PictureStyle {
    int samplesPerPixel = 3;    // of the picture, along each axis
    double scale = 1.0;         // pixels of the picture to a page pixel, along each axis
    double outlineWidth = 2.3;  // the model against the ground
    double overlapWidth =
        1.7;  // a part before another that lies clearly behind it, or before a further piece of itself
    double contactWidth = 1.25;                   // two parts that touch
    double creaseWidth = 0.9;                     // two faces of a part
    double creaseAngle = 32.0;                    // degrees; faces that turn less are one smooth surface
    double ink = 0.06;                            // tone of the lines: 0 is black, 1 white
    double darkestTone = 0.78;                    // of a surface turned away from the light
    double brightestTone = 0.985;                 // of a surface that faces the light
    std::vector<dg::Color> colors;                // of each placement of the scene; empty: all are white
    double colorStrength = 0.3;                   // 0: parts stay white, 1: as loud as their colours
    dg::Color groundTop{1.0F, 1.0F, 1.0F, 1.0F};  // the ground's colour goes evenly from the one to the other
    dg::Color groundBottom{1.0F, 1.0F, 1.0F, 1.0F};
};

}  // namespace zrsheet
