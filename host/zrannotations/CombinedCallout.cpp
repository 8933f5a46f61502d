#include "zrannotations/CombinedCallout.h"

#include <algorithm>
#include <utility>

namespace zrannotations {

CombinedCallout::CombinedCallout(std::vector<du::SmartPtr<Callout>> members) : m_members(std::move(members)) {
    UpdateLeaderLine();
}

CombinedCallout::~CombinedCallout() = default;

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
    const du::SmartPtr<Callout> removed = *place;
    m_members.erase(place);
    std::erase(m_children, du::SmartPtr<zrk::Annotation>(removed));
    return removed;
}

void CombinedCallout::UpdateLeaderLine() {
    if (m_members.empty() || !m_members.front()) return;
    CopyLeaders(*m_members.front());
}

void CombinedCallout::ReattachChildren() {
    m_children.clear();
    for (std::size_t i = 1; i < m_members.size(); ++i) {
        if (m_members[i]) m_children.emplace_back(m_members[i]);
    }
}

std::vector<du::SmartPtr<zrk::Annotation>> CombinedCallout::GetDependents() const { return m_children; }

}  // namespace zrannotations
