// Creates callouts for one request: it makes them, registers them with the engine, lays them out and shows
// them as one operation that can be undone.

#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "callouts/Callouts.h"
#include "callouts/ZrcalloutsExport.h"
#include "callouts/generator/SelectionWalk.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "zritemlist/ItemList.h"
#include "zrk/event/AsyncEvent.h"
#include "zrk/illustration/SbomInstanceSelectionItem.h"
#include "zrk/object/ObjectWithRWLock.h"
#include "zrk/operation/Operation.h"
#include "zrk/scene/Scene.h"
#include "zrk/scene/ShapeScene.h"
#include "zrk/scene/View.h"
#include "zrk/tree/ComponentNode.h"

namespace zrcallouts {

/// Built, used for one request and let go, on one thread. What is missing (template, item list, view ...)
/// narrows the work without a message.
class ZRCALLOUTS_API CalloutGenerator : public zrk::ObjectWithRWLock {
public:
    using CalloutPtr = du::SmartPtr<zrannotations::Callout>;
    using SbomPtr = du::SmartPtr<zrk::illustration::SbomInstance>;
    using Selection = std::vector<du::SmartPtr<zrk::illustration::SbomInstanceSelectionItem>>;
    using OperationPtr = du::SmartPtr<zrk::Operation>;

    static const zrk::ClassType CLASS_TYPE;

    explicit CalloutGenerator(du::SmartPtr<Callouts> callouts);
    ~CalloutGenerator() override;

    const zrk::ClassType& GetClassType() const override { return CLASS_TYPE; }

    /// Lets the task pool create the callouts for the selection, which is taken over; returns at once.
    /// `event` (may be null) hears of progress and of completion on the pool's thread.
    static void CreateCallouts(const du::SmartPtr<Callouts>& callouts, Selection&& selection,
                               const du::SmartPtr<zrk::AsyncEvent>& event);

    /// Creates the callouts for the selection, one pass for each component, property value or item that its
    /// parts fall into, and shows them as one recorded operation. When the event is cancelled before all are
    /// made, none is. O(instances x log instances).
    void AddOnSelected(const Selection& selection, const du::SmartPtr<zrk::AsyncEvent>& event);
    /// The same for callouts that the user is about to place: they are laid out, but neither labelled nor
    /// shown nor recorded. An empty operation is made; what the item list needed is a step of it.
    void CreateManuallyOnSelected(const Selection& selection, OperationPtr& operation);
    /// Numbers, registers and shows callouts that were made elsewhere. An empty operation is made when there
    /// is something to record.
    void AddCallouts(const std::vector<CalloutPtr>& callouts, OperationPtr& operation);
    /// Creates the callouts of the items, of all instances that each holds, with the template of that id from
    /// now on (an unknown id keeps the engine's), and shows them under `operation`; with none, as one
    /// recorded operation. When all are there already they take the template and nothing is recorded.
    /// O(instances x log instances + callouts).
    void AddOnItemIds(const std::vector<unsigned int>& itemIds, const std::string& templateId,
                      const OperationPtr& operation);
    /// Creates callouts on 3-D symbols; those of one shape share a callout when the engine combines equal
    /// parts. One recorded operation, or none when no callout comes of it. O(symbols x log symbols +
    /// annotations).
    void AddOnSymbols(const std::vector<du::SmartPtr<zrk::Instance>>& symbols);
    /// Lists what the copied parts need in the item list, as steps of `operation`. The callout is neither
    /// read nor changed, and no other comes of it.
    void AddOnCopySteps(const Selection& selection, CalloutPtr& callout, const OperationPtr& operation);
    void ShowCreatedCallouts(const OperationPtr& operation);
    const std::set<CalloutPtr>& GetCreatedCallouts() const { return m_createdCallouts; }

    void GetItemLabel(unsigned int itemId, std::string& label, bool& isCustom) const;
    bool GetMatchingItem(const SbomPtr& instance, unsigned int& itemId) const;
    /// The item that holds the instance, which is listed if need be; 0 without an item list.
    unsigned int AddToItemList(const SbomPtr& instance, bool manual, const std::string& label,
                               OperationPtr& operation);
    /// Deletes the items' callouts; the items stay.
    void RemoveFromItemIds(const std::vector<unsigned int>& itemIds, const OperationPtr& operation);
    void RemoveFromItemList(unsigned int itemId, OperationPtr& operation);

protected:
    using Run = std::set<SbomPtr>;
    using InstanceSet = zrk::illustration::SbomInstance::InstanceSet;

    void InitializeSelected(const Selection& selection, const OperationPtr& operation);
    /// False for item ids even though it positions them: no sign that there is nothing to do.
    bool InitCategoryIterators();
    /// True also when the step leads to the end; false once it is there.
    bool NextCategory();
    bool CompletedCategoryIterators() const;
    unsigned int GetVariantsCount() const { return m_variantsCount; }

