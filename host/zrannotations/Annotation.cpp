#include "zrannotations/Annotation.h"

namespace zrannotations {

Annotation::~Annotation() = default;

}  // namespace zrannotations
