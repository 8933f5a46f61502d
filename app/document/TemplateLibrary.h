// The label templates of a document, by name.

#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/document/TemplateFile.h"
#include "callouts/Callouts.h"
#include "du/SmartPtr.h"
#include "zrannotations/TAnnotation.h"

namespace zrsheet {

/// One at a time in a process, for the host offers the templates of the open document. One thread.
class TemplateLibrary {
public:
    using TemplatePtr = du::SmartPtr<zrannotations::TAnnotation>;

    struct Entry {
        TemplatePtr definition;
        std::string text;
        std::map<std::string, std::string> translations;  // see TemplateFile.h
    };

    TemplateLibrary();
    TemplateLibrary(const TemplateLibrary&) = delete;
    TemplateLibrary& operator=(const TemplateLibrary&) = delete;
    /// The host offers none from then on.
    ~TemplateLibrary();

    /// Defines a template, or changes what one of that name says; its callouts follow. Throws UserError when
    /// the text is wrong.
    void Define(const NamedTemplate& named);
    /// From then on templates say what is translated in this language. Callouts follow. The
    /// engine is alive while templates change.
    void SetLanguage(const zrcallouts::Callouts& engine, const std::string& language);
    /// Puts back what Get gave: the same template saying the same, or none. Callouts of a template that goes
    /// keep their labels.
    void Put(const std::string& name, const std::optional<Entry>& entry);
    /// Empty when there is none.
    [[nodiscard]] std::optional<Entry> Get(const std::string& name) const;

    /// Null when there is none.
    [[nodiscard]] TemplatePtr Find(const std::string& name) const;
    /// In alphabetical order.
    [[nodiscard]] std::vector<std::string> Names() const;
    [[nodiscard]] std::vector<NamedTemplate> All() const;

private:
    void Offer() const;
    [[nodiscard]] zrannotations::TAnnotation::Contents ContentsOf(const Entry& entry) const;

    std::map<std::string, Entry> m_entries;
    const zrcallouts::Callouts* m_engine = nullptr;  // null until there is a language
    std::string m_language;
};

}  // namespace zrsheet
