#include "zrk/illustration/SbomInstance.h"

namespace zrk::illustration {

constinit const zrk::ClassType SbomInstance::CLASS_TYPE(41, "zrk::illustration::SbomInstance",
                                                        &zrk::BaseInstance::CLASS_TYPE);

SbomInstance::SbomInstance(const du::Symbol& identifier, const std::string& name)
    : TreeNode(identifier, name) {}

SbomInstance::~SbomInstance() {
    if (m_ebom && m_ebom->GetSbomInstance() == this) m_ebom->SetSbomInstance(nullptr);
}

void SbomInstance::SetEbomInstance(const du::SmartPtr<zrk::Instance>& ebom) {
    if (m_ebom && m_ebom->GetSbomInstance() == this) m_ebom->SetSbomInstance(nullptr);
    m_ebom = ebom;
    if (m_ebom) m_ebom->SetSbomInstance(this);
}

du::SmartPtr<zrk::ComponentNode> SbomInstance::GetComponentNode() const {
    return m_ebom ? m_ebom->GetComponentNode() : du::SmartPtr<zrk::ComponentNode>();
}

bool SbomInstance::IsWeldMember() const {
    for (const SbomInstance* parent = Above(); parent != nullptr; parent = parent->Above()) {
        if (parent->IsWeld()) return true;
    }
    return false;
}

du::SmartPtr<SbomInstance> SbomInstance::GetTopWeld() const {
    const SbomInstance* top = nullptr;
    for (const SbomInstance* node = this; node != nullptr; node = node->Above()) {
        if (node->IsWeld()) top = node;
    }
    return const_cast<SbomInstance*>(top);
}

void SbomInstance::GetEbomInstancesForWeld(InstanceSet& first, InstanceSet& second) const {
    std::vector<const SbomInstance*> pending{this};
    while (!pending.empty()) {
        const SbomInstance* node = pending.back();
        pending.pop_back();
        const bool isListedMember = node != this && node->CarriesItem() && node->IsWeldMember();
        if (isListedMember && node->m_ebom) second.insert(node->m_ebom);
        if (!node->HasChildren() && node->m_ebom) first.insert(node->m_ebom);
        for (const auto& child : node->GetChildren()) pending.push_back(child.get());
    }
}

du::SmartPtr<zrk::Property> SbomInstance::QueryProperty(const du::Symbol& group, const du::Symbol& name,
                                                        const du::Symbol& shapeSource) const {
    du::Symbol value;
    const bool isFound = FindProperty(group, name, shapeSource, value) ||
                         (m_ebom && m_ebom->FindProperty(group, name, shapeSource, value));
    return isFound ? du::SmartPtr<zrk::Property>(new zrk::Property(name, value))
                   : du::SmartPtr<zrk::Property>();
}

}  // namespace zrk::illustration
