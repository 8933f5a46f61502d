// A named value of a part.

#pragma once

#include <string>

#include "du/RefCounted.h"
#include "du/Symbol.h"

namespace zrk {

/// Never changes once made.
class Property : public virtual du::RefCounted {
public:
    Property(const du::Symbol& name, const du::Symbol& value) : m_name(name), m_value(value) {}
    ~Property() override;

    void GetName(du::Symbol& name) const { name = m_name; }
    /// `shownPart` picks an aspect of the value; an aspect that the property does not know gives the plain
    /// value.
    virtual bool GetValue(du::Symbol& value, const std::string& shownPart) const;

private:
    du::Symbol m_name;
    du::Symbol m_value;
};

}  // namespace zrk
