// An event that a caller hands in to hear of progress and completion.

#pragma once

#include "zrk/event/BaseAsyncEvent.h"

namespace zrk {

class AsyncEvent : public BaseAsyncEvent {
public:
    ~AsyncEvent() override;
};

}  // namespace zrk
