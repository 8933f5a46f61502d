#include "callouts/events/UpdateItemGroupLeadersOperationStep.h"

#include <utility>

namespace zrcallouts {

UpdateItemGroupLeadersOperationStep::UpdateItemGroupLeadersOperationStep(du::SmartPtr<Callouts> engine,
                                                                         unsigned int itemId,
                                                                         Callouts::SbomSet added)
    : m_engine(std::move(engine)), m_itemId(itemId), m_added(std::move(added)) {}

UpdateItemGroupLeadersOperationStep::~UpdateItemGroupLeadersOperationStep() = default;

void UpdateItemGroupLeadersOperationStep::Undo() {
    m_engine->UpdateItemGroupCalloutLeaders(m_itemId, {}, m_added, nullptr);
}

void UpdateItemGroupLeadersOperationStep::Redo() {
    m_engine->UpdateItemGroupCalloutLeaders(m_itemId, m_added, {}, nullptr);
}

}  // namespace zrcallouts
