#include "app/export/SheetIds.h"

#include <algorithm>
#include <set>

namespace zrsheet {
namespace {

bool IsLegal(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '.';
}

class IdTable {
public:
    std::string Take(const std::string& prefix, const std::string& wanted) {
        std::string id = wanted.starts_with(prefix) ? wanted : prefix + wanted;
        std::replace_if(
            id.begin(), id.end(), [](char c) { return !IsLegal(c); }, '_');
        std::string unique = id;
        for (int i = 2; !m_taken.insert(unique).second; ++i) unique = id + "-" + std::to_string(i);
        return unique;
    }

    std::vector<std::string> Take(const std::string& prefix, const std::vector<SheetHotspot>& hotspots) {
        std::vector<std::string> ids;
        ids.reserve(hotspots.size());
        for (const SheetHotspot& hotspot : hotspots) ids.push_back(Take(prefix, hotspot.id));
        return ids;
    }

private:
    std::set<std::string> m_taken{SheetIds::kGround};
};

}  // namespace

// The sheet's own hotspots come first: theirs are the ids that people link to, whatever else there is.
SheetIds IdsOf(const Sheet& sheet) {
    IdTable table;
    SheetIds ids;
    ids.hotspots = table.Take("", sheet.hotspots);
    for (const SheetInset& inset : sheet.insets) {
        SheetIds::Inset& taken = ids.insets.emplace_back();
        taken.group = table.Take("inset-", inset.id);
        taken.clip = table.Take("inset-", taken.group + "-clip");
        taken.hotspots = table.Take(taken.group + "-", inset.hotspots);
    }
    ids.callouts.reserve(sheet.callouts.size());
    for (const SheetCallout& callout : sheet.callouts)
        ids.callouts.push_back(table.Take("callout-", callout.id));
    return ids;
}

}  // namespace zrsheet
