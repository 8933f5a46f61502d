// A node of the service structure: a part or assembly as the parts list shows it.

#pragma once

#include <atomic>
#include <set>
#include <string>

#include "du/SmartPtr.h"
#include "zrk/object/Property.h"
#include "zrk/tree/Instance.h"
#include "zrk/tree/TreeNode.h"

namespace zrk::illustration {

/// Properties and the marks of being a weld and of carrying an item may change on any thread.
class SbomInstance : public zrk::TreeNode<SbomInstance> {
public:
    using InstanceSet = std::set<du::SmartPtr<zrk::Instance>>;

    static const zrk::ClassType CLASS_TYPE;

    SbomInstance(const du::Symbol& identifier, const std::string& name);
    ~SbomInstance() override;

    const zrk::ClassType& GetClassType() const override { return CLASS_TYPE; }

    /// The engineering instance that it shows; null for one that only groups.
    const du::SmartPtr<zrk::Instance>& GetEbomInstance() const { return m_ebom; }
    /// The engineering instance points back from then on.
    void SetEbomInstance(const du::SmartPtr<zrk::Instance>& ebom);
    /// What all instances of the same part share; null when unknown.
    du::SmartPtr<zrk::ComponentNode> GetComponentNode() const;

    /// A weld is ordered and counted as one part though it is made of several.
    bool IsWeld() const { return m_isWeld.load(std::memory_order_relaxed); }
    void SetWeld(bool isWeld) { m_isWeld.store(isWeld, std::memory_order_relaxed); }
    /// O(depth).
    bool IsWeldMember() const;
    /// The topmost weld among the instance and its ancestors; null when there is none. O(depth).
    du::SmartPtr<SbomInstance> GetTopWeld() const;
    /// Adds to `first` the engineering instances that the instance stands for: its own, or for an assembly or
    /// weld those of all parts below; to `second` those of parts below that are listed by themselves. O(parts
    /// below).
    void GetEbomInstancesForWeld(InstanceSet& first, InstanceSet& second) const;

    /// Null when there is none. The empty group is that of the part's own properties.
    virtual du::SmartPtr<zrk::Property> QueryProperty(const du::Symbol& group, const du::Symbol& name,
                                                      const du::Symbol& shapeSource) const;

    /// Whether an item of the list holds this instance; kept by the list.
    bool CarriesItem() const { return m_carriesItem.load(std::memory_order_relaxed); }
    void SetCarriesItem(bool carries) { m_carriesItem.store(carries, std::memory_order_relaxed); }

private:
    du::SmartPtr<zrk::Instance> m_ebom;
    std::atomic<bool> m_isWeld{false};
    std::atomic<bool> m_carriesItem{false};
};

}  // namespace zrk::illustration
