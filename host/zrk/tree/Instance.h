// A node of the engineering structure: a part or assembly in its place.

#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "dg/FBox.h"
#include "dg/Location.h"
#include "zrk/tree/BaseInstance.h"
#include "zrk/tree/ComponentInstance.h"
#include "zrk/tree/ComponentNode.h"

namespace zrk::illustration {
class SbomInstance;
}

namespace zrk {

/// The structure is built on one thread before it is shown to others (Tree::SetRoot) and keeps its shape from
/// then on.
class Instance : public BaseInstance {
public:
    static const ClassType CLASS_TYPE;

    /// `location` is relative to the parent. An assembly's node has no shape.
    Instance(const du::Symbol& identifier, const std::string& name, const du::SmartPtr<ComponentNode>& node,
             const dg::Location& location);
    /// A 3-D symbol, which is known by its component instance.
    Instance(const du::SmartPtr<ComponentInstance>& symbol, const std::string& name,
             const du::SmartPtr<ComponentNode>& node, const dg::Location& location);
    ~Instance() override;

    const ClassType& GetClassType() const override { return CLASS_TYPE; }
    bool HasChildren() const override { return !m_children.empty(); }

    bool Is3dSymbol() const { return static_cast<bool>(m_symbol); }
    /// The node of the service structure that shows this instance; null when there is none. Not counted: the
    /// service structure owns its nodes and outlives the use.
    illustration::SbomInstance* GetSbomInstance() const { return m_sbom.load(std::memory_order_acquire); }
    void SetSbomInstance(illustration::SbomInstance* sbom) { m_sbom.store(sbom, std::memory_order_release); }
    /// Null for what is not a 3-D symbol.
    void GetComponentInstance(du::SmartPtr<ComponentInstance>& out) const { out = m_symbol; }
    const du::SmartPtr<ComponentNode>& GetComponentNode() const { return m_node; }

    /// Null at the top.
    void GetParent(du::SmartPtr<Instance>& out) const;
    /// The topmost ancestor, the instance itself at the top. O(depth).
    void GetRootContainerRoot(du::SmartPtr<Instance>& out) const;
    /// Takes over a child that has no parent yet.
    void AddChild(const du::SmartPtr<Instance>& child);
    const std::vector<du::SmartPtr<Instance>>& GetChildren() const { return m_children; }

    /// From local to world coordinates. O(depth).
    dg::Location GetWorldLocation() const;
    /// The box that the instance's source file gives for its shape, in local coordinates; empty when it gives
    /// none.
    dg::FBox GetShapeSourceBBox() const { return m_sourceBox; }
    void SetShapeSourceBBox(const dg::FBox& box) { m_sourceBox = box; }

private:
    du::SmartPtr<ComponentInstance> m_symbol;
    du::SmartPtr<ComponentNode> m_node;
    dg::Location m_location;
    dg::FBox m_sourceBox;
    Instance* m_parent = nullptr;  // owns this; cleared when it goes first
    std::vector<du::SmartPtr<Instance>> m_children;
    std::atomic<illustration::SbomInstance*> m_sbom{nullptr};
};

}  // namespace zrk
