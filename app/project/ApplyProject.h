// Makes a document what a project says it was.

#pragma once

#include "app/document/Document.h"
#include "app/project/ModelRecord.h"
#include "app/project/ProjectData.h"

namespace zrsheet {

/// Everything but the model's file: items, templates, annotations and parts as they were saved, exactly, with
/// nothing in the history. What the document's model has not is noted in `record`, and leaders to it wait.
/// Requires: the document is fresh; paths are the model's, as Rematched leaves them. Throws UserError for a
/// wrong template, language or symbol; the document is then of no use.
void ApplyProject(const ProjectData& project, Document& document, ModelRecord& record);

}  // namespace zrsheet
