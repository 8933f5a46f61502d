// A component put into the document by itself, such as a 3-D symbol.

#pragma once

#include "du/Symbol.h"
#include "zrk/object/Object.h"

namespace zrk {

class ComponentInstance : public Object {
public:
    explicit ComponentInstance(const du::Symbol& id) : m_id(id) {}
    ~ComponentInstance() override;

    void GetID(du::Symbol& id) const { id = m_id; }

private:
    const du::Symbol m_id;
};

}  // namespace zrk
