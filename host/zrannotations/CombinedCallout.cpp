#include "zrannotations/CombinedCallout.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include "zrk/annotation/AnnoSet.h"
#include "zrk/object/Checked.h"
#include "zrk/scene/Scene.h"

namespace zrannotations {

CombinedCallout::CombinedCallout(std::vector<du::SmartPtr<Callout>> members)
    : m_link(std::make_shared<du::BackLink<Callout>>(this)), m_members(std::move(members)) {
    HoldMembers();
    UpdateLeaderLine();
}

CombinedCallout::~CombinedCallout() { m_link->Close(); }

std::vector<du::SmartPtr<Callout>> CombinedCallout::GetCalloutVec() const {
    const std::lock_guard hold(m_membersMutex);
    return m_members;
}

void CombinedCallout::SetCalloutVec(std::vector<du::SmartPtr<Callout>> members) {
    BeforeChange();
    const std::lock_guard hold(m_membersMutex);
    m_members.swap(members);
}

std::shared_ptr<ItemIndex> CombinedCallout::Index() const {
    const std::lock_guard hold(m_membersMutex);
    return m_index;
}

void CombinedCallout::HoldMembers() {
    const auto index = Index();
    for (const auto& member : GetCalloutVec()) {
        if (!member) continue;
        member->SetHolder(m_link);
        if (index) member->FileItem({index, m_link});
    }
}

void CombinedCallout::ReleaseMembers() {
    if (!Index()) return;
    for (const auto& member : GetCalloutVec()) {
        if (member) member->FileItem({});
    }
}

void CombinedCallout::SetItemIndex(const std::shared_ptr<ItemIndex>& index) {
    ReleaseMembers();
    {
        const std::lock_guard hold(m_membersMutex);
        m_index = index;
    }
    HoldMembers();
}

du::SmartPtr<CombinedCallout> CombinedCallout::Combine(const std::vector<du::SmartPtr<Callout>>& callouts,
                                                       const du::SmartPtr<zrk::Operation>& operation) {
    const auto scene = callouts.empty() ? du::SmartPtr<zrk::Scene>() : callouts.front()->GetScene();
    const bool areTogether = std::all_of(callouts.begin(), callouts.end(),
                                         [&](const auto& callout) { return callout->GetScene() == scene; });
    if (!scene || !areTogether) return nullptr;
    du::SmartPtr<zrk::AnnoSet> annoSet;
    scene->GetAnnoSet(annoSet);
    std::vector<du::SmartPtr<Callout>> members;
    for (const auto& callout : callouts) {
        annoSet->RemoveAnnotationFromSet(callout, operation);
        const auto combined = du::DynamicCast<CombinedCallout>(callout);
        if (!combined) {
            members.push_back(callout);
        } else {
            const auto its = combined->GetCalloutVec();
            members.insert(members.end(), its.begin(), its.end());
        }
    }
    const du::SmartPtr<CombinedCallout> made(zrk::Checked(new CombinedCallout(std::move(members))));
    made->SetViewId(callouts.front()->GetViewId());
    made->SetStyle(callouts.front()->GetStyle());
    annoSet->AddAnnotationToSet(made, operation);
    return made;
}

std::vector<du::SmartPtr<Callout>> CombinedCallout::Dissolve(const du::SmartPtr<zrk::Operation>& operation) {
    const auto scene = GetScene();
    if (!scene) return {};
    du::SmartPtr<zrk::AnnoSet> annoSet;
    scene->GetAnnoSet(annoSet);
    const std::vector<du::SmartPtr<Callout>> members = GetCalloutVec();
    annoSet->RemoveAnnotationFromSet(du::SmartPtr<zrk::Annotation>(this), operation);
    for (const auto& member : members) annoSet->AddAnnotationToSet(member, operation);
    return members;
}

CalloutState CombinedCallout::CaptureState() const {
    CalloutState state = Callout::CaptureState();
    for (const auto& member : GetCalloutVec()) {
        state.members.push_back({member, member ? member->CaptureState() : CalloutState()});
    }
    return state;
}

void CombinedCallout::AssignState(const CalloutState& state) {
    Callout::AssignState(state);
    ReleaseMembers();
    std::vector<du::SmartPtr<Callout>> members;
    members.reserve(state.members.size());
    for (const auto& member : state.members) {
        if (member.callout) member.callout->RestoreState(member.state);
        members.push_back(member.callout);
    }
    {
        const std::lock_guard hold(m_membersMutex);
        m_members.swap(members);
    }
    HoldMembers();
    if (!GetDependents().empty()) ReattachChildren();
}

bool CombinedCallout::HasItemId() const {
    const auto members = GetCalloutVec();
    return std::any_of(members.begin(), members.end(),
                       [](const auto& member) { return member && member->HasItemId(); });
}

du::SmartPtr<Callout> CombinedCallout::MemberWith(unsigned id) const {
    const auto members = GetCalloutVec();
    const auto place = std::find_if(members.begin(), members.end(), [id](const auto& member) {
        return member && member->ReferencesItemId(id);
    });
    return place != members.end() ? *place : du::SmartPtr<Callout>();
}

bool CombinedCallout::ReferencesItemId(unsigned id) const { return static_cast<bool>(MemberWith(id)); }

bool CombinedCallout::GetItemId(unsigned& id) const {
    const auto members = GetCalloutVec();
    return !members.empty() && members.front() && members.front()->GetItemId(id);
}

du::SmartPtr<Callout> CombinedCallout::RemoveItemId(unsigned id) {
    const auto removed = MemberWith(id);
    if (!removed) return nullptr;
    BeforeChange();
    if (Index()) removed->FileItem({});
    const std::lock_guard hold(m_membersMutex);
    const auto place = std::find(m_members.begin(), m_members.end(), removed);
    if (place != m_members.end()) m_members.erase(place);
    std::erase(m_children, du::SmartPtr<zrk::Annotation>(removed));
    return removed;
}

void CombinedCallout::UpdateLeaderLine() {
    const auto members = GetCalloutVec();
    if (!members.empty() && members.front()) CopyLeaders(*members.front());
}

void CombinedCallout::ReattachChildren() {
    HoldMembers();
    const auto members = GetCalloutVec();
    std::vector<du::SmartPtr<zrk::Annotation>> children;
    for (std::size_t i = 1; i < members.size(); ++i) {
        if (members[i]) children.emplace_back(members[i]);
    }
    const std::lock_guard hold(m_membersMutex);
    m_children.swap(children);
}

std::vector<du::SmartPtr<zrk::Annotation>> CombinedCallout::GetDependents() const {
    const std::lock_guard hold(m_membersMutex);
    return m_children;
}

}  // namespace zrannotations
