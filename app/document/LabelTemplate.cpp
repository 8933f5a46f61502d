#include "app/document/LabelTemplate.h"

#include <string_view>
#include <utility>

#include "app/document/UserError.h"
#include "zrannotations/LabelContent.h"

namespace zrsheet {
namespace {

using zrannotations::LabelContent;
using Content = du::SmartPtr<LabelContent>;

constexpr std::string_view kPropertyPrefix = "property:";
constexpr std::string_view kLineBreak = "line";

Content Reference(const std::string& group, const std::string& name) {
    return Content(new LabelContent(group, name, zrannotations::TextProperties()));
}

Content Placeholder(const std::string& name, const std::string& labelTemplate) {
    if (name == "item") return Reference("System", "zrITM");
    if (name == "quantity") return Reference("System", "zrQTY");
    if (name == "tag") return Reference("System", "zrTAG");
    if (name == "name") return Reference("", "Name");
    if (name.starts_with(kPropertyPrefix) && name.size() > kPropertyPrefix.size()) {
        return Reference("", name.substr(kPropertyPrefix.size()));
    }
    throw UserError(
        "template '" + labelTemplate + "': {" + name +
        "} is not known; use {item}, {quantity}, {tag}, {name} or {property:NAME}, and {{ for a brace");
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

}  // namespace zrsheet
