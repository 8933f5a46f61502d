#include "zrannotations/MoveOperationStep.h"

#include "zrannotations/Callout.h"

namespace zrannotations {

// Callouts have one label and no other part that could move.
MoveOperationStep::MoveOperationStep(const du::SmartPtr<Annotation>& annotation, unsigned,
                                     const dg::Location& from, const dg::Location& to, bool)
    : m_annotation(annotation), m_from(from), m_to(to) {}

MoveOperationStep::~MoveOperationStep() = default;

void MoveOperationStep::MoveTo(const dg::Location& place) {
    if (const auto callout = du::DynamicCast<Callout>(m_annotation))
        callout->SetLabelPosition(place.GetPos());
}

}  // namespace zrannotations
