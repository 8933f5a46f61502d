#include "zrk/object/Object.h"

#include <utility>

namespace zrk {

constinit const ClassType Object::CLASS_TYPE(1, "zrk::Object", nullptr);

Object::Object() = default;

Object::~Object() = default;

void Object::GetClassTypes(std::vector<const ClassType*>& out) const {
    for (const ClassType* type = &GetClassType(); type != nullptr; type = type->GetParent())
        out.push_back(type);
}

Object::Attached& Object::Attachments() {
    if (!m_attached) m_attached = std::make_unique<Attached>();
    return *m_attached;
}

bool Object::AddUserData(const du::Symbol& key, du::UserData* data) {
    const std::lock_guard hold(m_attachedMutex);
    return Attachments().plain.emplace(key, data).second;
}

du::UserData* Object::GetUserData(const du::Symbol& key) const {
    const std::lock_guard hold(m_attachedMutex);
    if (!m_attached) return nullptr;
    const auto data = m_attached->plain.find(key);
    return data != m_attached->plain.end() ? data->second : nullptr;
}

void Object::RemoveUserData(const du::Symbol& key) {
    du::SmartPtr<du::RefCounted> removed;  // released after the lock
    const std::lock_guard hold(m_attachedMutex);
    if (!m_attached) return;
    m_attached->plain.erase(key);
    const auto counted = m_attached->counted.find(key);
    if (counted == m_attached->counted.end()) return;
    removed = std::move(counted->second);
    m_attached->counted.erase(counted);
}

bool Object::AddRefCountedUserData(const du::Symbol& key, const du::SmartPtr<du::RefCounted>& data) {
    const std::lock_guard hold(m_attachedMutex);
    return Attachments().counted.emplace(key, data).second;
}

du::SmartPtr<du::RefCounted> Object::GetRefCountedUserData(const du::Symbol& key) const {
    const std::lock_guard hold(m_attachedMutex);
    if (!m_attached) return nullptr;
    const auto data = m_attached->counted.find(key);
    return data != m_attached->counted.end() ? data->second : du::SmartPtr<du::RefCounted>();
}

}  // namespace zrk
