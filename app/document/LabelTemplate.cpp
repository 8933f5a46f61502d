#include "app/document/LabelTemplate.h"

#include <charconv>
#include <string_view>
#include <utility>

#include "app/document/UserError.h"
#include "zrannotations/LabelContent.h"

namespace zrsheet {
namespace {

using zrannotations::LabelContent;
using Content = du::SmartPtr<LabelContent>;

constexpr std::string_view kLineBreak = "line";

Content Reference(const std::string& group, const std::string& name) {
    return Content(new LabelContent(group, name, zrannotations::TextProperties()));
}

/// A property of what stands at `scope` of the part.
Content Property(const std::string& name, const std::string& scope) {
    return Content(new LabelContent("", name, "Value", scope, zrannotations::TextProperties()));
}

/// The name behind a prefix such as "parent:"; "" for none.
std::string NameBehind(const std::string& placeholder, std::string_view prefix) {
    return placeholder.starts_with(prefix) ? placeholder.substr(prefix.size()) : std::string();
}

Content Placeholder(const std::string& name, const std::string& labelTemplate) {
    if (name == "item") return Reference("System", "zrITM");
    if (name == "quantity") return Reference("System", "zrQTY");
    if (name == "tag") return Reference("System", "zrTAG");
    if (name == "name") return Reference("", "Name");
    if (const auto own = NameBehind(name, "property:"); !own.empty()) return Reference("", own);
    if (const auto parent = NameBehind(name, "parent:"); !parent.empty()) return Property(parent, "Parent");
    if (const auto root = NameBehind(name, "root:"); !root.empty()) return Property(root, "Root");
    if (const auto file = NameBehind(name, "file:"); !file.empty()) return Reference("Document", file);
    throw UserError("template '" + labelTemplate + "': {" + name +
                    "} is not known; use {item}, {quantity}, {tag}, {name}, {property:NAME}, {parent:NAME}, "
                    "{root:NAME}, {file:NAME} or {line}, and {{ for a brace");
}

/// Collects literal text between the placeholders.
class TemplateParser {
public:
    explicit TemplateParser(const std::string& text) : m_text(text) {}

    zrannotations::TAnnotation::Contents Parse() {
        while (m_at < m_text.size()) Step();
        FlushLiteral();
        return std::move(m_contents);
    }

private:
    void Step() {
        const char c = m_text[m_at];
        const bool isBrace = c == '{' || c == '}';
        if (!isBrace || m_text.compare(m_at, 2, std::string(2, c)) == 0) {
            m_literal += c;
            m_at += isBrace ? 2 : 1;
            return;
        }
        const std::size_t end = c == '{' ? m_text.find('}', m_at) : std::string::npos;
        if (end == std::string::npos) {
            throw UserError("template '" + m_text + "': the brace at character " + std::to_string(m_at + 1) +
                            " has no partner; write it twice for a brace in the text");
        }
        const std::string name = m_text.substr(m_at + 1, end - m_at - 1);
        m_at = end + 1;
        if (name == kLineBreak) {
            m_literal += '\n';
            return;
        }
        FlushLiteral();
        m_contents.push_back(Placeholder(name, m_text));
    }

    void FlushLiteral() {
        if (!m_literal.empty())
            m_contents.emplace_back(new LabelContent(m_literal, zrannotations::TextProperties()));
        m_literal.clear();
    }

    const std::string& m_text;
    std::size_t m_at = 0;
    std::string m_literal;
    zrannotations::TAnnotation::Contents m_contents;
};

}  // namespace

zrannotations::TAnnotation::Contents ParseLabelTemplate(const std::string& text) {
    if (text.empty()) throw UserError("template: it is empty; use {item} for item numbers");
    return TemplateParser(text).Parse();
}

void CheckLabelTemplate(const std::string& text, const std::map<std::string, std::string>& translations) {
    std::size_t placeholders = 0;
    for (const auto& content : ParseLabelTemplate(text)) placeholders += content->Kind() == 0 ? 0 : 1;
    for (const auto& [language, translation] : translations) {
        std::string complaint("translation '");
        complaint.append(translation).append("' of template '").append(text).append("': ");
        if (translation.empty()) throw UserError(complaint + "it is empty; leave it out");
        for (std::size_t at = 0; (at = translation.find_first_of("{}", at)) != std::string::npos;) {
            std::size_t number = 0;
            const char* begin = translation.data() + at + 1;
            const auto [end, error] = std::from_chars(begin, translation.data() + translation.size(), number);
            const bool isClosed = translation[at] == '{' && error == std::errc() && *end == '}';
            if (!isClosed || number >= placeholders) {
                throw UserError(complaint + "braces hold numbers of placeholders, of which the text has " +
                                std::to_string(placeholders) + "; {0} is the first one");
            }
            at = static_cast<std::size_t>(end - translation.data()) + 1;
        }
    }
}

}  // namespace zrsheet
