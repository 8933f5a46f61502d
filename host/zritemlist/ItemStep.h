// That items of the list came, went or changed, as a step that can be undone.

#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "du/SmartPtr.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/operation/OperationStep.h"

namespace zritemlist {

class ItemStep : public zrk::OperationStep {
public:
    /// An item before and after; empty: there was, or is, none.
    struct Change {
        unsigned id = 0;
        std::optional<zrk::illustration::ItemsList::Item> before;
        std::optional<zrk::illustration::ItemsList::Item> after;
    };

    using Lasts = zrk::illustration::ItemNumbers::Lasts;

    /// `before`: the last numbers of the levels on which the changes take or free numbers; the step finds
    /// those after.
    ItemStep(du::SmartPtr<zrk::illustration::ItemsList> items, std::vector<Change> changes, Lasts before);
    ~ItemStep() override;

    const char* GetDebugClassName() const override { return "zritemlist::ItemStep"; }
    void Undo() override { Apply(&Change::after, &Change::before, m_before); }
    void Redo() override { Apply(&Change::before, &Change::after, m_after); }

private:
    using State = std::optional<zrk::illustration::ItemsList::Item> Change::*;

    void Apply(State from, State to, const Lasts& lasts);

    const du::SmartPtr<zrk::illustration::ItemsList> m_items;
    const std::vector<Change> m_changes;
    const Lasts m_before;
    const Lasts m_after;
};

}  // namespace zritemlist
