// Who enters a scene, and who leaves it.

#pragma once

#include <string>
#include <utility>

#include "zrk/scene/SceneObserver.h"

namespace zrtest {

/// Writes a plus for each annotation that enters, a minus for each that leaves.
class AnnotationLog : public zrk::SceneObserver {
public:
    void OnAnnotationAdded(const du::SmartPtr<zrk::Annotation>&) override { m_log += '+'; }
    void OnAnnotationRemoved(const du::SmartPtr<zrk::Annotation>&) override { m_log += '-'; }
    /// What was told since the last time.
    std::string Take() { return std::exchange(m_log, {}); }

private:
    std::string m_log;
};

}  // namespace zrtest
