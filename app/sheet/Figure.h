// What the author frames and arranges on the page: the model in its figure, and the labels around it.

#pragma once

#include <vector>

#include "app/document/Document.h"
#include "app/document/ViewDirection.h"

namespace zrsheet {

/// Looks at all that is shown from `direction`, as large as the page leaves room beside the parts list of
/// now. O(vertices).
void FrameModel(Document& document, const ViewDirection& direction);

/// Moves the labels of the callouts to good places around the model, as the document's author wants them
/// arranged. The others stay where they are.
void LayOutLabels(const Document& document, const std::vector<Document::CalloutPtr>& callouts);

/// Enlarges the model as far as labels leave room beside it, and arranges all labels anew; changes nothing
/// where they would stand out of the figure then. Requires: the document is settled, and its labels are laid
/// out.
void FillFigure(Document& document);

}  // namespace zrsheet
