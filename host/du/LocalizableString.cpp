#include "du/LocalizableString.h"

#include "du/Localizer.h"

namespace du {

LocalizableString::operator Symbol() const {
    const auto translation = m_translations.find(Localizer::GetLanguage());
    return translation != m_translations.end() ? translation->second : m_source;
}

LocalizableString& LocalizableString::operator=(const Symbol& source) {
    m_source = source;
    return *this;
}

}  // namespace du
