// The ids of a sheet's elements: what other files refer to, so that all exporters must give the same.

#pragma once

#include <set>
#include <string>
#include <vector>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// Gives out ids of letters, digits, '-', '_' and '.', no two alike.
class IdTable {
public:
    /// Of what the picture lies on; given out from the start.
    static constexpr const char* kGround = "ground";

    std::string Take(const std::string& prefix, const std::string& wanted);

private:
    std::set<std::string> m_taken{kGround};
};

/// One for each hotspot. Those of the sheet itself come without prefix, before anything else is taken.
[[nodiscard]] std::vector<std::string> HotspotIds(const std::vector<SheetHotspot>& hotspots,
                                                  const std::string& prefix, IdTable& ids);

}  // namespace zrsheet
