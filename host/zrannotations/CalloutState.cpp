#include "zrannotations/CalloutState.h"

#include "zrannotations/Callout.h"

namespace zrannotations {

// Here and not in the struct, where the members' type is not complete yet.
bool operator==(const CalloutState& a, const CalloutState& b) = default;

}  // namespace zrannotations
