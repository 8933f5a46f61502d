// The observers of one object. Notifications go over a counted copy with no lock held, so an observer may
// register and unregister anybody, itself included, or let the observed object go.

#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "du/SmartPtr.h"

namespace dom {

/// Any thread. Observers are told in the order in which they registered. Registering and unregistering cost
/// O(log n).
template <class T>
class ObserverList {
public:
    ObserverList() = default;
    ObserverList(const ObserverList&) = delete;
    ObserverList& operator=(const ObserverList&) = delete;
    ~ObserverList() {
        for (const auto& [place, observer] : m_inOrder) observer->RemoveRegistration();
    }

    /// Null and known observers are passed over.
    void Register(const du::SmartPtr<T>& observer) {
        if (!observer) return;
        const std::lock_guard hold(m_mutex);
        if (!m_places.emplace(observer.get(), m_registered).second) return;
        observer->AddRegistration();
        m_inOrder.emplace_hint(m_inOrder.end(), m_registered++, observer);
    }

    /// Does not wait for a notification in flight.
    void Unregister(const du::SmartPtr<T>& observer) {
        du::SmartPtr<T> removed;
        {
            const std::lock_guard hold(m_mutex);
            const auto place = m_places.find(observer.get());
            if (place == m_places.end()) return;
            const auto entry = m_inOrder.find(place->second);
            removed = entry->second;
            m_inOrder.erase(entry);
            m_places.erase(place);
        }
        removed->RemoveRegistration();
    }

    std::vector<du::SmartPtr<T>> Snapshot() const {
        std::vector<du::SmartPtr<T>> observers;
        const std::lock_guard hold(m_mutex);
        observers.reserve(m_inOrder.size());
        for (const auto& [place, observer] : m_inOrder) observers.push_back(observer);
        return observers;
    }

    /// Calls `notify(observer)` for each.
    template <class Notify>
    void NotifyAll(Notify notify) const {
        for (const auto& observer : Snapshot()) notify(*observer);
    }

private:
    mutable std::mutex m_mutex;                          // guards all below
    std::map<std::uint64_t, du::SmartPtr<T>> m_inOrder;  // by place, which grows with each registration
    std::unordered_map<const T*, std::uint64_t>
        m_places;  // a template may have an observer for each of its callouts
    std::uint64_t m_registered = 0;
};

}  // namespace dom
