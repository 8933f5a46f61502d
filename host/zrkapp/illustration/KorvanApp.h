// The illustration application.

#pragma once

#include <atomic>

#include "dom/ObserverList.h"
#include "du/SmartPtr.h"
#include "zrk/object/Object.h"
#include "zrkapp/illustration/KorvanAppObserver.h"

namespace zrkapp::illustration {

/// Any thread.
class KorvanApp : public zrk::Object {
public:
    /// Null before Start and after Stop.
    static du::SmartPtr<KorvanApp> GetKorvanApp();
    static void Start();
    static void Stop();

    ~KorvanApp() override;

    void RegisterObserver(const du::SmartPtr<KorvanAppObserver>& observer) { m_observers.Register(observer); }
    void UnregisterObserver(const du::SmartPtr<KorvanAppObserver>& observer) {
        m_observers.Unregister(observer);
    }
    const dom::ObserverList<KorvanAppObserver>& GetObservers() const { return m_observers; }

    /// Whether documents are being published unattended, with the texts that they were saved with.
    bool IsBatchPublishing() const { return m_isBatchPublishing.load(std::memory_order_relaxed); }
    void SetBatchPublishing(bool isBatch) { m_isBatchPublishing.store(isBatch, std::memory_order_relaxed); }

private:
    KorvanApp();

    dom::ObserverList<KorvanAppObserver> m_observers;
    std::atomic<bool> m_isBatchPublishing{false};  // alone: no other field goes with it
};

}  // namespace zrkapp::illustration
