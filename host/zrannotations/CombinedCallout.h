// Several callouts in one: their labels stand side by side.

#pragma once

#include <memory>
#include <vector>

#include "du/LeafLock.h"
#include "du/SmartPtr.h"
#include "zrannotations/Callout.h"

namespace zrannotations {

/// The first member stands for the combined callout itself and lends it its leaders. Any thread.
class CombinedCallout : public Callout {
public:
    explicit CombinedCallout(std::vector<du::SmartPtr<Callout>> members);
    ~CombinedCallout() override;

    /// Puts callouts of a scene together: they leave its annotation set and are members of the new one, which
    /// enters it; of combined ones it is their members. Undoable as all changes of the set. Null without
    /// members, or when one is in no scene.
    static du::SmartPtr<CombinedCallout> Combine(const std::vector<du::SmartPtr<Callout>>& callouts,
                                                 const du::SmartPtr<zrk::Operation>& operation);
    /// The way back: this callout leaves its scene, the members enter it; returns them.
    std::vector<du::SmartPtr<Callout>> Dissolve(const du::SmartPtr<zrk::Operation>& operation);

    bool IsCombined() const override { return true; }
    /// Members may be null while a document is loading.
    std::vector<du::SmartPtr<Callout>> GetCalloutVec() const;
    /// They hang on this one once it enters a scene, or its children are attached again.
    void SetCalloutVec(std::vector<du::SmartPtr<Callout>> members);
    unsigned GetCount() const { return static_cast<unsigned>(GetCalloutVec().size()); }

    bool HasItemId() const override;
    bool ReferencesItemId(unsigned id) const override;
    /// That of the first member.
    bool GetItemId(unsigned& id) const override;
    void SetItemIndex(const std::shared_ptr<ItemIndex>& index) override;
    using Callout::RemoveItemId;
    /// Takes the member of the item out; null when there is none.
    du::SmartPtr<Callout> RemoveItemId(unsigned id);

    /// Takes over the leaders of the first member.
    void UpdateLeaderLine();
    /// The members other than the first hang on this one from then on, and go with it.
    void ReattachChildren();
    std::vector<du::SmartPtr<zrk::Annotation>> GetDependents() const override;

    CalloutState CaptureState() const override;

protected:
    void AssignState(const CalloutState& state) override;

private:
    void HoldMembers();
    void ReleaseMembers();
    std::shared_ptr<ItemIndex> Index() const;
    /// The first that carries the item; null when there is none.
    du::SmartPtr<Callout> MemberWith(unsigned id) const;

    const std::shared_ptr<du::BackLink<Callout>> m_link;  // what members find this through
    mutable du::LeafLock m_membersMutex;                  // guards all below
    std::shared_ptr<ItemIndex> m_index;
    std::vector<du::SmartPtr<Callout>> m_members;
    std::vector<du::SmartPtr<zrk::Annotation>> m_children;
};

}  // namespace zrannotations
