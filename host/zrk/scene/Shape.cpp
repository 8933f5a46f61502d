#include "zrk/scene/Shape.h"

namespace zrk {

Shape::~Shape() = default;

}  // namespace zrk
