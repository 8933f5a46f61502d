// Broken invariants end the process, in release builds too: going on would corrupt the user's document.

#pragma once

namespace du {

/// Prints the condition, the sentence and the place, then aborts.
[[noreturn]] void FailAssertion(const char* condition, const char* sentence, const char* file,
                                int line) noexcept;

}  // namespace du

#define DU_ASSERT(condition, sentence) \
    ((condition) ? static_cast<void>(0) : ::du::FailAssertion(#condition, sentence, __FILE__, __LINE__))
