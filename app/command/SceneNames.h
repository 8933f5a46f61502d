// What commands call the things of an illustration.
//
// Callouts have ids ("callout-3") and labels, items have labels and ids ("#7"), insets and 3-D symbols are
// counted in the order in which they were added ("inset-1", "symbol-2"). Every Find throws UserError for a
// name that calls nothing.

#pragma once

#include <string>
#include <vector>

#include "app/document/Document.h"
#include "zrannotations/Inset.h"

namespace zrsheet {

using InsetPtr = du::SmartPtr<zrannotations::Inset>;
using Names = std::vector<std::string>;

[[nodiscard]] std::vector<Document::ShapePtr> Symbols(const Document& document);
/// "inset-1" ...
[[nodiscard]] std::string InsetName(std::size_t index);
[[nodiscard]] std::string SymbolName(const zrk::ShapeInstance& symbol);
/// "symbol-1" ..., the first that is free.
[[nodiscard]] std::string NewSymbolName(const Document& document);
[[nodiscard]] std::string ItemLabel(const Document& document, unsigned id);

[[nodiscard]] InsetPtr FindInset(const Document& document, const std::string& name);
[[nodiscard]] Document::ShapePtr FindSymbol(const Document& document, const std::string& name);
/// By label, or by "#ID".
[[nodiscard]] unsigned FindItem(const Document& document, const std::string& name);
/// One or more for each name, in the order of the names, none twice.
[[nodiscard]] std::vector<Document::CalloutPtr> FindCallouts(const Document& document, const Names& names);
/// The one that it calls.
[[nodiscard]] Document::CalloutPtr FindCallout(const Document& document, const std::string& name);
/// The parts and assemblies that match; each pattern matches something.
[[nodiscard]] std::vector<Document::SbomPtr> FindInstances(const Document& document, const Names& patterns);
/// What a pattern calls itself, without what is inside of it.
[[nodiscard]] std::vector<Document::SbomPtr> Topmost(const std::vector<Document::SbomPtr>& found);
/// The topmost assemblies that match, to make a `what` of them: at least one.
[[nodiscard]] std::vector<Document::SbomPtr> FindAssemblies(const Document& document, const Names& patterns,
                                                            const std::string& what);
/// The parts in the scene that match; each pattern matches one.
[[nodiscard]] std::vector<Document::ShapePtr> FindShapes(const Document& document, const Names& patterns);

}  // namespace zrsheet
