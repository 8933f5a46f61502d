// Writes down an open illustration.

#pragma once

#include "app/document/Document.h"
#include "app/project/ModelRecord.h"
#include "app/project/ProjectData.h"

namespace zrsheet {

/// The project as it stands now. Parts of the model that are gone stay in it as long as something refers to
/// them. The document's thread. Linear, up to logarithms.
[[nodiscard]] ProjectData CaptureProject(const Document& document, const ModelRecord& record);

}  // namespace zrsheet
