#include "callouts/events/CalloutsDrawWhenHiddenOperationStep.h"

#include <utility>

namespace zrcallouts {

const du::Symbol CalloutsDrawWhenHiddenOperationStep::type("CalloutsDrawWhenHiddenOperationStep");

CalloutsDrawWhenHiddenOperationStep::CalloutsDrawWhenHiddenOperationStep(du::SmartPtr<Callouts> engine,
                                                                         bool state)
    : m_state(state), m_engine(std::move(engine)) {
    if (!m_engine) return;
    m_scene = du::DynamicCast<zrk::illustration::Illustration3dScene>(m_engine->GetScene());
    if (m_scene) m_view = du::DynamicCast<zrk::ShapeView>(m_scene->GetView(0));
}

CalloutsDrawWhenHiddenOperationStep::~CalloutsDrawWhenHiddenOperationStep() = default;

void CalloutsDrawWhenHiddenOperationStep::Undo() { Apply(!m_state); }

void CalloutsDrawWhenHiddenOperationStep::Redo() { Apply(m_state); }

void CalloutsDrawWhenHiddenOperationStep::Apply(bool state) {
    if (!m_scene) return;
    m_scene->SetDrawWhenHidden(state);
    m_engine->OnDrawWhenHidden(m_view);
}

}  // namespace zrcallouts
