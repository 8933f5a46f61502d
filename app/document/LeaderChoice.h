// Which instances of a part its callout leads to.

#pragma once

namespace zrsheet {

enum class LeaderChoice {
    One,          // the instance that is seen best
    All,          // every instance, from one balloon
    PerInstance,  // a balloon of its own for every instance
};

}  // namespace zrsheet
