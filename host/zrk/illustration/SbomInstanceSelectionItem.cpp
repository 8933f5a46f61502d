#include "zrk/illustration/SbomInstanceSelectionItem.h"

namespace zrk::illustration {

SbomInstanceSelectionItem::~SbomInstanceSelectionItem() = default;

}  // namespace zrk::illustration
