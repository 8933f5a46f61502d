#include "zrk/operation/Operation.h"

#include <algorithm>

#include "zrk/scene/Scene.h"

namespace zrk {

Operation::Operation(const std::string& name, const du::SmartPtr<Scene>& scene, bool undoable)
    : m_name(name), m_scene(scene), m_isUndoable(undoable) {}

Operation::~Operation() = default;

void Operation::AddStep(const du::SmartPtr<OperationStep>& step) {
    const std::lock_guard hold(m_mutex);
    m_steps.push_back(step);
}

std::vector<du::SmartPtr<OperationStep>> Operation::Steps() const {
    const std::lock_guard hold(m_mutex);
    return m_steps;
}

void Operation::Undo(const std::function<void()>& afterEach) {
    const auto steps = Steps();
    std::for_each(steps.rbegin(), steps.rend(), [&](const auto& step) {
        if (step->HasUndo()) step->Undo();
        if (afterEach) afterEach();
    });
}

void Operation::Redo(const std::function<void()>& afterEach) {
    for (const auto& step : Steps()) {
        if (step->HasUndo()) step->Redo();
        if (afterEach) afterEach();
    }
}

void Operation::Append(const Operation& other) {
    const auto steps = other.Steps();
    const std::lock_guard hold(m_mutex);
    m_steps.insert(m_steps.end(), steps.begin(), steps.end());
}

bool Operation::HasUndo() const {
    const auto steps = Steps();
    return std::any_of(steps.begin(), steps.end(), [](const auto& step) { return step->HasUndo(); });
}

bool Operation::IsRecordable() const {
    const auto steps = Steps();
    return m_isUndoable &&
           std::any_of(steps.begin(), steps.end(), [](const auto& step) { return step->Recordable(); });
}

void RecordOperation(const du::SmartPtr<Operation>& operation) {
    if (operation && operation->IsRecordable() && operation->GetScene()) {
        operation->GetScene()->GetHistory().Record(operation);
    }
}

}  // namespace zrk
