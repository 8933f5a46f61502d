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
    std::string where;    // for people
    unsigned item = 0;    // 0: not about an item
    std::string callout;  // "": not about a callout
    std::string part;     // a path; "": not about a part

    friend bool operator==(const Finding&, const Finding&) = default;
};

/// For programs: "item-without-callout".
[[nodiscard]] std::string_view WordFor(FindingKind kind);
/// For people: "item without callout".
[[nodiscard]] std::string_view ProblemOf(FindingKind kind);
/// What to do about it.
[[nodiscard]] std::string_view RemedyFor(FindingKind kind);

}  // namespace zrsheet
