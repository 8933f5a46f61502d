// How the items of a parts list are numbered.

#pragma once

#include <string>

namespace zrk::illustration {

/// Start, increment, digits and letters are those of the top level; below an assembly's item counting is
/// plain: 1, 2, 3.
struct Numbering {
    bool hierarchical = false;  // "2.1" below "2", instead of counting through
    std::string prefix{};       // of labels of the top level
    std::string separator = ".";
    unsigned start = 1;       // the first number; at least 1
    unsigned increment = 1;   // from one number to the next; at least 1
    unsigned digits = 0;      // as many at least, with zeros in front
    bool alphabetic = false;  // A, B ... Z, AA instead of 1, 2 ... 26, 27

    /// The label of the item with that number; `above` is that of the item above, "" on the top level.
    std::string Write(unsigned number, const std::string& above) const;

    friend bool operator==(const Numbering&, const Numbering&) = default;
};

}  // namespace zrk::illustration
