// The callouts engine of one 3-D scene: it registers the scene's callouts, writes their label texts, keeps
// them in step with the model, the item list, the templates, the views and the user-interface language.
//
// Locks. The reader-writer lock of the base (it may be absent) guards the engine's state: getters and walks
// read, changes write. A second, private leaf mutex is held for one single container or field access and
// never while anything is called; the operations that promise to take no lock rely on it alone. Walks go over
// a counted copy, because every call to the host may come back and change the registry.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "callouts/ZrcalloutsExport.h"
#include "dg/Camera3D.h"
#include "dg/Color.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "zrannotations/Callout.h"
#include "zrannotations/Inset.h"
#include "zrannotations/ItemIndex.h"
#include "zrannotations/TAnnotation.h"
#include "zritemlist/ItemList.h"
#include "zrk/annotation/Annotation.h"
#include "zrk/event/PickResult.h"
#include "zrk/illustration/Callouts.h"
#include "zrk/illustration/SbomInstance.h"
#include "zrk/operation/Operation.h"
#include "zrk/scene/ShapeInstance.h"
#include "zrk/scene/ShapeScene.h"
#include "zrk/scene/ShapeView.h"
#include "zrk/tree/Instance.h"

namespace zrannotations {
class CombinedCallout;
}

namespace zrcallouts {

class AnnoSetTableObserver;
class EngineHandle;
class InsetObserver;
class ItemsListObserver;
class KorvanAppObserver;
class TreeObserver;
class WorldObserver;

class ZRCALLOUTS_API Callouts : public zrk::illustration::Callouts {
public:
    using CalloutPtr = du::SmartPtr<zrannotations::Callout>;
    using CalloutSet = std::set<CalloutPtr>;
    using InsetPtr = du::SmartPtr<zrannotations::Inset>;
    using InsetMap = std::map<InsetPtr, CalloutSet>;
    using SymbolMap = std::map<du::SmartPtr<zrk::Instance>, du::SmartPtr<zrk::Annotation>>;
    using SbomSet = std::set<du::SmartPtr<zrk::illustration::SbomInstance>>;

    /// An engine without scene; the caller binds it with Initialize.
    Callouts();
    /// An engine bound to `scene` from the start.
    explicit Callouts(du::SmartPtr<zrk::ShapeScene> scene);
    Callouts(const Callouts&) = delete;
    Callouts& operator=(const Callouts&) = delete;
    ~Callouts() override;

    /// Binds the engine to `scene`: takes its item list and the view's background colours and registers the
    /// observers. What the host does not have (kernel, world, item list ...) is passed over. A second call
    /// replaces the observers without unregistering the former ones.
    void Initialize(const du::SmartPtr<zrk::ShapeScene>& scene) override;
    /// Takes the background colours of view 0.
    void InitializeShapeViewObserver() override;

    /// The callouts that lead to the part move their leader ends with it. Takes no engine lock.
    void OnShapeInstanceLocation(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance) override;
    /// Shows or hides the leaders to the part. Takes no engine lock.
    void OnShapeInstanceVisibility(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance,
                                   bool visible) override;
    /// Callouts that waited for the part to be loaded take it up. 3-D symbols are passed over.
    void OnShapeInstanceCreate(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance) override;
    /// Hides the leaders to a removed part; deletes the callouts of a removed 3-D symbol without undo step.
    void OnShapeInstanceRemove(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance) override;

    /// Registers a callout, 3-D symbol annotation or inset that entered the scene. A callout on parts that
    /// has no leader at all is taken out of the scene again, without undo step.
    void OnAddAnnotation(const du::SmartPtr<zrk::Annotation>& annotation) override;
    /// Forgets a callout or inset that left the scene; the last callout of an item takes its indication away.
    void OnRemoveAnnotation(const du::SmartPtr<zrk::Annotation>& annotation) override;
    /// Re-checks a changed callout's leaders; shows or hides the callouts of a changed inset.
    void OnAnnotationModified(const du::SmartPtr<zrk::Annotation>& annotation, bool) override;

    /// The host's view timer: re-checks the leaders once the camera has changed and every earlier check has
    /// been answered. `camera` is the caller's record of the camera last checked; it is brought up to date.
    void OnHandleTimeoutEvent(const du::SmartPtr<zrk::ShapeView>& view, dg::Camera3D& camera) override;
    /// Takes the view's new background colours and re-checks the leaders, whose dim colour depends on them.
    void OnBackgroundColor(const du::SmartPtr<zrk::ShapeView>& view) override;
    /// Clips the leaders to their insets again after the window changed size.
    void OnWindowSize() override;

