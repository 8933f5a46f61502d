// What an illustration needs when callouts are created again: nothing twice, and nothing of the author's
// lost.

#pragma once

#include <set>
#include <vector>

#include "app/document/Document.h"

namespace zrsheet {

/// Requires: a transaction of the document's scene is open. One thread.
class CalloutUpdate {
public:
    using CalloutPtr = Document::CalloutPtr;
    using SbomPtr = Document::SbomPtr;
    using ShapePtr = Document::ShapePtr;

    explicit CalloutUpdate(const Document& document) : m_document(document) {}

    /// Of these listed instances those for which the engine is to make callouts. Where a part has one balloon
    /// for its instances, that gains leaders to the others that are shown. A template without item asks for
    /// callouts of its own, beside those of other templates. O(instances + leaders of their items).
    [[nodiscard]] std::vector<SbomPtr> Missing(const std::vector<SbomPtr>& instances) const;
    /// Of these symbols those that no callout leads to.
    [[nodiscard]] std::vector<ShapePtr> Missing(const std::vector<ShapePtr>& symbols) const;

    /// Callouts that would be made anew just so: neither combined nor free nor on a symbol, with neither
    /// text, style nor place of the author's own. No instances: of all that is there.
    [[nodiscard]] std::vector<CalloutPtr> Automatic(const std::vector<SbomPtr>& instances) const;
    /// Callouts of which every part is gone from the scene, or the item from the list.
    [[nodiscard]] std::vector<CalloutPtr> Orphaned() const;

private:
    [[nodiscard]] std::vector<SbomPtr> MissingOfTemplate(const std::vector<SbomPtr>& instances) const;
    [[nodiscard]] bool IsShown(const SbomPtr& instance) const;
    [[nodiscard]] bool IsOrphaned(const zrannotations::Callout& callout) const;

    const Document& m_document;
};

}  // namespace zrsheet
