#include "zrk/object/PropertyValue.h"

namespace zrk {

PropertyValue::~PropertyValue() = default;

}  // namespace zrk
