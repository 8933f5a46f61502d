// An entry of a collection of templates.

#pragma once

#include <string>
#include <utility>

#include "du/RefCounted.h"

namespace zrk::illustration {

/// Never changes once made.
class CollectionItem : public virtual du::RefCounted {
public:
    CollectionItem(std::string name, bool isCustom) : m_name(std::move(name)), m_isCustom(isCustom) {}
    ~CollectionItem() override;

    const std::string& GetName() const { return m_name; }
    /// False for what the standard collection brings.
    bool IsCustom() const { return m_isCustom; }

private:
    std::string m_name;
    bool m_isCustom;
};

}  // namespace zrk::illustration