    /// Leaves the scene: unregisters every observer, empties the registry and lets the task pool detach the
    /// callouts. The 3-D symbol map stays until the engine is freed.
    void Destroy() override;

    /// Clears `out`, then fills it with the callouts that lead to `sbom` (which may be null).
    void GetCalloutSetForSbomInstance(const du::SmartPtr<zrk::illustration::SbomInstance>& sbom,
                                      CalloutSet& out) override;

    /// Whether further instances of a part become leaders of its first callout, all of them drawn.
    bool GetCombineForSamePart() const;
    void SetCombineForSamePart(bool combine);
    /// Whether further instances of a part become leaders of its first callout, of which one is drawn.
    bool GetDrawOneForSamePart() const;
    void SetDrawOneForSamePart(bool drawOne);
    /// Anchor visibility checks sent and not answered yet.
    unsigned int GetPickRequestCount() const;
    /// The scene's item list, null before Initialize and after Destroy. Takes no engine lock.
    du::SmartPtr<zritemlist::ItemList> GetItemsList() const;
    /// The engine keeps no preferences of its own: nothing happens.
    void PreferencesChanged();

    /// Enters the callout into the callout set and lets it watch its template (unless it is a custom
    /// callout).
    void AddToSet(const CalloutPtr& callout);
    /// Files the callout under the ids of the instances and the insets that its leaders go to. The first
    /// member of a combined callout is not filed: the combined callout stands for it. O(leaders x log n).
    void AddToMap(const CalloutPtr& callout);
    /// The way back from both, for a callout that was not shown.
    void TakeBack(const CalloutPtr& callout) { OnRemoveCallout(callout); }
    /// Whether a callout that leads to the instance id shows exactly `text`. Takes no engine lock.
    bool Exists(const std::string& instanceId, const std::string& text) const;
    /// Appends the callouts that carry the item id, in the order of the callout set. O(found).
    void GetItemIdCallouts(unsigned int itemId, std::vector<CalloutPtr>& out) const;
    /// Appends the callouts of each id in turn; a repeated id repeats its callouts. O(found + ids).
    void GetItemIdCallouts(const std::vector<unsigned int>& itemIds, std::vector<CalloutPtr>& out) const;
    /// Inserts the item ids of all callouts into `out`.
    void GetItemdIds(std::set<unsigned int>& out) const;
    /// Brings the callout's item id in line with what its template asks for; true when the callout changed.
    bool CheckForTypeUpdate(du::SmartPtr<zrannotations::Callout>& callout);

    /// Appends the text of each content in turn to `label`. Without an item list nothing is appended.
    void GenerateLabelString(const CalloutPtr& callout,
                             std::vector<du::SmartPtr<zrannotations::LabelContent>> contents,
                             std::string& label);
    /// Whether the callout's template gives it a label text.
    bool HasTemplateText(const CalloutPtr& callout);
    /// The template for new callouts; may be null.
    du::SmartPtr<zrannotations::TAnnotation> GetTemplate() const;
    /// Writes the callout's template as one string with numbered placeholders ("A{0}B{1}") for translators;
    /// true when it holds any literal text.
    bool GetTemplateLocalizableString(const CalloutPtr& callout, du::Symbol& out) const;
    /// The way back: appends to `result` the contents that a translated string stands for.
    void LocalizeTemplateText(const du::Symbol& text,
                              const std::vector<du::SmartPtr<zrannotations::LabelContent>>& contents,
                              std::vector<du::SmartPtr<zrannotations::LabelContent>>& result) const;

    /// Generates the callout's label and stores it. An empty label never blanks a callout: it is traced
    /// instead.
    void SetCalloutText(const CalloutPtr& callout);
    /// Rebuilds the label if its template refers to data that can have changed; `itemReferences` says whether
    /// references to the item list count. True when it was rebuilt.
    bool RegenerateCalloutLabel(const CalloutPtr& callout, bool itemReferences);
    /// Does so for every callout and marks the view dirty if any label was rebuilt.
    void RegenerateCalloutLabels();
    /// Whether callouts get their label when they are added: always but while batch publishing.
    bool RegenerateCalloutLabelOnAdd() const;
    /// Gives the callout the predefined text of the user-interface language.
    void SetPredefinedText(const CalloutPtr& callout);
    /// Sets the template for new callouts; existing labels stay as they are.
    void SetTemplate(du::SmartPtr<zrannotations::TAnnotation> definition);
    /// Every callout with a localised text shows it in the new language.
    void OnLanguageChanged();

