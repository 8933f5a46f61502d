// What a fuzz target is: one function that takes any bytes and comes back, having checked with EXPECT what
// must hold whatever they are. The fuzzer makes the bytes; ReplayTest goes through those that are kept in the
// corpus.

#pragma once

#include <cstddef>
#include <cstdint>

/// Returns 0. Input that is refused with a message is as good as any other.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
