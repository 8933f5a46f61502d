#include "app/document/TemplateLibrary.h"

#include <utility>

#include "app/document/LabelTemplate.h"
#include "zrannotations/CalloutTemplates.h"

namespace zrsheet {

using zrannotations::TAnnotation;
using zrk::illustration::CollectionItem;

TemplateLibrary::TemplateLibrary() = default;

TemplateLibrary::~TemplateLibrary() { zrannotations::ClearCalloutTemplates(); }

void TemplateLibrary::Define(const std::string& name, const std::string& text) {
    auto contents = ParseLabelTemplate(text);
    auto entry = Get(name);
    if (!entry) entry = Entry{new TAnnotation(name, std::move(contents), new CollectionItem(name, true)), ""};
    entry->text = text;
    Put(name, entry);
}

void TemplateLibrary::Put(const std::string& name, const std::optional<Entry>& entry) {
    if (entry) {
        m_entries[name] = *entry;
    } else {
        m_entries.erase(name);
    }
    Offer();
    if (entry) entry->definition->SetTextContent(ParseLabelTemplate(entry->text));
}

std::optional<TemplateLibrary::Entry> TemplateLibrary::Get(const std::string& name) const {
    const auto entry = m_entries.find(name);
    return entry != m_entries.end() ? std::optional<Entry>(entry->second) : std::nullopt;
}

void TemplateLibrary::Offer() const {
    zrannotations::ClearCalloutTemplates();
    for (const auto& [name, entry] : m_entries) zrannotations::AddCalloutTemplate(entry.definition);
}

TemplateLibrary::TemplatePtr TemplateLibrary::Find(const std::string& name) const {
    const auto entry = m_entries.find(name);
    return entry != m_entries.end() ? entry->second.definition : TemplatePtr();
}

std::vector<std::string> TemplateLibrary::Names() const {
    std::vector<std::string> names;
    for (const auto& [name, entry] : m_entries) names.push_back(name);
    return names;
}

}  // namespace zrsheet
