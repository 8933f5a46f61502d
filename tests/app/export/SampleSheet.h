// A small finished sheet.

#pragma once

#include "app/sheet/Sheet.h"

namespace zrsheet::test {

/// Two callouts, one of them a capsule with a covered leader, two items, a table, a picture
/// of one grey with a glass of another over it.
Sheet SampleSheet();

}  // namespace zrsheet::test
