#include "app/check/Finding.h"

#include <array>

#include "app/text/ProgramText.h"

namespace zrsheet {
namespace {

constexpr std::array<std::string_view, 10> kWords{
    "item-without-callout", "item-without-parts",   "item-with-lost-part",    "duplicate-label",
    "part-without-item",    "callout-without-item", "callout-without-leader", "leader-to-removed-part",
    "leader-to-lost-part",  "hidden-anchor"};

}  // namespace

std::string_view WordFor(FindingKind kind) { return kWords[static_cast<std::size_t>(kind)]; }

std::string ProblemOf(FindingKind kind) { return Text(std::string("problem-").append(WordFor(kind))); }

std::string RemedyFor(FindingKind kind) { return Text(std::string("remedy-").append(WordFor(kind))); }

}  // namespace zrsheet