    unsigned int ComputeNumberOfVariants(const Selection& selection, const OperationPtr& operation);
    void IncrementNumberOfVariants(const SbomPtr& instance, const OperationPtr& operation);

    void AddOnSelectedCategory(const Run& run);
    void AddOnSelectedCategory(const Run& run, std::vector<CalloutPtr>& created);
    du::SmartPtr<zrk::Instance> FindValidInstance(const InstanceSet& first, const InstanceSet& second,
                                                  bool leafOrWeld);

    void FinalizeCallouts(const std::vector<CalloutPtr>& callouts);
    /// Forgets what was created, and takes back what the operation (may be null) did to the item list.
    void Withdraw(const OperationPtr& operation);
    /// Does the work. When it fails half way, for want of memory say, nothing of it stays registered, and
    /// what the operation has is taken back; null for a caller's operation, which is the caller's to take
    /// back.
    void DoOrWithdraw(const OperationPtr& operation, const std::function<void()>& work);
    void PerformLayout();
    void ShowCallouts(const std::set<CalloutPtr>& callouts, const OperationPtr& operation);
    void ShowCallouts(const std::vector<CalloutPtr>& callouts, const OperationPtr& operation);

private:
    /// The selected instances of every category key, collected in one walk.
    struct Runs {
        std::map<du::SmartPtr<zrk::ComponentNode>, Run> byComponent;
        std::map<du::Symbol, Run> byProperty;
        std::map<unsigned int, Run> byItem;
    };
    /// What a callout or leader for an instance needs.
    struct Target {
        du::SmartPtr<zrk::ShapeInstance> shapeInstance;
        du::SmartPtr<zrk::BaseInstance> baseInstance;
    };
    /// What a callout on a 3-D symbol needs.
    struct Symbol {
        du::SmartPtr<zrk::ShapeInstance> shapeInstance;
        unsigned int id = 0;  // of the annotation that goes with it
    };
    class ProgressReport;

    void AddRuns(const Selection& selection, const du::SmartPtr<zrk::AsyncEvent>& event,
                 const OperationPtr& operation);

    static du::SmartPtr<zrk::ReadWriteLock> GetRWLock();
    OperationPtr MakeOperation() const;
    du::SmartPtr<zrk::illustration::ItemsList> KernelItems() const;
    du::SmartPtr<zrk::PropertyValue> LookUpProperties(const SbomPtr& instance) const;

    void CountItems(const SbomPtr& instance, const InstanceSet& gathered, const OperationPtr& operation);
    Runs CollectRuns(const Selection& selection) const;
    void FileInstance(const SbomPtr& instance, const InstanceSet& gathered, Runs& runs) const;
    Run TakeCurrentRun(Runs& runs) const;

    bool FindTarget(const SbomPtr& instance, Target& target);
    CalloutPtr MakeCallout(const Target& target) const;
    bool AddLeader(zrannotations::Callout& callout, const Target& target, bool isCollapsed) const;
    bool IsVisiblePart(const du::SmartPtr<zrk::Instance>& instance) const;

    Run RunOfItem(unsigned int itemId) const;
    void ShowAndRecord(const OperationPtr& operation);
    void SwitchTemplate(const std::vector<CalloutPtr>& callouts,
                        const du::SmartPtr<zrannotations::TAnnotation>& definition) const;
    void CallOutSymbols(const std::vector<Symbol>& group, std::vector<CalloutPtr>& created) const;

    bool NumberCallout(const CalloutPtr& callout, OperationPtr& operation);
    void LocalizeShown(const CalloutPtr& callout, bool isLocalized) const;

    du::SmartPtr<zrk::AsyncEvent> m_asyncEvent;
    std::set<CalloutPtr> m_createdCallouts;
    du::SmartPtr<Callouts> m_callouts;
    du::SmartPtr<zrk::View> m_view;
    du::SmartPtr<zrk::Scene> m_scene;
    du::SmartPtr<zritemlist::ItemList> m_itemList;
    unsigned int m_variantsCount = 0;
    std::set<du::SmartPtr<zrk::ComponentNode>> m_instanceVariants;
    std::vector<du::Symbol> m_propertyGroups;
    std::vector<du::Symbol> m_propertyNames;
    std::set<du::Symbol> m_propertyVariants;
    std::set<unsigned int> m_itemIdVariants;
    std::set<du::SmartPtr<zrk::ComponentNode>>::const_iterator m_instanceIt;
    std::set<du::SmartPtr<zrk::ComponentNode>>::const_iterator m_instanceEnd;
    std::set<du::Symbol>::const_iterator m_propertyIt;
    std::set<du::Symbol>::const_iterator m_propertyEnd;
    std::set<unsigned int>::const_iterator m_itemIdIt;
    std::set<unsigned int>::const_iterator m_itemIdEnd;
    bool m_requiresPropertyVisitor = false;
    bool m_plainCategory = false;
    bool m_requiresItemList = false;
    bool m_manualCreation = false;
};

}  // namespace zrcallouts
