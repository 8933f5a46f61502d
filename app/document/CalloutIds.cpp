#include "app/document/CalloutIds.h"

#include <unordered_map>

namespace zrsheet {

std::vector<std::string> CalloutIds(const std::vector<du::SmartPtr<zrannotations::Callout>>& callouts) {
    std::unordered_map<unsigned, int> uses;  // item 0: none, for ids start with 1
    std::vector<std::string> ids;
    ids.reserve(callouts.size());
    for (const auto& callout : callouts) {
        unsigned item = 0;
        const bool hasItem = callout->GetItemId(item);
        const int use = ++uses[hasItem ? item : 0];
        std::string id = "callout-" + (hasItem ? std::to_string(item) : "text-" + std::to_string(use));
        if (hasItem && use > 1) id += "-" + std::to_string(use);
        ids.push_back(std::move(id));
    }
    return ids;
}

}  // namespace zrsheet
