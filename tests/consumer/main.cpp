// Makes an engine of the installed component: its libraries find one another, its texts and the headers are
// there.

#include <cstdio>
#include <exception>

#include "du/Localizer.h"
#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "zrk/illustration/Callouts.h"
#include "zrk/world/ComponentLibrary.h"
#include "zrkapp/illustration/HostSession.h"

namespace {

int Fail(const char* what) {
    std::fprintf(stderr, "consumer: %s\n", what);
    return 1;
}

int MakeEngine() {
    const zrkapp::illustration::HostSession session(1);
    const du::Localizer messages("zrbase:zrmodulesStrings");
    if (messages.LocalizeMessage("142").empty()) return Fail("the message catalogues are not installed");

    const zrk::ComponentLibrary component("zrcallouts");
    du::SmartPtr<du::RefCounted> made;
    if (component.Create("create", "callouts", "nothing", made)) return Fail("unknown words made an object");
    if (!component.Create("create", "callouts", "calloutengine", made) || !made)
        return Fail("no engine was made");
    // Fails when the component carries a host of its own.
    if (dynamic_cast<zrk::illustration::Callouts*>(made.get()) == nullptr)
        return Fail("it is no engine of this host");
    return 0;
}

}  // namespace

int main() {
    try {
        return MakeEngine();
    } catch (const std::exception& error) {
        return Fail(error.what());
    }
}
