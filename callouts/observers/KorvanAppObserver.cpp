#include "callouts/observers/KorvanAppObserver.h"

#include "callouts/Callouts.h"

namespace zrcallouts {

KorvanAppObserver::~KorvanAppObserver() = default;

void KorvanAppObserver::Regenerate() {
    if (const auto engine = m_owner.Lock()) engine->RegenerateCalloutLabels();
}

}  // namespace zrcallouts
