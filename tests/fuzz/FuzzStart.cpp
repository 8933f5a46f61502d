// Makes failed expectations stop the fuzzer, which then keeps the input.

#include <gtest/gtest.h>

// The fuzzer's name for it.
extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments);

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    GTEST_FLAG_SET(break_on_failure, true);
    return 0;
}
