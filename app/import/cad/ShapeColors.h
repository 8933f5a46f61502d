// The colour that a reader of this document would say a part has.

#pragma once

#include <Standard_Handle.hxx>
#include <TDF_Label.hxx>
#include <TopoDS_Shape.hxx>
#include <optional>

#include "app/import/Assembly.h"

class XCAFDoc_ShapeTool;

namespace zrsheet {

/// The colour that the file gives the thing at the label itself: a product or one of its instances.
[[nodiscard]] std::optional<AssemblyColor> ColorOf(const TDF_Label& label);

/// The colour of most of the product's surface: its own, or what the file gives its bodies and faces.
/// Requires: the shape is triangulated.
[[nodiscard]] std::optional<AssemblyColor> MainColorOf(const TDF_Label& product,
                                                       const opencascade::handle<XCAFDoc_ShapeTool>& shapes);

}  // namespace zrsheet
