// One word of a command line.

#pragma once

#include <cstddef>
#include <string>

namespace zrsheet {

struct Word {
    std::string text;             // without quotes and escapes
    std::size_t plainLength = 0;  // bytes in front that were neither quoted nor escaped

    /// It may be a keyword.
    [[nodiscard]] bool IsPlain() const { return plainLength == text.size(); }
};

}  // namespace zrsheet
