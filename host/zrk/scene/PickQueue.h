// The picks of one view that wait for the kernel to dispatch.

#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "dg/Ray.h"
#include "du/Flags.h"
#include "du/SmartPtr.h"
#include "zrk/event/PickEvent.h"
#include "zrk/scene/ShapeScene.h"

namespace zrk {

/// Any thread. Whatever has come by then is answered together, in its order, when the kernel gets to the
/// first: views send picks by the ten thousand, and each alone would cost as much again as its ray.
class PickQueue : public std::enable_shared_from_this<PickQueue> {
public:
    struct Pick {
        du::SmartPtr<PickEvent> event;
        du::SmartPtr<ShapeInstance> only;  // null: all parts are in the way
        dg::Ray ray;
        du::Flags flags;
    };

    /// The event completes with status 0 and what was met in `scene`, or with another status when the scene
    /// is null or the kernel stops before.
    void Add(Pick pick, const du::SmartPtr<ShapeScene>& scene);

private:
    bool Append(Pick pick);
    void AnswerAll(int status, const ShapeScene* scene);

    std::mutex m_mutex;  // guards m_waiting
    std::vector<Pick> m_waiting;
};

}  // namespace zrk
