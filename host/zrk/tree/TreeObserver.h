// Told about the world's tree.

#pragma once

#include "zrk/tree/BaseTreeObserver.h"

namespace zrk {

class TreeObserver : public BaseTreeObserver {
public:
    ~TreeObserver() override;
};

}  // namespace zrk
