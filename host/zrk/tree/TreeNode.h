// What both product structures have in common: parents own their children.

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "du/SmartPtr.h"
#include "zrk/tree/BaseInstance.h"

namespace zrk {

/// The base of `Node`, whose neighbours are Nodes too. The structure is built on one thread before others see
/// it and keeps its shape from then on.
template <class Node>
class TreeNode : public BaseInstance {
public:
    TreeNode(const du::Symbol& identifier, const std::string& name) : BaseInstance(identifier, name) {}
    ~TreeNode() override;

    bool HasChildren() const override { return !m_children.empty(); }
    /// Null at the top.
    void GetParent(du::SmartPtr<Node>& out) const { out = m_parent; }
    const std::vector<du::SmartPtr<Node>>& GetChildren() const { return m_children; }
    /// Takes over a child that has no parent yet.
    void AddChild(const du::SmartPtr<Node>& child);

protected:
    /// The parent, not counted.
    const Node* Above() const { return m_parent; }

private:
    /// Hands the children over, without a parent.
    void MoveChildrenTo(std::vector<du::SmartPtr<Node>>& out);

    Node* m_parent = nullptr;  // owns this; cleared when it goes first
    std::vector<du::SmartPtr<Node>> m_children;
};

// Children are let go one by one from a list: a chain of 10,000 nodes must not take the stack as deep.
template <class Node>
TreeNode<Node>::~TreeNode() {
    std::vector<du::SmartPtr<Node>> pending;
    MoveChildrenTo(pending);
    while (!pending.empty()) {
        const du::SmartPtr<Node> last = std::move(pending.back());
        pending.pop_back();
        if (last->GetReferenceCount() == 1) static_cast<TreeNode&>(*last).MoveChildrenTo(pending);
    }
}

template <class Node>
void TreeNode<Node>::MoveChildrenTo(std::vector<du::SmartPtr<Node>>& out) {
    for (auto& child : m_children) {
        static_cast<TreeNode&>(*child).m_parent = nullptr;
        out.push_back(std::move(child));
    }
    m_children.clear();
}

template <class Node>
void TreeNode<Node>::AddChild(const du::SmartPtr<Node>& child) {
    static_cast<TreeNode&>(*child).m_parent = static_cast<Node*>(this);
    m_children.push_back(child);
}

}  // namespace zrk
