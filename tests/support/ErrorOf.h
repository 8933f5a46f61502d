// What an action complains of.

#pragma once

#include <stdexcept>
#include <string>

namespace zrtest {

/// The text of the error that the action ends with; "no error" when it ends well.
template <class Error = std::runtime_error, class Action>
std::string ErrorOf(const Action& action) {
    try {
        action();
        return "no error";
    } catch (const Error& error) {
        return error.what();
    }
}

}  // namespace zrtest
