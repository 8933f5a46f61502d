// Thrown when what the author asked for cannot be done: one line that says what, where, and what to do about
// it.

#pragma once

#include <stdexcept>

namespace zrsheet {

class UserError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The author does not want to wait for the end.
class Interrupted : public UserError {
public:
    Interrupted() : UserError("interrupted; nothing was changed") {}
};

}  // namespace zrsheet
