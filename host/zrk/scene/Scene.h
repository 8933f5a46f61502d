// What is shown and annotated together: views, an annotation set, and the history of what was done.

#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "dom/ObserverList.h"
#include "du/BackLink.h"
#include "du/SmartPtr.h"
#include "zrk/object/Object.h"
#include "zrk/operation/History.h"
#include "zrk/scene/SceneObserver.h"

namespace zrk {

class AnnoSet;
class View;

/// Any thread.
class Scene : public Object {
public:
    static const ClassType CLASS_TYPE;

    Scene();
    ~Scene() override;

    const ClassType& GetClassType() const override { return CLASS_TYPE; }

    /// Null beyond the last view; the main view has index 0.
    void GetView(du::SmartPtr<View>& out, unsigned index = 0) const;
    du::SmartPtr<View> GetView(unsigned index = 0) const;
    void AddView(const du::SmartPtr<View>& view);
    bool HasView(const View& view) const;

    void GetAnnoSet(du::SmartPtr<AnnoSet>& out) const;
    History& GetHistory() { return m_history; }

    void RegisterObserver(const du::SmartPtr<SceneObserver>& observer) { m_observers.Register(observer); }
    void UnregisterObserver(const du::SmartPtr<SceneObserver>& observer) { m_observers.Unregister(observer); }
    const dom::ObserverList<SceneObserver>& GetObservers() const { return m_observers; }

    /// Tells the observers and lets go of history, annotations and views, which hold the scene. Call before
    /// the last use.
    void Close();

    const std::shared_ptr<du::BackLink<Scene>>& GetLink() const { return m_link; }

private:
    const std::shared_ptr<du::BackLink<Scene>> m_link;
    const du::SmartPtr<AnnoSet> m_annoSet;
    History m_history;
    dom::ObserverList<SceneObserver> m_observers;
    mutable std::mutex m_mutex;  // guards m_views
    std::vector<du::SmartPtr<View>> m_views;
};

}  // namespace zrk
