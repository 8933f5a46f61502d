// The world's tree of engineering instances.

#pragma once

#include "zrk/tree/BaseTree.h"

namespace zrk {

class Tree : public BaseTree {
public:
    ~Tree() override;

    /// `first`: before those already registered. Trees tell their observers in the order of registration
    /// only, so that asking for it changes nothing.
    void RegisterObserver(const du::SmartPtr<TreeObserver>& observer, bool first);
};

}  // namespace zrk
