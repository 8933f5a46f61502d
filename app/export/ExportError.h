// Thrown when an output cannot be written: one line that says what failed, where, and what to do about it.

#pragma once

#include <stdexcept>

namespace zrsheet {

class ExportError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace zrsheet
