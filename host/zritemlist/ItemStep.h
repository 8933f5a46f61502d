// That an item was added or deleted, as a step that can be undone.

#pragma once

#include "du/SmartPtr.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/operation/OperationStep.h"

namespace zritemlist {

class ItemStep : public zrk::OperationStep {
public:
    enum class Change { kAdded, kDeleted };

    ItemStep(du::SmartPtr<zrk::illustration::ItemsList> items, unsigned id,
             zrk::illustration::ItemsList::Item item, Change change);
    ~ItemStep() override;

    const char* GetDebugClassName() const override { return "zritemlist::ItemStep"; }
    void Undo() override { Apply(m_change == Change::kDeleted); }
    void Redo() override { Apply(m_change == Change::kAdded); }

private:
    void Apply(bool add);

    const du::SmartPtr<zrk::illustration::ItemsList> m_items;
    const unsigned m_id;
    zrk::illustration::ItemsList::Item m_item;  // as it was when it last left the list
    const Change m_change;
};

}  // namespace zritemlist
