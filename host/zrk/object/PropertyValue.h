// The outcome of a property look-up.

#pragma once

#include "du/RefCounted.h"
#include "du/Symbol.h"

namespace zrk {

class PropertyValue : public virtual du::RefCounted {
public:
    explicit PropertyValue(const du::Symbol& symbol) : m_symbol(symbol) {}
    ~PropertyValue() override;

    du::Symbol GetSymbol() const { return m_symbol; }

private:
    du::Symbol m_symbol;
};

}  // namespace zrk
