#include "zrk/operation/StateJournal.h"

#include <algorithm>
#include <utility>

namespace zrk {

StateJournal::StateJournal(du::SmartPtr<AnnoSet> annoSet, std::shared_ptr<const StateJournal> except)
    : m_annoSet(std::move(annoSet)), m_except(std::move(except)) {}

StateJournal::~StateJournal() = default;

StateJournal::Kept StateJournal::Capture(const du::SmartPtr<Annotation>& annotation) const {
    return {annotation, m_annoSet->GetMembership(annotation), annotation->MakeMemento()};
}

void StateJournal::Keep(const du::SmartPtr<Annotation>& annotation) {
    if (m_except && m_except->Contains(annotation)) return;
    const std::lock_guard hold(m_mutex);
    if (m_isClosed) return;
    if (m_places.emplace(annotation.get(), m_kept.size()).second) m_kept.push_back(Capture(annotation));
}

bool StateJournal::Contains(const du::SmartPtr<Annotation>& annotation) const {
    const std::lock_guard hold(m_mutex);
    return m_places.count(annotation.get()) != 0;
}

bool StateJournal::IsEmpty() const {
    const std::lock_guard hold(m_mutex);
    return m_kept.empty();
}

std::vector<StateJournal::Kept> StateJournal::AllKept() const {
    const std::lock_guard hold(m_mutex);
    return m_kept;
}

std::shared_ptr<const StateJournal> StateJournal::CaptureChanged() {
    const auto now = std::make_shared<StateJournal>(m_annoSet);
    std::vector<Kept> unchanged;  // released after the lock
    const std::lock_guard hold(m_mutex);
    m_isClosed = true;
    std::vector<Kept> kept = std::exchange(m_kept, {});
    m_places.clear();
    for (auto& before : kept) {
        Kept after = Capture(before.annotation);
        const bool isSame =
            before.membership == after.membership && (!before.state || before.state->Equals(*after.state));
        if (isSame) {
            unchanged.push_back(std::move(before));
            continue;
        }
        m_places.emplace(before.annotation.get(), m_kept.size());
        m_kept.push_back(std::move(before));
        now->m_kept.push_back(std::move(after));
    }
    now->m_places = m_places;
    return now;
}

// First all that leaves, so that nobody is filed twice; then what stays, or stays away, takes its state, the
// first change's last; then all that comes in, in the order of the set. What comes in has its state before it
// is seen, and again after the observers have had their say.
void StateJournal::Restore() const {
    const std::vector<Kept> all = AllKept();
    std::vector<const Kept*> leaving;
    std::vector<const Kept*> staying;
    std::vector<const Kept*> entering;
    for (const Kept& kept : all) {
        const auto now = m_annoSet->GetMembership(kept.annotation);
        (kept.membership == now ? staying : kept.membership.place ? entering : leaving).push_back(&kept);
    }
    const auto isBefore = [](const Kept* a, const Kept* b) {
        return a->membership.place < b->membership.place;
    };
    std::sort(entering.begin(), entering.end(), isBefore);
    const auto putState = [](const Kept& kept) {
        if (kept.state) kept.state->Restore();
    };
    std::for_each(leaving.rbegin(), leaving.rend(), [&](const Kept* kept) {
        m_annoSet->SetMembership(kept->annotation, kept->membership);
        putState(*kept);
    });
    std::for_each(staying.rbegin(), staying.rend(), [&](const Kept* kept) { putState(*kept); });
    std::for_each(entering.rbegin(), entering.rend(), [&](const Kept* kept) { putState(*kept); });
    for (const Kept* kept : entering) {
        m_annoSet->SetMembership(kept->annotation, kept->membership);
        putState(*kept);
    }
}

}  // namespace zrk
