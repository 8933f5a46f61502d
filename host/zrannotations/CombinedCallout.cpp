#include "zrannotations/CombinedCallout.h"

#include <algorithm>
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

void CombinedCallout::HoldMembers() {
    for (const auto& member : m_members) {
        if (!member) continue;
        member->SetHolder(m_link);
        if (m_index) member->FileItem({m_index, m_link});
    }
}

void CombinedCallout::ReleaseMembers() {
    for (const auto& member : m_members) {
        if (member && m_index) member->FileItem({});
    }
}

void CombinedCallout::SetItemIndex(const std::shared_ptr<ItemIndex>& index) {
    ReleaseMembers();
    m_index = index;
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
            members.insert(members.end(), combined->m_members.begin(), combined->m_members.end());
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
    const std::vector<du::SmartPtr<Callout>> members = m_members;
    annoSet->RemoveAnnotationFromSet(du::SmartPtr<zrk::Annotation>(this), operation);
    for (const auto& member : members) annoSet->AddAnnotationToSet(member, operation);
    return members;
}

CalloutState CombinedCallout::CaptureState() const {
    CalloutState state = Callout::CaptureState();
    for (const auto& member : m_members) {
        state.members.push_back({member, member ? member->CaptureState() : CalloutState()});
    }
    return state;
}

void CombinedCallout::AssignState(const CalloutState& state) {
    Callout::AssignState(state);
    ReleaseMembers();
    m_members.clear();
    for (const auto& member : state.members) {
        if (member.callout) member.callout->RestoreState(member.state);
        m_members.push_back(member.callout);
    }
    HoldMembers();
    if (!m_children.empty()) ReattachChildren();
}

bool CombinedCallout::HasItemId() const {
    return std::any_of(m_members.begin(), m_members.end(),
                       [](const auto& member) { return member && member->HasItemId(); });
}

bool CombinedCallout::ReferencesItemId(unsigned id) const {
    return std::any_of(m_members.begin(), m_members.end(),
                       [id](const auto& member) { return member && member->ReferencesItemId(id); });
}

bool CombinedCallout::GetItemId(unsigned& id) const {
    return !m_members.empty() && m_members.front() && m_members.front()->GetItemId(id);
}

du::SmartPtr<Callout> CombinedCallout::RemoveItemId(unsigned id) {
    const auto place = std::find_if(m_members.begin(), m_members.end(), [id](const auto& member) {
        return member && member->ReferencesItemId(id);
    });
    if (place == m_members.end()) return nullptr;
    BeforeChange();
    const du::SmartPtr<Callout> removed = *place;
    if (m_index) removed->FileItem({});
    m_members.erase(place);
    std::erase(m_children, du::SmartPtr<zrk::Annotation>(removed));
    return removed;
}

void CombinedCallout::UpdateLeaderLine() {
    if (m_members.empty() || !m_members.front()) return;
    CopyLeaders(*m_members.front());
}

void CombinedCallout::ReattachChildren() {
    HoldMembers();
    m_children.clear();
    for (std::size_t i = 1; i < m_members.size(); ++i) {
        if (m_members[i]) m_children.emplace_back(m_members[i]);
    }
}

std::vector<du::SmartPtr<zrk::Annotation>> CombinedCallout::GetDependents() const { return m_children; }

}  // namespace zrannotations
