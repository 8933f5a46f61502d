#include "zrk/operation/Transaction.h"

#include <utility>

#include "zrk/object/Checked.h"
#include "zrk/scene/Scene.h"

namespace zrk {

Transaction::Transaction(const du::SmartPtr<Scene>& scene, const std::string& name)
    : m_scene(scene), m_isOutermost(scene->GetHistory().Begin(Checked(new Operation(name, scene, true)))) {}

Transaction::~Transaction() {
    if (!m_isOpen) return;
    if (m_isOutermost) {
        m_scene->GetHistory().RollBack();
    } else {
        m_scene->GetHistory().MarkFailed();
    }
}

bool Transaction::Commit() {
    const bool wasOpen = std::exchange(m_isOpen, false);
    return !wasOpen || !m_isOutermost || m_scene->GetHistory().Commit();
}

du::SmartPtr<Operation> Transaction::GetOperation() const {
    return m_isOpen ? m_scene->GetHistory().GetOpenOperation() : du::SmartPtr<Operation>();
}

}  // namespace zrk
