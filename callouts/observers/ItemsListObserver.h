// Tells the engine when an item of the item list goes or changes.

#pragma once

#include <memory>
#include <set>

#include "callouts/observers/EngineHandle.h"
#include "zrk/illustration/ItemsListObserver.h"

namespace zrcallouts {

class ItemsListObserver : public zrk::illustration::ItemsListObserver {
public:
    explicit ItemsListObserver(std::shared_ptr<EngineHandle> handle) : m_owner(std::move(handle)) {}
    ~ItemsListObserver() override;

    /// A new item has no callouts yet.
    void OnItemAdded(unsigned int) override {}
    void OnItemRemoved(unsigned int itemId) override;
    void OnItemContentChanged(
        unsigned int itemId, const std::set<du::SmartPtr<zrk::illustration::SbomInstance>>& added,
        const std::set<du::SmartPtr<zrk::illustration::SbomInstance>>& removed) override;

    EngineLink m_owner;
};

}  // namespace zrcallouts
