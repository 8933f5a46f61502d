// What the parts of the scene are called on the sheet.

#pragma once

#include <map>

#include "app/document/Document.h"
#include "app/sheet/Sheet.h"

namespace zrsheet {

/// Of the document as it stands when this is made; it must outlive it. O(parts and items).
class PartIndex {
public:
    explicit PartIndex(const Document& document);

    /// An id names the item and counts the item's parts in the order of the structure, seen or not. What is
    /// no part of the model is a symbol, called by its own name.
    [[nodiscard]] SheetPart Of(const zrk::ShapeInstance& part) const;

private:
    bool FindItem(ProductModel::SbomPtr instance, unsigned& id) const;

    const Document& m_document;
    std::map<const zrk::Instance*, SheetPart> m_parts;  // only looked up, never walked
};

}  // namespace zrsheet