    /// Whether the callout may be shown: one part in one place does not get the same item number twice.
    /// Takes no engine lock. Cost: the leaders of the callouts that lead to the same parts.
    bool IsAllowed(const CalloutPtr& callout) const;
    /// Orders the callouts by their items' place in the item list; stops at the first callout without item.
    void Sort(std::vector<CalloutPtr>& callouts) const;

    /// Deletes the item's callouts under `operation` (may be null); a combined callout only loses the item.
    void OnItemRemoved(unsigned int itemId, const du::SmartPtr<zrk::Operation>& operation);
    /// Deletes every callout that has an item id under `operation` (may be null).
    void OnListCleared(const du::SmartPtr<zrk::Operation>& operation);
    /// Rebuilds the labels of the item's callouts.
    void OnItemContentChanged(unsigned int itemId, SbomSet added, SbomSet removed);
    /// The item's callout gains leaders to the instances of `connect` and loses those to `disconnect`. A step
    /// is added to `operation` (may be null) whose undo and redo replay the connection.
    void UpdateItemGroupCalloutLeaders(unsigned int itemId, SbomSet connect, SbomSet disconnect,
                                       du::SmartPtr<zrk::Operation> operation);

    /// Checks the leaders of every callout for one view: covered ones are drawn dashed and dimmed.
    void OnDrawWhenHidden(du::SmartPtr<zrk::ShapeView> view);
    /// The same for one callout. The answers arrive later, through asynchronous picks.
    void OnDrawWhenHidden(du::SmartPtr<zrk::ShapeView> view, const CalloutPtr& callout);
    /// Sends one pick per leader, restricted to its part, that finds the point of the surface it ends on. A
    /// callout whose anchor is known already, and leaders through insets, send none.
    void RequestAnchorPick(const CalloutPtr& callout);
    /// Stores the point that was hit, in the local coordinates of the part that was hit, as the leader's
    /// anchor.
    void OnReceivePick(const std::vector<zrk::PickResult>& results, CalloutPtr callout, int leaderIndex);
    /// For a host whose visibility check ended without reaching the event's completion: one less is
    /// outstanding.
    void OnReceiveAnchorVisiblePick();

    /// Stores the view's background colours.
    void SetBackgroundColor(const du::SmartPtr<zrk::ShapeView>& view);
    /// Highlights the callout's item in the item list, or takes the highlight away once no callout carries
    /// the item any more. A combined callout does so for all its members.
    void SetIndicated(const CalloutPtr& callout, bool indicated);

    /// A counted copy of the callouts that lead through the inset, in the order of their addresses.
    std::vector<CalloutPtr> SnapshotInset(const InsetPtr& inset) const;

protected:
    void UnregisterObservers() override;

private:
    friend class RegistryProbe;  // in tests
    struct LeaderCheck;
    using Snapshot = std::shared_ptr<const std::vector<CalloutPtr>>;
    using LeaderAction = void (Callouts::*)(const CalloutPtr& callout, unsigned int position);
    using InsetObserverMap = std::map<InsetPtr, du::SmartPtr<InsetObserver>>;

    void ObserveItemList(const du::SmartPtr<zrk::ShapeScene>& scene);
    void ObserveWorld();
    void ObserveApplication();
    void ObserveTree();
    void ObserveAnnoSetTable();
    void DetachWorldObserver();
    void UnregisterItemsListObserver();
    void UnregisterWorldObserver();
    void UnregisterInsetObservers();
    void UnregisterApplicationObserver();
    void UnregisterTreeObserver();
    void UnregisterAnnoSetTableObserver();
    void QueueDestroyTask();
    void CloseItemIndex();
    void ClearRegistry();
    void ReleaseHeldByObservers();

