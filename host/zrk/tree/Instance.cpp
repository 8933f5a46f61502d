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
    : TreeNode(identifier, name), m_node(node), m_location(location) {}

Instance::Instance(const du::SmartPtr<ComponentInstance>& symbol, const std::string& name,
                   const du::SmartPtr<ComponentNode>& node, const dg::Location& location)
    : TreeNode(SymbolIdentifier(*symbol), name), m_symbol(symbol), m_node(node), m_location(location) {}

Instance::~Instance() = default;

void Instance::GetRootContainerRoot(du::SmartPtr<Instance>& out) const {
    const Instance* top = this;
    while (top->Above() != nullptr) top = top->Above();
    out = const_cast<Instance*>(top);
}

dg::Location Instance::GetWorldLocation() const {
    dg::DMat44 xform = m_location.GetXform();
    for (const Instance* parent = Above(); parent != nullptr; parent = parent->Above()) {
        xform = xform * parent->m_location.GetXform();
    }
    return dg::Location(xform);
}

}  // namespace zrk
