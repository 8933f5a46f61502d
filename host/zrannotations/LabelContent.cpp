#include "zrannotations/LabelContent.h"

namespace zrannotations {

LabelContent::~LabelContent() = default;

}  // namespace zrannotations
