// A text with translations.

#pragma once

#include <map>
#include <string>

#include "du/Symbol.h"

namespace du {

/// A value; not shared between threads.
class LocalizableString {
public:
    /// The text in the current user-interface language, else the source text.
    operator Symbol() const;
    /// Replaces the source text; translations and marks stay.
    LocalizableString& operator=(const Symbol& source);

    const Symbol& GetSource() const { return m_source; }
    /// By language.
    const std::map<std::string, Symbol>& GetTranslations() const { return m_translations; }

    bool empty() const { return m_source.empty() && m_translations.empty(); }
    void SetTranslation(const std::string& language, const Symbol& text) { m_translations[language] = text; }
    /// Whether labels show this text instead of the generated one.
    bool IsEnabled() const { return m_isEnabled; }
    void SetEnabled(bool enabled) { m_isEnabled = enabled; }
    bool IsDeleted() const { return m_isDeleted; }
    void SetDeleted(bool deleted) { m_isDeleted = deleted; }

    friend bool operator==(const LocalizableString&, const LocalizableString&) = default;

private:
    Symbol m_source;
    std::map<std::string, Symbol> m_translations;
    bool m_isEnabled = false;
    bool m_isDeleted = false;
};

}  // namespace du
