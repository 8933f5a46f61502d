#include "zrannotations/CalloutState.h"

#include "zrannotations/Callout.h"

namespace zrannotations {

// Here and not in the struct, where the members' type is not complete yet.
bool operator==(const CalloutState& a, const CalloutState& b) = default;

// Written out: states and members hold each other.
bool operator==(const CalloutMember& a, const CalloutMember& b) {
    return a.callout == b.callout && a.state == b.state;
}

}  // namespace zrannotations
