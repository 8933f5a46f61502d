#include "zrk/scene/PickQueue.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "zrk/scene/PickScene.h"
#include "zrk/world/Kernel.h"

namespace zrk {
namespace {

constexpr int kCancelled = 1;

/// The scene's parts as they stand at each pick: an answer may change them.
class Parts {
public:
    explicit Parts(const ShapeScene& scene) : m_scene(scene) {}

    const PickScene& Get() {
        const std::uint64_t revision = m_scene.GetRevision();
        if (!m_parts || revision != m_revision) m_parts = m_scene.GetPickScene();
        m_revision = revision;
        return *m_parts;
    }

private:
    const ShapeScene& m_scene;
    std::shared_ptr<const PickScene> m_parts;
    std::uint64_t m_revision = 0;
};

}  // namespace

void PickQueue::Add(Pick pick, const du::SmartPtr<ShapeScene>& scene) {
    if (!Append(std::move(pick))) return;
    const auto answer = [self = shared_from_this(), scene](int status) {
        self->AnswerAll(scene ? status : kCancelled, scene.get());
    };
    if (const auto kernel = Kernel::GetKernel()) {
        kernel->Post(answer);
    } else {
        answer(kCancelled);
    }
}

/// Whether it is the first, for which the kernel must be asked.
bool PickQueue::Append(Pick pick) {
    const std::lock_guard hold(m_mutex);
    m_waiting.push_back(std::move(pick));
    return m_waiting.size() == 1;
}

void PickQueue::AnswerAll(int status, const ShapeScene* scene) {
    std::vector<Pick> picks;
    {
        const std::lock_guard hold(m_mutex);
        picks.swap(m_waiting);
    }
    std::optional<Parts> parts;
    if (status == 0) parts.emplace(*scene);
    for (Pick& pick : picks) {
        const auto event = std::exchange(pick.event, nullptr);
        if (parts) {
            event->SetResults(pick.only ? parts->Get().PickOnly(*pick.only, pick.ray, pick.flags)
                                        : parts->Get().Pick(pick.ray, pick.flags));
        }
        event->Complete(status);
    }
}

}  // namespace zrk
