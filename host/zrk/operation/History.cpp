#include "zrk/operation/History.h"

#include <utility>

#include "zrk/operation/Operation.h"

namespace zrk {

History::History() = default;

History::~History() = default;

void History::Record(const du::SmartPtr<Operation>& operation) {
    std::vector<du::SmartPtr<Operation>> forgotten;
    const std::lock_guard hold(m_mutex);
    m_done.push_back(operation);
    forgotten.swap(m_undone);
}

bool History::Undo() {
    du::SmartPtr<Operation> operation;
    {
        const std::lock_guard hold(m_mutex);
        if (m_done.empty()) return false;
        operation = m_done.back();
        m_done.pop_back();
    }
    operation->Undo();
    const std::lock_guard hold(m_mutex);
    m_undone.push_back(operation);
    return true;
}

bool History::Redo() {
    du::SmartPtr<Operation> operation;
    {
        const std::lock_guard hold(m_mutex);
        if (m_undone.empty()) return false;
        operation = m_undone.back();
        m_undone.pop_back();
    }
    operation->Redo();
    const std::lock_guard hold(m_mutex);
    m_done.push_back(operation);
    return true;
}

std::string History::GetUndoName() const {
    const std::lock_guard hold(m_mutex);
    return m_done.empty() ? std::string() : m_done.back()->GetName();
}

std::size_t History::GetUndoCount() const {
    const std::lock_guard hold(m_mutex);
    return m_done.size();
}

std::size_t History::GetRedoCount() const {
    const std::lock_guard hold(m_mutex);
    return m_undone.size();
}

void History::Clear() {
    std::vector<du::SmartPtr<Operation>> done;
    std::vector<du::SmartPtr<Operation>> undone;
    const std::lock_guard hold(m_mutex);
    done.swap(m_done);
    undone.swap(m_undone);
}

}  // namespace zrk
