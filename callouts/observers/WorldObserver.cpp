#include "callouts/observers/WorldObserver.h"

#include <mutex>

#include "callouts/Callouts.h"

namespace zrcallouts {
namespace {

// One for all engines: held while a language change is forwarded and while an observer is detached, so that
// no engine is entered through an observer that is going. Always taken before an engine's lock.
constinit dp::SpinLock ownerLock;

class OwnerGuard {
public:
    OwnerGuard() { ownerLock.Lock(); }
    OwnerGuard(const OwnerGuard&) = delete;
    OwnerGuard& operator=(const OwnerGuard&) = delete;
    ~OwnerGuard() { ownerLock.Unlock(); }
};

}  // namespace

WorldObserver::~WorldObserver() = default;

void WorldObserver::OnLanguageChanged() {
    // Released after the spin lock: it may be the last reference, and freeing an engine detaches its
    // observer.
    du::SmartPtr<Callouts> engine;
    const OwnerGuard guard;
    engine = m_owner.Lock();
    if (engine) engine->OnLanguageChanged();
}

void WorldObserver::Detach() {
    const OwnerGuard guard;
    m_owner.Detach();
}

}  // namespace zrcallouts
