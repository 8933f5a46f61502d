#include "zrk/object/Property.h"

namespace zrk {

Property::~Property() = default;

bool Property::GetValue(du::Symbol& value, const std::string&) const {
    value = m_value;
    return true;
}

}  // namespace zrk
