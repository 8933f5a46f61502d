// A text with translations.

#pragma once

#include <map>
#include <mutex>
#include <string>

#include "du/LeafLock.h"
#include "du/Symbol.h"

namespace du {

/// A value. Any thread: callouts hand theirs out, and a language change reads it while an author translates.
class LocalizableString {
public:
    LocalizableString() = default;
    LocalizableString(const LocalizableString& other) : m_content(other.Content()) {}
    LocalizableString& operator=(const LocalizableString& other);
    ~LocalizableString() = default;

    /// The text in the current user-interface language, else the source text.
    operator Symbol() const;
    /// Replaces the source text; translations and marks stay.
    LocalizableString& operator=(const Symbol& source) {
        Write(&Parts::source, source);
        return *this;
    }

    Symbol GetSource() const { return Read(&Parts::source); }
    /// By language.
    std::map<std::string, Symbol> GetTranslations() const { return Read(&Parts::translations); }

    bool empty() const;
    void SetTranslation(const std::string& language, const Symbol& text);
    /// Whether labels show this text instead of the generated one.
    bool IsEnabled() const { return Read(&Parts::isEnabled); }
    void SetEnabled(bool enabled) { Write(&Parts::isEnabled, enabled); }
    bool IsDeleted() const { return Read(&Parts::isDeleted); }
    void SetDeleted(bool deleted) { Write(&Parts::isDeleted, deleted); }

    friend bool operator==(const LocalizableString& a, const LocalizableString& b) {
        return a.Content() == b.Content();
    }

private:
    struct Parts {
        Symbol source;
        std::map<std::string, Symbol> translations;
        bool isEnabled = false;
        bool isDeleted = false;

        friend bool operator==(const Parts&, const Parts&) = default;
    };

    Parts Content() const;
    template <class T>
    T Read(T Parts::*member) const {
        const std::lock_guard hold(m_mutex);
        return m_content.*member;
    }
    template <class T>
    void Write(T Parts::*member, const T& value) {
        const std::lock_guard hold(m_mutex);
        m_content.*member = value;
    }

    mutable LeafLock m_mutex;  // guards all below
    Parts m_content;
};

}  // namespace du
