// What the open document hangs from.

#pragma once

#include "zrk/object/Object.h"

namespace zrk {

class MultiRootContainer : public Object {
public:
    ~MultiRootContainer() override;
};

}  // namespace zrk
