#include "zrkapp/illustration/KorvanFileInfo.h"

namespace zrkapp::illustration {

KorvanFileInfo::~KorvanFileInfo() = default;

std::string KorvanFileInfo::GetProperty(const std::string& name) const {
    const std::lock_guard hold(m_mutex);
    const auto property = m_properties.find(name);
    return property != m_properties.end() ? property->second : std::string();
}

void KorvanFileInfo::SetProperty(const std::string& name, const std::string& value) {
    const std::lock_guard hold(m_mutex);
    m_properties[name] = value;
}

}  // namespace zrkapp::illustration
