// Long random walks of everything that a user can do, to and fro through the history.

#include <gtest/gtest.h>

#include <random>

#include "tests/callouts/SceneWalk.h"

namespace zrcallouts {
namespace {

class UndoWalkTest : public SceneWalk, public testing::WithParamInterface<unsigned> {
protected:
    UndoWalkTest()
        : SceneWalk(
              [random = std::mt19937(GetParam())]() mutable { return static_cast<unsigned>(random()); }) {}
};

TEST_P(UndoWalkTest, FindsEveryStateAgainByteForByte) {
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    Walk([left = 300]() mutable { return left-- > 0; });
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoWalkTest, testing::Range(1U, 9U));

}  // namespace
}  // namespace zrcallouts
