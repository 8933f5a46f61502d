// A node of the engineering structure: a part or assembly in its place.

#pragma once

#include <atomic>
#include <string>

#include "dg/FBox.h"
#include "dg/Location.h"
#include "zrk/tree/ComponentInstance.h"
#include "zrk/tree/ComponentNode.h"
#include "zrk/tree/TreeNode.h"

namespace zrk::illustration {
class SbomInstance;
}

namespace zrk {

/// Shown to others by Tree::SetRoot.
class Instance : public TreeNode<Instance> {
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

    bool Is3dSymbol() const { return static_cast<bool>(m_symbol); }
    /// The node of the service structure that shows this instance; null when there is none. Not counted: the
    /// service structure owns its nodes and outlives the use.
    illustration::SbomInstance* GetSbomInstance() const { return m_sbom.load(std::memory_order_acquire); }
    void SetSbomInstance(illustration::SbomInstance* sbom) { m_sbom.store(sbom, std::memory_order_release); }
    /// Null for what is not a 3-D symbol.
    void GetComponentInstance(du::SmartPtr<ComponentInstance>& out) const { out = m_symbol; }
    const du::SmartPtr<ComponentNode>& GetComponentNode() const { return m_node; }

    /// The topmost ancestor, the instance itself at the top. O(depth).
    void GetRootContainerRoot(du::SmartPtr<Instance>& out) const;

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
    std::atomic<illustration::SbomInstance*> m_sbom{nullptr};
};

}  // namespace zrk
