// Makes an assembly of the shapes, names and colours that a CAD file's reader has put into a document.

#pragma once

#include <Standard_Handle.hxx>
#include <string>
#include <vector>

#include "app/import/Assembly.h"
#include "app/import/cad/LabelProperties.h"

class TDocStd_Document;

namespace zrsheet {

/// Returns the names of products that have nothing in their shape. Appends parts, nodes and warnings to the
/// assembly. Each shape is triangulated once however often it is placed. The kernel's millimetres become
/// metres and its Z, which points up, Y. A part's product name is that of its shape; instances without a name
/// worth reading take it too. Throws ImportError when no triangles result, the tree is deeper than 10,000, or
/// it has more than a million nodes.
std::vector<std::string> ReadShapes(const opencascade::handle<TDocStd_Document>& document,
                                    const LabelProperties& properties, Assembly& assembly);

}  // namespace zrsheet
