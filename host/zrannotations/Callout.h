// A callout: a label with leader lines to parts.

#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "dg/Camera3D.h"
#include "dg/Color.h"
#include "dg/DPoint3D.h"
#include "dg/Location.h"
#include "du/BackLink.h"
#include "du/LeafLock.h"
#include "du/LocalizableString.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "zrannotations/Annotation.h"
#include "zrannotations/CalloutLeader.h"
#include "zrannotations/CalloutState.h"
#include "zrannotations/CalloutStyle.h"
#include "zrannotations/Inset.h"
#include "zrannotations/ItemIndex.h"
#include "zrannotations/TAnnotation.h"
#include "zrk/operation/Operation.h"
#include "zrk/scene/ShapeView.h"

namespace zrannotations {

/// Any thread: a lock of its own guards it, and is not held while others are called. Leaders are counted from
/// 0, those whose part is loaded before those that wait for theirs; operations on a leader that is gone by
/// then do nothing.
class Callout : public Annotation {
public:
    using SymbolMap = std::map<du::SmartPtr<zrk::Instance>, du::SmartPtr<zrk::Annotation>>;
    using InsetMap = std::map<du::SmartPtr<Inset>, std::set<du::SmartPtr<Callout>>>;

    Callout();
    ~Callout() override;

    du::Symbol GetClass() const override;
    unsigned GetCountMask() const override { return 0x4000; }

    /// Makes the first leader, to `shapeInstance`, ending where the part is seen best; the label lies there
    /// too until it is moved. `assembly` is what the part stands for, null for itself; where the part is
    /// nowhere seen the leader goes to the part of the assembly that is seen best. False without a part that
    /// has geometry.
    bool Initialize(const du::SmartPtr<TAnnotation>& definition,
                    const du::SmartPtr<zrk::ShapeInstance>& shapeInstance, bool isKit,
                    const du::SmartPtr<zrk::BaseInstance>& assembly);
    /// A callout with a label at `position` (world coordinates) and no leader.
    void InitializeFree(const du::SmartPtr<TAnnotation>& definition, const dg::DPoint3D& position);
    bool IsInitialized() const;
    CALLOUT_TYPE GetType() const;
    /// Stands for a kit of parts.
    bool IsKit() const;
    /// Its text is the user's own; the template's changes pass it by.
    bool IsCustomCallout() const;
    void SetCustomCallout(bool isCustom);
    virtual bool IsCombined() const { return false; }
    /// In a scene.
    virtual bool IsValid() const;

    /// Found anew by its id once it was released; null when it is gone.
    du::SmartPtr<TAnnotation> GetDefinition() const;
    void UpdateDefinition(const du::SmartPtr<TAnnotation>& definition);
    void ReleaseCalloutTemplate();
    /// There is one observer of the template; a second one takes the place of the first, which hears of its
    /// end.
    void RegisterTemplateObserver(const du::SmartPtr<zrk::illustration::CalloutTemplateObserver>& observer);
    void UnregisterTemplateObserver();

    /// `withWaiting`: count the leaders whose part is not loaded yet too.
    unsigned GetLeaderLineCount(bool withWaiting) const;
    du::SmartPtr<zrk::ShapeInstance> GetShapeInstanceAtPos(unsigned position) const;
    /// The id of the leader's part in the service structure, or of its 3-D symbol; "" when there is neither.
    std::string GetShapeInstanceIdAtPos(unsigned position) const;
    du::SmartPtr<zrk::BaseInstance> GetAssemblyInstanceAtPos(unsigned position) const;
    du::SmartPtr<Inset> GetInsetAtPos(unsigned position) const;
    void SetInsetAtPos(const du::SmartPtr<Inset>& inset, unsigned position);
    /// The user's command for it: the scene's observers, which file callouts by inset too, follow. Null: in
    /// the main picture again.
    void LeadThrough(const du::SmartPtr<Inset>& inset, unsigned position);
    /// In the part's local coordinates.
    bool GetAnchorAtPos(unsigned position, dg::DPoint3D& out) const;
    /// Where a leader ends, read at once.
    struct LeaderEnd {
        du::SmartPtr<zrk::ShapeInstance> part;
        du::SmartPtr<zrk::BaseInstance> assembly;
        du::SmartPtr<Inset> inset;
        dg::DPoint3D anchor;  // in the part's local coordinates
        bool isHidden = false;
    };
    /// False, and `out` untouched, when the leader or its part is gone.
    bool GetLeaderEndAtPos(unsigned position, LeaderEnd& out) const;
    /// From now on the anchor counts as calculated.
    void SetAnchor(const dg::DPoint3D& anchor, unsigned position);
    bool IsAnchorPointCalculated() const;
    bool IsHiddenAtPos(unsigned position) const;
    bool IsHiddenAsDashedAtPos(unsigned position) const;
    void SetHiddenAsDashedAtPos(bool dashed, unsigned position);
    bool IsDimAtPos(unsigned position) const;
    dg::Color GetDimColorAtPos(unsigned position) const;
    void SetDimAtPos(bool dim, unsigned position, const dg::Color& color);
    /// Dashed and dim, or neither.
    void SetCoveredAtPos(bool covered, unsigned position, const dg::Color& dimColor);
    unsigned GetSymbolIdAtPos(unsigned position) const;
    void SetSymbolIdAtPos(unsigned id, unsigned position);
    void RemoveLeaderAtPos(unsigned position);
    /// From the part's local to world coordinates.
    bool GetInstanceLocationAtPos(dg::Location& out, unsigned position) const;
    /// The leaders to draw. Where some are collapsed it is one alone: to the part that is seen best.
    /// O(leaders).
    std::vector<unsigned> GetDrawnLeaders() const;
    /// Whether all that the callout leads to is out of sight: its label would point at nothing. O(leaders).
    bool LeadsNowhere() const;
    /// Where a leader ends in the world, and on the screen: in the glass of the inset that it leads through,
    /// if it does. False, and the outputs undefined, when that lies outside the glass or the part is gone.
    bool GetLeaderEndOnScreen(unsigned position, const dg::Camera3D& camera, dg::DPoint3D& world,
                              dg::DPoint3D& pixel) const;

