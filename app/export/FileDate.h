// The date that files tell they were made at.

#pragma once

#include <ctime>

namespace zrsheet {

/// In UTC: what the environment's SOURCE_DATE_EPOCH says, as those set it who want to know files again by
/// their bytes; else always the same one.
[[nodiscard]] std::tm FileDate();

}  // namespace zrsheet
