// The label templates of a document, by name.

#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

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
    };

    TemplateLibrary();
    TemplateLibrary(const TemplateLibrary&) = delete;
    TemplateLibrary& operator=(const TemplateLibrary&) = delete;
    /// The host offers none from then on.
    ~TemplateLibrary();

    /// Defines a template, or changes what one of that name says; its callouts follow. Throws UserError when
    /// the text is wrong.
    void Define(const std::string& name, const std::string& text);
    /// Puts back what Get gave: the same template saying the same, or none. Callouts of a template that goes
    /// keep their labels.
    void Put(const std::string& name, const std::optional<Entry>& entry);
    /// Empty when there is none.
    [[nodiscard]] std::optional<Entry> Get(const std::string& name) const;

    /// Null when there is none.
    [[nodiscard]] TemplatePtr Find(const std::string& name) const;
    /// In alphabetical order.
    [[nodiscard]] std::vector<std::string> Names() const;

private:
    void Offer() const;

    std::map<std::string, Entry> m_entries;
};

}  // namespace zrsheet
