// Where a callout's label lies in the picture.

#pragma once

#include "app/document/Document.h"
#include "app/document/PageGeometry.h"

namespace zrsheet {

/// The label's middle, in pixels of the document's view.
[[nodiscard]] PagePoint LabelPlace(const Document& document, const Document::CalloutPtr& callout);

/// Keeps the label's depth. Throws UserError when the part that it belongs to is gone.
void PlaceLabel(const Document& document, const Document::CalloutPtr& callout, const PagePoint& place);

}  // namespace zrsheet
