// Which parts and assemblies of the product are items of the list.

#pragma once

#include <string>
#include <vector>

#include "app/document/Document.h"

namespace zrsheet {

enum class ItemLevel {
    Leaves,  // every part, however deep
    Top,     // what the product is put together from: the parts and assemblies directly below it
    All,     // assemblies and all that is in them
};

struct ItemRules {
    ItemLevel level = ItemLevel::Leaves;
    bool skipsHidden = false;                    // what shows nothing in the picture
    std::vector<std::string> skippedNames;       // patterns (see MatchesGlob)
    std::vector<std::string> skippedProperties;  // "NAME=PATTERN"

    /// "hidden", a pattern of names, or "NAME=PATTERN" of a property.
    void Skip(const std::string& rule);
    /// Whether they say more than that every part is an item.
    [[nodiscard]] bool IsAny() const;
};

/// Lists what is missing and makes items take part in numbering, or not, as the rules say. Items that the
/// author made stay as they are, and nothing in a kit takes part. Each change can be undone. O(instances x
/// patterns).
void UpdateItems(Document& document, const ItemRules& rules);

}  // namespace zrsheet
