// What exists once in the application: the tree, the annotation sets, the task pool, the language.

#pragma once

#include <mutex>
#include <string>

#include "dom/ManagedObject.h"
#include "dom/ObserverList.h"
#include "du/SmartPtr.h"
#include "du/TaskPool.h"
#include "zrk/annotation/AnnoSetTable.h"
#include "zrk/tree/Tree.h"
#include "zrk/world/MultiRootContainer.h"
#include "zrk/world/WorldObserver.h"

namespace zrk {

/// Any thread.
class World : public dom::ManagedObject {
public:
    /// Null before Start and after Stop.
    static du::SmartPtr<World> GetWorld();
    static void Start(unsigned poolThreads);
    /// Waits for running tasks and aborts queued ones.
    static void Stop();

    ~World() override;

    du::Symbol GetObjectClass() const override;

    /// `keep`: also when another document is opened. This host opens one document a process, so all are kept.
    void RegisterObserver(const du::SmartPtr<WorldObserver>& observer, bool keep);
    void DeregisterObserver(const du::SmartPtr<WorldObserver>& observer) { m_observers.Unregister(observer); }

    const du::SmartPtr<Tree>& GetTree() const { return m_tree; }
    const du::SmartPtr<AnnoSetTable>& GetAnnoSetTable() const { return m_annoSetTable; }
    /// Lives as long as the world.
    du::TaskPool* GetTaskPool() { return &m_taskPool; }
    /// Null while no document is open.
    du::SmartPtr<MultiRootContainer> GetMRC() const;
    void SetMRC(const du::SmartPtr<MultiRootContainer>& container);

    /// Switches the language of the user interface ("en", "de" ...) and tells the observers. False, and
    /// nothing happens, for a language that has no texts.
    bool SetLanguage(const std::string& language);

private:
    explicit World(unsigned poolThreads);

    const du::SmartPtr<Tree> m_tree;
    const du::SmartPtr<AnnoSetTable> m_annoSetTable;
    dom::ObserverList<WorldObserver> m_observers;
    mutable std::mutex m_mutex;  // guards m_container
    du::SmartPtr<MultiRootContainer> m_container;
    du::TaskPool m_taskPool;
};

}  // namespace zrk