    /// Where on the part a leader should end, in the part's local coordinates; false without geometry.
    bool CalculateAnchor(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance, dg::DPoint3D& out) const;
    /// A leader that is not connected yet.
    du::SmartPtr<CalloutLeader> CreateCalloutLeader(const dg::DPoint3D& anchor,
                                                    const du::SmartPtr<zrk::ShapeInstance>& shapeInstance,
                                                    const du::SmartPtr<zrk::BaseInstance>& assembly) const;
    void ConnectLeader(const du::SmartPtr<CalloutLeader>& leader);
    /// Draws the collapsed leaders too. The operation may be null.
    void ShowAllLeaders(const du::SmartPtr<zrk::Operation>& operation);

    CalloutStyle GetStyle() const;
    void SetStyle(const CalloutStyle& style);

    /// `localized`: the translated text, else the generated one.
    du::Symbol GetText(bool localized) const;
    void SetText(const du::Symbol& text, bool localized);
    /// What the label shows.
    du::Symbol GetMarkupText() const;
    /// Whether the callout comes from an old document and keeps the text it was saved with, whatever is
    /// generated.
    virtual bool CheckDynamicTextForLegacyCallout(const std::string& generated) const;
    void SetLegacyText(const du::Symbol& text);
    /// To read and to change in place: each of its operations is guarded.
    du::LocalizableString& GetLocalizableString() {
        BeforeChange();
        return m_localizable;
    }
    /// The combined callout that this is, or was last, a member of; null without.
    du::SmartPtr<Callout> GetHolder() const;
    /// Gives a callout without localisable text its own as the source.
    void SetupLocalizationIfNecessary(bool isLocalized);

    virtual bool HasItemId() const;
    virtual bool ReferencesItemId(unsigned id) const;
    /// False, and `id` untouched, for a callout without item.
    virtual bool GetItemId(unsigned& id) const;
    void SetItemId(unsigned id);
    void RemoveItemId();
    /// The callout enters itself under its item from now on, whatever that becomes, and leaves the index that
    /// it was in before. Null: no index.
    virtual void SetItemIndex(const std::shared_ptr<ItemIndex>& index);

    /// Leaders that wait take up the parts that have been loaded since.
    void UpdateWithCalloutInfo();
    /// The same for a callout that enters a scene; 3-D symbols are found through the map.
    void UpdateWithCalloutInfo(const SymbolMap& symbols, const InsetMap& insets);
    void OnShapeInstanceCreate(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance);
    /// Anchors and label keep their place relative to the part, so only the picture is out of date.
    void OnShapeInstanceLocation(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance);
    /// Shows or hides the leaders to the part; all of them for "".
    void SetVisible(const std::string& instanceId, bool visible);
    /// The leaders to the part (all for "") belong to what the scene shows: those hidden with their part
    /// appear.
    bool AttachSubsetScene(const du::SmartPtr<zrk::Scene>& scene, const std::string& instanceId);
    /// Later ones lie before earlier ones.
    void BringToFront();
    unsigned GetDrawingOrder() const;
    /// Hides leaders that end outside the inset and shows those inside; null: nothing.
    void SetVisibleWithinInsetBounds(const du::SmartPtr<Inset>& inset);

