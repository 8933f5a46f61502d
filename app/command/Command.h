// A command of the language: what it is called, what it takes, and what it does.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/command/Arguments.h"

namespace zrsheet {

class Session;

enum class Effect {
    Anything,  // needs no open illustration, looks after itself
    Reads,     // needs one and leaves it as it is
    Changes,   // changes it, as one entry of the history
};

struct Command {
    std::string_view name;  // one or two words
    /// What stands behind the name. Words in capitals are to be filled in and tell completion what with
    /// (PART, CALLOUT, ITEM, INSET, SYMBOL, TEMPLATE, FILE, COMMAND ...), others are keywords; "a|b" one of
    /// both, "[]" may be left out, "..." may be repeated.
    std::string_view arguments;
    std::string_view summary;  // one line without a full stop
    std::string_view details;  // sentences for its help; may be empty
    std::string_view example;  // a whole command
    Effect effect = Effect::Anything;
    std::string_view title;  // in the history; empty for what changes nothing
    void (*run)(Session& session, Arguments& arguments) = nullptr;

    [[nodiscard]] std::string Usage() const {
        return std::string(name) + (arguments.empty() ? "" : " ") + std::string(arguments);
    }
};

/// Commands about the same things.
struct CommandTopic {
    std::string_view title;
    std::vector<Command> commands;
};

}  // namespace zrsheet
