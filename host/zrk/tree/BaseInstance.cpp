#include "zrk/tree/BaseInstance.h"

namespace zrk {
namespace {

constexpr const char* kUnitSeparator = "\x1f";

}  // namespace

constinit const ClassType BaseInstance::CLASS_TYPE(10, "zrk::BaseInstance", &Object::CLASS_TYPE);

BaseInstance::BaseInstance(const du::Symbol& identifier, const std::string& name)
    : m_identifier(identifier), m_name(name) {}

BaseInstance::~BaseInstance() = default;

void BaseInstance::SetProperty(const du::Symbol& group, const du::Symbol& name, const du::Symbol& value,
                               const du::Symbol& source) {
    const std::lock_guard hold(m_propertyMutex);
    m_properties.insert_or_assign(PropertyKey(group, name, source), value);
}

void BaseInstance::RemoveProperty(const du::Symbol& group, const du::Symbol& name, const du::Symbol& source) {
    const std::lock_guard hold(m_propertyMutex);
    m_properties.erase(PropertyKey(group, name, source));
}

bool BaseInstance::FindProperty(const du::Symbol& group, const du::Symbol& name, const du::Symbol& source,
                                du::Symbol& value) const {
    const std::lock_guard hold(m_propertyMutex);
    auto entry = m_properties.find(PropertyKey(group, name, source));
    if (entry == m_properties.end()) entry = m_properties.find(PropertyKey(group, name, du::Symbol::EMPTY));
    if (entry == m_properties.end()) return false;
    value = entry->second;
    return true;
}

std::map<BaseInstance::PropertyKey, du::Symbol> BaseInstance::GetProperties() const {
    const std::lock_guard hold(m_propertyMutex);
    return m_properties;
}

du::SmartPtr<PropertyValue> BaseInstance::LookUpProperty(const std::vector<du::Symbol>& groups,
                                                         const std::vector<du::Symbol>& names,
                                                         const du::Symbol& source) const {
    if (groups.size() != names.size()) return nullptr;
    std::string joined;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        du::Symbol value;
        if (!FindProperty(groups[i], names[i], source, value)) return nullptr;
        if (i > 0) joined += kUnitSeparator;
        joined += value.Text();
    }
    return du::SmartPtr<PropertyValue>(new PropertyValue(du::Symbol(joined)));
}

}  // namespace zrk
