// A piece of a callout template: literal text, or a reference to a property of the part or of its item.

#pragma once

#include <string>
#include <utility>

#include "du/RefCounted.h"
#include "zrannotations/TextProperties.h"

namespace zrannotations {

/// Never changes once made.
class LabelContent : public virtual du::RefCounted {
public:
    /// Literal text.
    LabelContent(std::string text, const TextProperties& textProperties)
        : m_textOrGroup(std::move(text)), m_textProperties(textProperties) {}
    /// The value of a property.
    LabelContent(std::string group, std::string name, const TextProperties& textProperties)
        : m_kind(1),
          m_textOrGroup(std::move(group)),
          m_propertyName(std::move(name)),
          m_textProperties(textProperties) {}
    /// An aspect of a property ("Value", "Name" ...) of the part, of its "Parent" or of its "Root".
    LabelContent(std::string group, std::string name, std::string shownPart, std::string scope,
                 const TextProperties& textProperties)
        : m_kind(1),
          m_textOrGroup(std::move(group)),
          m_propertyName(std::move(name)),
          m_shownPart(std::move(shownPart)),
          m_scope(std::move(scope)),
          m_textProperties(textProperties) {}
    ~LabelContent() override;

    /// 0: literal text, 1: a reference.
    unsigned Kind() const { return m_kind; }
    const TextProperties& TextProps() const { return m_textProperties; }
    const std::string& TextOrGroup() const { return m_textOrGroup; }
    const std::string& PropertyName() const { return m_propertyName; }
    const std::string& ShownPart() const { return m_shownPart; }
    /// "" is the part itself.
    const std::string& InstanceScope() const { return m_scope; }

private:
    unsigned m_kind = 0;
    std::string m_textOrGroup;
    std::string m_propertyName;
    std::string m_shownPart;
    std::string m_scope;
    TextProperties m_textProperties;
};

}  // namespace zrannotations
