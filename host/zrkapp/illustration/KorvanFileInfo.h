// What is known about the document's file.

#pragma once

#include <map>
#include <mutex>
#include <string>

#include "du/RefCounted.h"
#include "zrkapp/illustration/LocalizationSettings.h"

namespace zrkapp::illustration {

/// Any thread.
class KorvanFileInfo : public virtual du::RefCounted {
public:
    ~KorvanFileInfo() override;

    /// Lives as long as this.
    LocalizationSettings* GetLocalizationSettings() { return &m_localization; }

    /// A property of the file, such as its title; "" when it has none.
    std::string GetProperty(const std::string& name) const;
    void SetProperty(const std::string& name, const std::string& value);

private:
    LocalizationSettings m_localization;
    mutable std::mutex m_mutex;  // guards m_properties
    std::map<std::string, std::string> m_properties;
};

}  // namespace zrkapp::illustration
