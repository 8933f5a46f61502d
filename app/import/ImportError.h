// Says why a model cannot be imported, in one line for the person who asked for it.

#pragma once

#include <stdexcept>

namespace zrsheet {

/// what() is one line without a line end: the file, what is wrong with it and where, and what to do.
class ImportError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace zrsheet
