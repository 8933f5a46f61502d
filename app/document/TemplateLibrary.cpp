#include "app/document/TemplateLibrary.h"

#include <utility>

#include "app/document/LabelTemplate.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrannotations/LabelContent.h"
#include "zrk/object/Checked.h"

namespace zrsheet {

using zrannotations::LabelContent;
using zrannotations::TAnnotation;
using zrk::illustration::CollectionItem;
using Content = du::SmartPtr<LabelContent>;

TemplateLibrary::TemplateLibrary() = default;

TemplateLibrary::~TemplateLibrary() { zrannotations::ClearCalloutTemplates(); }

void TemplateLibrary::Define(const NamedTemplate& named) {
    CheckLabelTemplate(named.text, named.translations);
    auto entry = Get(named.name);
    if (!entry) {
        entry.emplace();
        entry->definition = zrk::Checked(new TAnnotation(named.name, ParseLabelTemplate(named.text),
                                                         new CollectionItem(named.name, true)));
    }
    entry->text = named.text;
    entry->translations = named.translations;
    Put(named.name, entry);
}

void TemplateLibrary::SetLanguage(const zrcallouts::Callouts& engine, const std::string& language) {
    m_engine = &engine;
    m_language = language;
    for (const auto& [name, entry] : m_entries) {
        if (!entry.translations.empty()) entry.definition->SetTextContent(ContentsOf(entry));
    }
}

// The engine knows references by group and name alone, so it is given stand-ins, named by their numbers, for
// those of the template, which may look at the same property of the part and of what is above it.
TAnnotation::Contents TemplateLibrary::ContentsOf(const Entry& entry) const {
    TAnnotation::Contents contents = ParseLabelTemplate(entry.text);
    const auto translation = entry.translations.find(m_language);
    if (m_engine == nullptr || translation == entry.translations.end()) return contents;
    std::erase_if(contents, [](const auto& content) { return content->Kind() == 0; });
    const zrannotations::TextProperties plain;
    TAnnotation::Contents standIns;
    for (std::size_t i = 0; i < contents.size(); ++i)
        standIns.emplace_back(new LabelContent("", std::to_string(i), plain));
    // A text without placeholders is its translation.
    if (standIns.empty()) return {Content(new LabelContent(translation->second, plain))};
    TAnnotation::Contents localized;
    m_engine->LocalizeTemplateText(du::Symbol(translation->second), standIns, localized);
    for (auto& content : localized) {
        if (content->Kind() != 0) content = contents.at(std::stoul(content->PropertyName()));
    }
    return localized;
}

void TemplateLibrary::Put(const std::string& name, const std::optional<Entry>& entry) {
    if (entry) {
        m_entries[name] = *entry;
    } else {
        m_entries.erase(name);
    }
    Offer();
    if (entry) entry->definition->SetTextContent(ContentsOf(*entry));
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

std::vector<NamedTemplate> TemplateLibrary::All() const {
    std::vector<NamedTemplate> all;
    for (const auto& [name, entry] : m_entries) all.push_back({name, entry.text, entry.translations});
    return all;
}

}  // namespace zrsheet
