#include "du/LocalizableString.h"

#include <utility>

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

bool LocalizableString::empty() const {
    const std::lock_guard hold(m_mutex);
    return m_content.source.empty() && m_content.translations.empty();
}

void LocalizableString::SetTranslation(const std::string& language, const Symbol& text) {
    const std::lock_guard hold(m_mutex);
    m_content.translations[language] = text;
}

LocalizableString::Parts LocalizableString::Content() const {
    const std::lock_guard hold(m_mutex);
    return m_content;
}

}  // namespace du
