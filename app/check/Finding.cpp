#include "app/check/Finding.h"

#include <array>

namespace zrsheet {
namespace {

struct Texts {
    std::string_view word;
    std::string_view problem;
    std::string_view remedy;
};

constexpr std::array<Texts, 10> kTexts{{
    {"item-without-callout", "item without callout", "'create' one for its parts, or 'item remove' it"},
    {"item-without-parts", "item without parts", "'item join' parts to it, or 'item remove' it"},
    {"item-with-lost-part", "item with a part that the model has not",
     "open the project with the right model, or 'item remove' it"},
    {"duplicate-label", "label that an item before has too", "give it another one with 'item rename'"},
    {"part-without-item", "part without item", "'item add' it, or 'item join' it to another"},
    {"callout-without-item", "callout without item",
     "choose a template without {item} with 'template use', or 'callout remove' it"},
    {"callout-without-leader", "callout without leader", "'show' its parts, or 'callout remove' it"},
    {"leader-to-removed-part", "leader to a removed part", "'undo' the removal, or 'callout remove' it"},
    {"leader-to-lost-part", "leader to a part that the model has not",
     "open the project with the right model, or 'callout remove' it"},
    {"hidden-anchor", "leader to what is covered",
     "turn the 'camera', 'hide' what covers it, or use 'inset add'"},
}};

const Texts& TextsOf(FindingKind kind) { return kTexts[static_cast<std::size_t>(kind)]; }

}  // namespace

std::string_view WordFor(FindingKind kind) { return TextsOf(kind).word; }

std::string_view ProblemOf(FindingKind kind) { return TextsOf(kind).problem; }

std::string_view RemedyFor(FindingKind kind) { return TextsOf(kind).remedy; }

}  // namespace zrsheet
