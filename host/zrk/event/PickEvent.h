// A pick on its way: the view fills in what was met, nearest first, then completes it.

#pragma once

#include <utility>
#include <vector>

#include "du/UserData.h"
#include "zrk/event/AsyncEvent.h"
#include "zrk/event/PickResult.h"

namespace zrk {

class PickEvent : public AsyncEvent, public du::UserData {
public:
    ~PickEvent() override;

    /// Filled before the event completes, and not changed after.
    const std::vector<PickResult>& GetResults() const { return m_results; }
    void SetResults(std::vector<PickResult> results) { m_results = std::move(results); }

private:
    std::vector<PickResult> m_results;
};

}  // namespace zrk
