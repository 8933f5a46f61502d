// Told about an item list.

#pragma once

#include <set>

#include "du/SmartPtr.h"
#include "zrk/object/Observer.h"

namespace zrk::illustration {

class SbomInstance;

class ItemsListObserver : public zrk::Observer {
public:
    ~ItemsListObserver() override;

    virtual void OnItemAdded(unsigned int) {}
    virtual void OnItemRemoved(unsigned int) {}
    /// The item's label, tag, quantity or instances changed; the sets tell which instances came and went.
    virtual void OnItemContentChanged(unsigned int, const std::set<du::SmartPtr<SbomInstance>>&,
                                      const std::set<du::SmartPtr<SbomInstance>>&) {}
    virtual void OnListSettingsChanged() {}
    virtual void OnListCleared() {}
    virtual void OnStandardItemsListChanged() {}
};

}  // namespace zrk::illustration
