#include "zrk/tree/Instance.h"

namespace zrk {
namespace {

du::Symbol SymbolIdentifier(const ComponentInstance& symbol) {
    du::Symbol id;
    symbol.GetID(id);
    return du::Symbol("/" + id.Text());
}

}  // namespace

constinit const ClassType Instance::CLASS_TYPE(11, "zrk::Instance", &BaseInstance::CLASS_TYPE);

Instance::Instance(const du::Symbol& identifier, const std::string& name,
                   const du::SmartPtr<ComponentNode>& node, const dg::Location& location)
    : BaseInstance(identifier, name), m_node(node), m_location(location) {}

Instance::Instance(const du::SmartPtr<ComponentInstance>& symbol, const std::string& name,
                   const du::SmartPtr<ComponentNode>& node, const dg::Location& location)
    : BaseInstance(SymbolIdentifier(*symbol), name), m_symbol(symbol), m_node(node), m_location(location) {}

// Children are let go one by one from a list: a chain of 10,000 nodes must not take the stack as deep.
Instance::~Instance() {
    std::vector<du::SmartPtr<Instance>> pending = std::move(m_children);
    for (const auto& child : pending) child->m_parent = nullptr;
    while (!pending.empty()) {
        du::SmartPtr<Instance> last = std::move(pending.back());
        pending.pop_back();
        if (last->GetReferenceCount() > 1) continue;
        for (auto& child : last->m_children) {
            child->m_parent = nullptr;
            pending.push_back(std::move(child));
        }
        last->m_children.clear();
    }
}

void Instance::AddChild(const du::SmartPtr<Instance>& child) {
    child->m_parent = this;
    m_children.push_back(child);
}

void Instance::GetParent(du::SmartPtr<Instance>& out) const { out = m_parent; }

void Instance::GetRootContainerRoot(du::SmartPtr<Instance>& out) const {
    const Instance* top = this;
    while (top->m_parent != nullptr) top = top->m_parent;
    out = const_cast<Instance*>(top);
}

dg::Location Instance::GetWorldLocation() const {
    dg::DMat44 xform = m_location.GetXform();
    for (const Instance* parent = m_parent; parent != nullptr; parent = parent->m_parent) {
        xform = xform * parent->m_location.GetXform();
    }
    return dg::Location(xform);
}

}  // namespace zrk
