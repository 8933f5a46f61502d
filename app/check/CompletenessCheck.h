// Looks an illustration over for what an author would not send to print.

#pragma once

#include <string>
#include <vector>

#include "app/check/Finding.h"
#include "app/project/Project.h"

namespace zrsheet {

/// All there is to find: about items in list order, then parts in the order of the structure, then callouts
/// in the order of their items. Items that are not itemized need no callout, others one
/// of their own or one without item that leads to a part of theirs; a part needs no item where an
/// assembly above stands for it: a weld, or one below which no part has a numbered item, as in kits.
/// Requires: the document has settled. O((parts + leaders) x log n).
[[nodiscard]] std::vector<Finding> CheckCompleteness(const Project& project);

/// The findings for programs, ending with a new line; kinds are the same words in every language, the texts
/// for people are not.
[[nodiscard]] std::string FindingsJson(const std::vector<Finding>& findings);

}  // namespace zrsheet
