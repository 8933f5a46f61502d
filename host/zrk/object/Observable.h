// An object whose notifications can be held back and delivered together.

#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "du/RefCounted.h"
#include "du/SmartPtr.h"

namespace zrk {

/// Any thread.
class Observable : public virtual du::RefCounted {
public:
    /// While a group is open notifications wait, equal ones once. When the outermost group closes they are
    /// delivered, framed by begin and end, on the closing thread.
    class UpdateGroup {
    public:
        explicit UpdateGroup(const du::SmartPtr<Observable>& observable);
        UpdateGroup(const UpdateGroup&) = delete;
        UpdateGroup& operator=(const UpdateGroup&) = delete;
        ~UpdateGroup();

    private:
        du::SmartPtr<Observable> m_observable;
    };

    ~Observable() override;

protected:
    /// What makes two notifications equal: the kind of event and the id it is about.
    using EventKey = std::pair<int, std::uint64_t>;

    /// Delivers now, framed by begin and end, or later when a group is open. `deliver` must not hold a lock.
    void Notify(const EventKey& key, std::function<void()> deliver);

    virtual void NotifyBeginUpdate() = 0;
    virtual void NotifyEndUpdate() = 0;

private:
    void OpenGroup();
    void CloseGroup();

    std::mutex m_groupMutex;  // guards all below
    unsigned m_openGroups = 0;
    std::set<EventKey> m_waitingKeys;
    std::vector<std::function<void()>> m_waiting;
};

}  // namespace zrk
