#include "du/Assert.h"

#include <cstdio>
#include <cstdlib>

namespace du {

void FailAssertion(const char* condition, const char* sentence, const char* file, int line) noexcept {
    std::fprintf(stderr, "%s:%d: %s (%s)\n", file, line, sentence, condition);
    std::abort();
}

}  // namespace du
