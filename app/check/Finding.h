// Something about an illustration that is not complete.

#pragma once

#include <string>
#include <string_view>

namespace zrsheet {

/// In the order in which a check tells them.
enum class FindingKind {
    ItemWithoutCallout,
    ItemWithoutParts,
    ItemWithLostPart,  // the model has it no longer
    DuplicateLabel,
    PartWithoutItem,
    CalloutWithoutItem,  // although its template asks for one
    CalloutWithoutLeader,
    LeaderToRemovedPart,
    LeaderToLostPart,
    HiddenAnchor,
};

struct Finding {
    FindingKind kind = FindingKind::ItemWithoutCallout;
    std::string where;    // for people, in the language that the program speaks
    unsigned item = 0;    // 0: not about an item
    std::string callout;  // "": not about a callout
    std::string part;     // a path; "": not about a part

    friend bool operator==(const Finding&, const Finding&) = default;
};

/// For programs: "item-without-callout".
[[nodiscard]] std::string_view WordFor(FindingKind kind);
/// For people, in the language that the program speaks: "item without callout".
[[nodiscard]] std::string ProblemOf(FindingKind kind);
/// What to do about it, in the same language.
[[nodiscard]] std::string RemedyFor(FindingKind kind);

}  // namespace zrsheet
