// What is kept of a callout for undo, and how it is put back.

#include <algorithm>
#include <iterator>
#include <utility>

#include "zrannotations/Callout.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/scene/Scene.h"

namespace zrannotations {
namespace {

/// Whether observers that file callouts by what they lead to would file the two differently.
bool AreFiledAlike(const CalloutState& a, const CalloutState& b) {
    const auto isSameEnd = [](const LeaderState& x, const LeaderState& y) {
        return x.part == y.part && x.assembly == y.assembly && x.instanceId == y.instanceId &&
               x.inset == y.inset;
    };
    const auto isSameMember = [](const CalloutMember& x, const CalloutMember& y) {
        return x.callout == y.callout && AreFiledAlike(x.state, y.state);
    };
    return a.itemId == b.itemId && a.definitionId == b.definitionId && a.isCustom == b.isCustom &&
           std::equal(a.leaders.begin(), a.leaders.end(), b.leaders.begin(), b.leaders.end(), isSameEnd) &&
           std::equal(a.members.begin(), a.members.end(), b.members.begin(), b.members.end(), isSameMember);
}

}  // namespace

du::SmartPtr<zrk::Memento> Callout::MakeMemento() {
    return new zrk::StateMemento<Callout>(du::SmartPtr<Callout>(this));
}

void Callout::SetHolder(const std::shared_ptr<du::BackLink<Callout>>& holder) {
    const std::lock_guard hold(m_mutex);
    m_holder = holder;
}

du::SmartPtr<Callout> Callout::GetHolder() const {
    std::shared_ptr<du::BackLink<Callout>> link;
    {
        const std::lock_guard hold(m_mutex);
        link = m_holder;
    }
    return link ? link->Lock() : nullptr;
}

void Callout::KeepState() {
    Annotation::KeepState();
    if (const auto holder = GetHolder()) holder->KeepState();
}

CalloutState Callout::CaptureState() const {
    CalloutState state;
    state.localizable = m_localizable;
    state.viewId = GetViewId();
    const std::lock_guard hold(m_mutex);
    state.leaders.reserve(m_leaders.size());
    for (const auto& leader : m_leaders) {
        state.leaders.push_back({leader->m_anchor, leader->m_shapeInstance, leader->m_assembly,
                                 leader->m_instanceId, leader->m_inset, leader->m_symbolId,
                                 leader->m_isHidden, leader->m_collapsed});
    }
    state.definitionId = m_definitionId;
    state.type = m_type;
    state.isInitialized = m_isInitialized;
    state.isKit = m_isKit;
    state.isCustom = m_isCustom;
    state.isAnchorCalculated = m_isAnchorCalculated;
    state.itemId = m_itemId;
    state.text = m_text;
    state.localizedText = m_localizedText;
    state.legacyText = m_legacyText;
    state.position = m_position;
    state.screenView = m_screenView;
    state.pixel = m_pixel;
    state.style = m_style;
    return state;
}

Callout::LeaderPtr Callout::MakeLeader(const LeaderState& state) {
    const LeaderPtr leader(new CalloutLeader(state.anchor, state.instanceId));
    leader->m_shapeInstance = state.part;
    leader->m_assembly = state.assembly;
    leader->m_inset = state.inset;
    leader->m_symbolId = state.symbolId;
    leader->m_isHidden = state.isHidden;
    leader->m_collapsed = state.isCollapsed;
    return leader;
}

// Flags that are derived from the view stay with a leader as long as it ends on the same part. Answers to
// picks may be changing them on another thread until they are taken over.
void Callout::TakeOverFlags(const std::vector<LeaderPtr>& leaders) const {
    for (std::size_t i = 0; i < std::min(leaders.size(), m_leaders.size()); ++i) {
        CalloutLeader& leader = *leaders[i];
        const CalloutLeader& former = *m_leaders[i];
        if (former.m_shapeInstance != leader.m_shapeInstance) continue;
        leader.m_isClipped = former.m_isClipped && former.m_inset == leader.m_inset;
        leader.m_isDashed = former.m_isDashed;
        leader.m_isDim = former.m_isDim;
        leader.m_dimColor = former.m_dimColor;
    }
}

void Callout::AssignState(const CalloutState& state) {
    if (CaptureState().definitionId != state.definitionId) {
        UpdateDefinition(FindCalloutTemplate(state.definitionId));
    }
    ChangeItem(state.itemId);
    m_localizable = state.localizable;
    SetViewId(state.viewId);
    std::vector<LeaderPtr> leaders;
    leaders.reserve(state.leaders.size());
    std::transform(state.leaders.begin(), state.leaders.end(), std::back_inserter(leaders), MakeLeader);
    const std::lock_guard hold(m_mutex);
    TakeOverFlags(leaders);
    m_leaders.swap(leaders);
    m_definitionId = state.definitionId;
    m_type = state.type;
    m_isInitialized = state.isInitialized;
    m_isKit = state.isKit;
    m_isCustom = state.isCustom;
    m_isAnchorCalculated = state.isAnchorCalculated;
    m_text = state.text;
    m_localizedText = state.localizedText;
    m_legacyText = state.legacyText;
    m_position = state.position;
    m_screenView = state.screenView;
    m_pixel = state.pixel;
    m_style = state.style;
}

void Callout::RestoreState(const CalloutState& state) {
    const CalloutState now = CaptureState();
    if (now == state) return;
    BeforeChange();
    const du::SmartPtr<zrk::Annotation> self(this);
    const auto scene = GetScene();
    du::SmartPtr<zrk::AnnoSet> annoSet;
    if (scene) scene->GetAnnoSet(annoSet);
    const bool isShown = annoSet && annoSet->Contains(self);
    // A callout that leads nowhere would not be let in again.
    const bool canEnter = state.type == CALLOUT_TYPE_FREE || !state.leaders.empty();
    if (isShown && canEnter && !AreFiledAlike(now, state)) {
        const auto& observers = scene->GetObservers();
        observers.NotifyAll([&](zrk::SceneObserver& observer) { observer.OnAnnotationRemoved(self); });
        AssignState(state);
        observers.NotifyAll([&](zrk::SceneObserver& observer) { observer.OnAnnotationAdded(self); });
    }
    AssignState(state);
    MarkDirty();
}

void Callout::LeadThrough(const du::SmartPtr<Inset>& inset, unsigned position) {
    CalloutState state = CaptureState();
    if (position >= state.leaders.size()) return;
    state.leaders[position].inset = inset;
    RestoreState(state);
    SetVisibleWithinInsetBounds(inset);
    NotifyModified();
}

}  // namespace zrannotations
