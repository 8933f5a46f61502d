#include "zrk/illustration/CollectionItem.h"

namespace zrk::illustration {

CollectionItem::~CollectionItem() = default;

}  // namespace zrk::illustration