    Snapshot SnapshotCallouts() const;
    std::shared_ptr<zrannotations::ItemIndex> GetItemIndex() const;
    std::vector<CalloutPtr> SnapshotInstance(const std::string& instanceId) const;
    bool Contains(const CalloutPtr& callout) const;
    bool IsItemUsed(unsigned int itemId) const;
    void IndicateItem(unsigned int itemId);
    void RemoveFromMap(const CalloutPtr& callout);
    void RemoveFromSet(const CalloutPtr& callout);
    /// For a callout's leaders, and those of a combined callout's members but the first.
    void ForEachLeader(const CalloutPtr& callout, LeaderAction action);
    void FileLeader(const CalloutPtr& callout, unsigned int position);
    void UnfileLeader(const CalloutPtr& callout, unsigned int position);

    void OnAddSymbol(const du::SmartPtr<zrk::Annotation>& annotation);
    void OnAddInset(const InsetPtr& inset);
    void OnAddCallout(const CalloutPtr& callout);
    void OnRemoveCallout(const CalloutPtr& callout);
    void FileSharersAnew(const CalloutPtr& removed);
    void OnRemoveInset(const InsetPtr& inset);
    void LocalizeAddedCallout(const CalloutPtr& callout);
    void AdmitAddedCallout(const CalloutPtr& callout, unsigned int leaders);
    bool NeedsTextOnAdd(const CalloutPtr& callout) const;

    std::string GenerateLabel(const CalloutPtr& callout);
    std::string GenerateCombinedLabel(zrannotations::CombinedCallout& combined);
    void OnLanguageChanged(du::SmartPtr<zrannotations::Callout>& callout);
    void MarkViewDirty();

    void ConnectItemGroup(const CalloutPtr& callout, const SbomSet& connect, bool& added);
    void DisconnectItemGroup(const CalloutPtr& callout, const SbomSet& disconnect);
    void ReduceCombinedCallout(const du::SmartPtr<zrannotations::CombinedCallout>& combined,
                               unsigned int itemId);
    void RemoveReferencedCallouts(unsigned int itemId, const du::SmartPtr<zrk::Operation>& operation);
    dg::Color DimColor() const;
    std::unique_ptr<LeaderCheck> BeginLeaderCheck(const du::SmartPtr<zrk::ShapeView>& view) const;
    void CheckLeaders(const LeaderCheck& check, const CalloutPtr& callout);
    void CheckLeader(const LeaderCheck& check, const CalloutPtr& callout, unsigned int position);

    unsigned int m_pickRequestCount = 0;
    bool m_combineForSamePart = false;
    bool m_drawOneForSamePart = false;
    dg::Color m_backgroundColor1{0.0F, 0.0F, 0.0F, 1.0F};
    dg::Color m_backgroundColor2{0.0F, 0.0F, 0.0F, 1.0F};
    dg::Color m_backgroundColor3{0.0F, 0.0F, 0.0F, 1.0F};
    du::SmartPtr<zrannotations::TAnnotation> m_template;
    du::SmartPtr<zritemlist::ItemList> m_itemList;
    du::SmartPtr<ItemsListObserver> m_itemsListObserver;
    du::SmartPtr<WorldObserver> m_worldObserver;
    CalloutSet m_callouts;
    mutable Snapshot m_snapshot;  // of the callouts above; null since they changed
    std::set<std::pair<std::string, CalloutPtr>> m_instanceIdCallouts;  // flat: most parts have one callout
    SymbolMap m_symbolAnnotations;
    InsetMap m_insetCallouts;
    InsetObserverMap m_insetObservers;
    std::vector<du::SmartPtr<InsetObserver>> m_furtherInsetObservers;  // of insets that were added again
    du::SmartPtr<KorvanAppObserver> m_korvanAppObserver;
    du::SmartPtr<TreeObserver> m_treeObserver;
    std::vector<du::SmartPtr<TreeObserver>> m_formerTreeObservers;  // replaced, and still registered
    du::SmartPtr<AnnoSetTableObserver> m_annoSetTableObserver;

    // Guards the containers, the item list pointer and the colours for one access each (see the head of the
    // file).
    mutable std::mutex m_guard;
    // Held from asking whether an item has callouts to telling the item list, so that of two threads the
    // later answer stays.
    std::mutex m_indication;
    // What the observers reach the engine through; closed when the engine is freed, so that an observer that
    // the host still holds, or that is being notified on another thread, finds nobody instead of a dead
    // engine.
    std::shared_ptr<EngineHandle> m_handle;
    std::shared_ptr<zrannotations::ItemIndex> m_itemIndex;  // of the callouts above
};

}  // namespace zrcallouts
