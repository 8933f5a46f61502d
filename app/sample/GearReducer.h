// A two-stage gear reducer, drawn apart: housing open, shafts lifted out, covers pulled off. The
// application's own sample.

#pragma once

#include "app/import/Assembly.h"

namespace zrsheet {

/// The same every time. Metres, Y upwards. Every part's surface is closed and faces outwards.
[[nodiscard]] Assembly MakeGearReducer();

}  // namespace zrsheet
