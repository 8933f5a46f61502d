// Thrown when a file cannot be written: one line that says what failed, where, and what to do about it.

#pragma once

#include <stdexcept>

namespace zrsheet {

class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace zrsheet