    /// 1: the label is kept in world coordinates; 0: relative to the first leader's part, which it follows
    /// without turning.
    int GetPlacementKind() const;
    /// In the coordinates of the placement kind.
    dg::DPoint3D GetPosition() const;
    void SetLabelPosition(const dg::DPoint3D& position);
    /// In world coordinates; false when the part that it is relative to is gone.
    bool GetMarkupLabelPosition(dg::DPoint3D& out) const;
    /// The same; false, and nothing changed, when the part is gone.
    bool SetMarkupLabelPosition(const dg::DPoint3D& world);
    /// Whether the label stays at its pixel while the camera moves.
    bool IsLabelInScreenSpace() const;
    /// Keeps the label at the pixel of `view` where it is now.
    void SetLabelScreenSpaceMode(const du::SmartPtr<zrk::ShapeView>& view);
    /// The label's pixel; an empty `view` becomes the view it is a pixel of.
    dg::DPoint3D GetLabelRelativeScreenPosition(du::SmartPtr<zrk::ShapeView>& view) const;

    /// All that is saved and undone.
    virtual CalloutState CaptureState() const;
    /// Makes the callout what it was. In a scene whose observers file callouts by what this changes (parts,
    /// insets, template, item, members) it leaves and comes in again. Templates are found by their id.
    /// Requires: with members, a combined callout.
    void RestoreState(const CalloutState& state);
    du::SmartPtr<zrk::Memento> MakeMemento() override;

    /// The mean of the colours; alpha stays.
    static void GetBlendColor(const dg::Color& a, const dg::Color& b, dg::Color& out);

protected:
    /// Leads to the same parts as `other`, and lies where it does, as its own.
    void CopyLeaders(const Callout& other);
    /// The state alone, with nobody told.
    virtual void AssignState(const CalloutState& state);
    void KeepState() override;

private:
    friend class CombinedCallout;

    using LeaderPtr = du::SmartPtr<CalloutLeader>;

    /// A member of a combined callout changes with it; null: for itself again.
    void SetHolder(const std::shared_ptr<du::BackLink<Callout>>& holder);
    /// Where the callout's item is entered: for the callout itself, or for what it is a member of.
    struct ItemFile {
        std::shared_ptr<ItemIndex> index;
        std::shared_ptr<du::BackLink<Callout>> holder;
    };

    void FileItem(const ItemFile& file);
    void ChangeItem(std::optional<unsigned> id);
    du::SmartPtr<Callout> CarrierOf(const ItemFile& file);
    std::vector<LeaderPtr> Leaders() const;
    template <class Read>
    auto ReadLeader(unsigned position, Read read) const;
    template <class Change>
    bool ChangeLeader(unsigned position, Change change);
    void MarkDirty();
    du::SmartPtr<zrk::ShapeView> MainView() const;
    static LeaderPtr MakeLeader(const LeaderState& state);
    /// Requires: m_mutex is held.
    void TakeOverFlags(const std::vector<LeaderPtr>& leaders) const;
    void ResolveLeaders(const std::map<std::string, du::SmartPtr<zrk::ShapeInstance>>& parts);
    std::size_t ResolvedCount() const;
    bool LabelFrame(dg::DMat44& toWorld) const;

    mutable du::LeafLock m_mutex;  // guards all below but m_localizable, which guards itself
    std::vector<LeaderPtr> m_leaders;
    std::map<std::string, du::SmartPtr<zrk::ShapeInstance>>
        m_loaded;  // parts met since leaders began to wait
    du::SmartPtr<TAnnotation> m_definition;
    std::string m_definitionId;
    du::SmartPtr<zrk::illustration::CalloutTemplateObserver> m_templateObserver;
    du::SmartPtr<TAnnotation> m_observedDefinition;
    CALLOUT_TYPE m_type = CALLOUT_TYPE_SHAPE;
    bool m_isInitialized = false;
    bool m_isKit = false;
    bool m_isCustom = false;
    bool m_isAnchorCalculated = false;
    std::optional<unsigned> m_itemId;
    ItemFile m_itemFile;
    du::Symbol m_text;
    du::Symbol m_localizedText;
    std::optional<du::Symbol> m_legacyText;
    dg::DPoint3D m_position;
    du::SmartPtr<zrk::ShapeView> m_screenView;  // set: the label is in screen space, at m_pixel of this view
    dg::DPoint3D m_pixel;
    unsigned m_drawingOrder = 0;
    CalloutStyle m_style;
    std::shared_ptr<du::BackLink<Callout>> m_holder;  // the combined callout that this is a member of

    du::LocalizableString m_localizable;
};

}  // namespace zrannotations
