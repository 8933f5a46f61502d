// From where the model is seen.

#pragma once

#include <span>
#include <string>
#include <string_view>

#include "dg/DVec3.h"

namespace zrsheet {

/// Directions of the model's space, in which Y points up and the front looks towards Z.
struct ViewDirection {
    dg::DVec3 look{-1.0, -0.8, -1.25};  // away from the eye
    dg::DVec3 up{0.0, 1.0, 0.0};
};

/// The names that ParseViewDirection knows, for help texts.
[[nodiscard]] std::span<const std::string_view> ViewNames();

/// A known name, or the direction away from the eye as "x,y,z". Throws UserError.
[[nodiscard]] ViewDirection ParseViewDirection(const std::string& text);

}  // namespace zrsheet
