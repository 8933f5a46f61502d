#include "callouts/events/DestroyCalloutsTask.h"

#include <utility>

namespace zrcallouts {

DestroyCalloutsTask::DestroyCalloutsTask(Callouts::InsetMap insetCallouts, Callouts::CalloutSet callouts)
    : m_insetCallouts(std::move(insetCallouts)), m_callouts(std::move(callouts)) {}

DestroyCalloutsTask::~DestroyCalloutsTask() = default;

void DestroyCalloutsTask::Run() {
    for (const auto& [inset, callouts] : m_insetCallouts) {
        for (const auto& callout : callouts) callout->SetInsetAtPos(nullptr, 0);
    }
    for (const auto& callout : m_callouts) callout->UnregisterTemplateObserver();
}

}  // namespace zrcallouts
