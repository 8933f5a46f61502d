// Told about what concerns the whole application.

#pragma once

#include "dom/Observer.h"

namespace zrk {

class WorldObserver : public dom::Observer {
public:
    virtual void EventHandler() {}
    virtual void OnPreferencesChanged() {}
    virtual void OnWorldReset() {}
    virtual void OnAnnoSetTableChanged() {}
    virtual void OnLanguageChanged() {}

    ~WorldObserver() override;
};

}  // namespace zrk
