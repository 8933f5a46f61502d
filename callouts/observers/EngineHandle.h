// The one way from the engine's observers back to their engine. The host keeps observers longer than the
// engine lives and notifies them on any thread; a bare pointer would then reach a dead engine.

#pragma once

#include <atomic>
#include <memory>
#include <utility>

#include "du/BackLink.h"
#include "du/SmartPtr.h"

namespace zrcallouts {

class Callouts;

/// Shared by all observers of one engine; closed by the engine's destructor.
class EngineHandle : public du::BackLink<Callouts> {
public:
    using BackLink::BackLink;
};

/// An observer's own link to the engine, which it can drop while the engine lives on. Any thread.
class EngineLink {
public:
    explicit EngineLink(std::shared_ptr<EngineHandle> handle) : m_handle(std::move(handle)) {}

    /// A counted reference to the engine; null when detached, or when the engine is gone.
    du::SmartPtr<Callouts> Lock() const;
    void Detach() { m_detached.store(true, std::memory_order_release); }
    bool IsDetached() const { return m_detached.load(std::memory_order_acquire); }

private:
    const std::shared_ptr<EngineHandle> m_handle;
    std::atomic<bool> m_detached{false};
};

}  // namespace zrcallouts
