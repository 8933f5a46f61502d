// Rebuilds the labels once after a burst of property changes in the model tree.

#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "callouts/observers/EngineHandle.h"
#include "zrk/tree/Tree.h"
#include "zrk/tree/TreeObserver.h"

namespace zrcallouts {

class TreeObserver : public zrk::TreeObserver {
public:
    explicit TreeObserver(std::shared_ptr<EngineHandle> handle) : m_owner(std::move(handle)) {}
    ~TreeObserver() override;

    du::Symbol GetObjectClass() const override;
    int OnDestroy() override;
    void OnBeginUpdate() override { m_changed = false; }
    void OnEndUpdate() override;
    /// Parts that come and go reach the engine through its scene.
    void OnInstanceInserted(const du::SmartPtr<zrk::Instance>&) override {}
    void OnInstanceDeleted(const du::SmartPtr<zrk::Instance>&) override {}
    void OnInstancePropertyValueChanged(const du::SmartPtr<zrk::Instance>&) override { m_changed = true; }

    /// Registers with the tree of the world, if there is one.
    void Attach();
    /// The observed tree; null before Attach and after OnDestroy.
    du::SmartPtr<zrk::Tree> GetTree() const;

    EngineLink m_owner;

private:
    mutable std::mutex
        m_mutex;  // guards m_tree: the tree may go on one thread while the engine detaches on another
    du::SmartPtr<zrk::Tree> m_tree;
    std::atomic<bool> m_changed{false};
};

}  // namespace zrcallouts
