#include "zrk/tree/Tree.h"

namespace zrk {

Tree::~Tree() = default;

void Tree::RegisterObserver(const du::SmartPtr<TreeObserver>& observer, bool) { Register(observer); }

}  // namespace zrk
