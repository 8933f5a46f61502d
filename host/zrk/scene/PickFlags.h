// What a pick may meet.

#pragma once

#include "du/Flags.h"

namespace zrk {

inline constexpr du::Flags PICK_ALL(0x1);
/// Parts that are only shown as phantoms are looked through.
inline constexpr du::Flags PICK_EXCLUDE_PHANTOM(0x2);

}  // namespace zrk
