// Something that explains a scene: a callout, a symbol, an inset.

#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include "du/BackLink.h"
#include "du/LeafLock.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "zrk/object/Object.h"
#include "zrk/operation/History.h"
#include "zrk/operation/Memento.h"

namespace zrk {

class Scene;

/// Any thread.
class Annotation : public Object {
public:
    static const ClassType CLASS_TYPE;

    Annotation();
    ~Annotation() override;

    const ClassType& GetClassType() const override { return CLASS_TYPE; }

    /// Never 0; unique in the process.
    unsigned Id() const { return m_id; }
    /// The scene whose annotation set the annotation is in; null outside one.
    du::SmartPtr<Scene> GetScene() const;
    virtual du::Symbol GetClass() const = 0;
    /// The bits under which annotation sets count this kind of annotation.
    virtual unsigned GetCountMask() const { return 0; }
    /// Annotations that make no sense without this one.
    virtual std::vector<du::SmartPtr<Annotation>> GetDependents() const { return {}; }

    /// The view in which it was made; 0 for none.
    unsigned GetViewId() const { return m_viewId.load(std::memory_order_relaxed); }
    void SetViewId(unsigned viewId);

    /// What undo restores, as it is now; null for annotations that never change.
    virtual du::SmartPtr<Memento> MakeMemento() { return nullptr; }

protected:
    /// To be called, without a lock, before anything changes that the memento holds. A load and a branch
    /// while no transaction is open.
    void BeforeChange() {
        if (History::IsAnyActive()) KeepState();
    }
    /// Lets the scene's history keep the state.
    virtual void KeepState();
    /// Tells the scene's observers that the user changed the annotation, while the kernel answers what was
    /// asked once it has answered all; nothing outside a set. Call without a lock.
    void NotifyModified();

private:
    friend class AnnoSet;

    void Bind(std::shared_ptr<du::BackLink<Scene>> scene);
    void TellModified();

    const unsigned m_id;
    std::atomic<unsigned> m_viewId{0};
    mutable du::LeafLock m_sceneMutex;  // guards m_scene
    std::shared_ptr<du::BackLink<Scene>> m_scene;
};

}  // namespace zrk
