#include "app/export/IdTable.h"

#include <algorithm>

namespace zrsheet {
namespace {

bool IsLegal(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '.';
}

}  // namespace

std::string IdTable::Take(const std::string& prefix, const std::string& wanted) {
    std::string id = wanted.starts_with(prefix) ? wanted : prefix + wanted;
    std::replace_if(
        id.begin(), id.end(), [](char c) { return !IsLegal(c); }, '_');
    std::string unique = id;
    for (int i = 2; !m_taken.insert(unique).second; ++i) unique = id + "-" + std::to_string(i);
    return unique;
}

std::vector<std::string> HotspotIds(const std::vector<SheetHotspot>& hotspots, const std::string& prefix,
                                    IdTable& ids) {
    std::vector<std::string> result;
    result.reserve(hotspots.size());
    for (const SheetHotspot& hotspot : hotspots) result.push_back(ids.Take(prefix, hotspot.id));
    return result;
}

}  // namespace zrsheet
