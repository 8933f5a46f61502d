// The things of an illustration as plain text, the same from run to run.

#pragma once

#include <string>

#include "app/check/Finding.h"
#include "app/command/SceneNames.h"
#include "app/document/Document.h"
#include "app/project/Project.h"
#include "app/sheet/Sheet.h"

namespace zrsheet {

/// Those that match; none: everything.
[[nodiscard]] std::string ListParts(const Document& document, const Names& patterns);
[[nodiscard]] std::string ListItems(const Document& document);
[[nodiscard]] std::string ListCallouts(const Document& document);
/// What the author chose for all, and for single ones.
[[nodiscard]] std::string ListStyles(const Document& document);
[[nodiscard]] std::string ListTemplates(const Document& document);
[[nodiscard]] std::string ListInsets(const Document& document);
[[nodiscard]] std::string ListSymbols(const Document& document);

/// Parts that the project refers to and its model has no longer.
[[nodiscard]] std::string ListOrphans(const Project& project);
[[nodiscard]] std::string ListFindings(const std::vector<Finding>& findings);
/// How good the places of a sheet's labels are: figures, then the faults.
[[nodiscard]] std::string ListQuality(const Sheet& sheet);

}  // namespace zrsheet
