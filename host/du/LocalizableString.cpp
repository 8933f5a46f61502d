#include "du/LocalizableString.h"

#include <mutex>

#include "du/Localizer.h"

namespace du {

LocalizableString& LocalizableString::operator=(const LocalizableString& other) {
    Parts content = other.Content();
    const std::lock_guard hold(m_mutex);
    std::swap(m_content, content);
    return *this;
}

LocalizableString::operator Symbol() const {
    const std::string language = Localizer::GetLanguage();
    const std::lock_guard hold(m_mutex);
    const auto translation = m_content.translations.find(language);
    return translation != m_content.translations.end() ? translation->second : m_content.source;
}

LocalizableString& LocalizableString::operator=(const Symbol& source) {
    const std::lock_guard hold(m_mutex);
    m_content.source = source;
    return *this;
}

bool LocalizableString::empty() const {
    const std::lock_guard hold(m_mutex);
    return m_content.source.empty() && m_content.translations.empty();
}

void LocalizableString::SetTranslation(const std::string& language, const Symbol& text) {
    const std::lock_guard hold(m_mutex);
    m_content.translations[language] = text;
}

bool LocalizableString::IsEnabled() const {
    const std::lock_guard hold(m_mutex);
    return m_content.isEnabled;
}

void LocalizableString::SetEnabled(bool enabled) {
    const std::lock_guard hold(m_mutex);
    m_content.isEnabled = enabled;
}

bool LocalizableString::IsDeleted() const {
    const std::lock_guard hold(m_mutex);
    return m_content.isDeleted;
}

void LocalizableString::SetDeleted(bool deleted) {
    const std::lock_guard hold(m_mutex);
    m_content.isDeleted = deleted;
}

LocalizableString::Parts LocalizableString::Content() const {
    const std::lock_guard hold(m_mutex);
    return m_content;
}

}  // namespace du
