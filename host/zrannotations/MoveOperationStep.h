// That a label was moved, as a step that can be undone.

#pragma once

#include "dg/Location.h"
#include "du/SmartPtr.h"
#include "zrannotations/Annotation.h"
#include "zrk/operation/OperationStep.h"

namespace zrannotations {

class MoveOperationStep : public zrk::OperationStep {
public:
    /// The places are in the coordinates in which the annotation keeps its label. `index` names the label of
    /// annotations that have several, 0 for callouts; `isLabel` tells that the label moved, not the
    /// annotation's part.
    MoveOperationStep(const du::SmartPtr<Annotation>& annotation, unsigned index, const dg::Location& from,
                      const dg::Location& to, bool isLabel);
    ~MoveOperationStep() override;

    const char* GetDebugClassName() const override { return "zrannotations::MoveOperationStep"; }
    void Undo() override { MoveTo(m_from); }
    void Redo() override { MoveTo(m_to); }

private:
    void MoveTo(const dg::Location& place);

    const du::SmartPtr<Annotation> m_annotation;
    const dg::Location m_from;
    const dg::Location m_to;
};

}  // namespace zrannotations
