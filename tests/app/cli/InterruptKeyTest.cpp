#include "app/cli/InterruptKey.h"

#include <gtest/gtest.h>

namespace zrsheet {
namespace {

// A command that is given up, then one that is not; then the author means it.
TEST(InterruptKey, IsRememberedOnceAndForOneCommand) {
    {
        const InterruptKey key;
        std::raise(SIGINT);
        EXPECT_TRUE(InterruptKey::WasPressed());
    }
    const InterruptKey key;
    EXPECT_FALSE(InterruptKey::WasPressed());
    std::raise(SIGINT);
    EXPECT_TRUE(InterruptKey::WasPressed());
    EXPECT_EXIT(std::raise(SIGINT), testing::KilledBySignal(SIGINT), "");
}

}  // namespace
}  // namespace zrsheet
