// Tells the engine when the user-interface language changes.

#pragma once

#include <memory>

#include "callouts/observers/EngineHandle.h"
#include "dp/SpinLock.h"
#include "zrk/world/WorldObserver.h"

namespace zrcallouts {

class WorldObserver : public zrk::WorldObserver {
public:
    explicit WorldObserver(std::shared_ptr<EngineHandle> handle) : m_owner(std::move(handle)) {}
    ~WorldObserver() override;

    /// The engine keeps no preferences.
    void OnPreferencesChanged() override {}
    void OnLanguageChanged() override;

    /// Forgets the engine; a language change that is being forwarded is waited for. Requires: the caller
    /// holds no engine lock, for the forward needs one.
    void Detach();
    bool IsDetached() const { return m_owner.IsDetached(); }

private:
    EngineLink m_owner;
};

}  // namespace zrcallouts
