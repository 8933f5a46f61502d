// What a STEP file says of its products beside their geometry.

#pragma once

#include "app/import/cad/LabelProperties.h"

class STEPCAFControl_Reader;
class XCAFDoc_ShapeTool;

namespace zrsheet {

/// Of the file and of the files that it refers to: each product's number ("Product id") where it is not its
/// name, its "Description" and "Version", and the attributes that users have given products and instances, in
/// the files' order. Properties that check the transfer (centroids, volumes) are left out. Throws ImportError
/// when the kernel fails. Requires: the reader has transferred its file.
[[nodiscard]] LabelProperties StepPropertiesOf(const STEPCAFControl_Reader& reader,
                                               const opencascade::handle<XCAFDoc_ShapeTool>& shapes);

}  // namespace zrsheet
