#include "zrannotations/Callout.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "zrannotations/AnchorFinder.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrannotations/ConstStrings.h"
#include "zrk/scene/ShapeScene.h"

namespace zrannotations {

Callout::Callout() = default;

Callout::~Callout() {
    if (m_observedDefinition) m_observedDefinition->UnregisterObserver(m_templateObserver);
    if (m_templateObserver) m_templateObserver->OnDestroy();
}

du::Symbol Callout::GetClass() const { return ConstStrings::zrCalloutLabel; }

bool Callout::Initialize(const du::SmartPtr<TAnnotation>& definition,
                         const du::SmartPtr<zrk::ShapeInstance>& shapeInstance, bool isKit,
                         const du::SmartPtr<zrk::BaseInstance>& assembly) {
    const auto part = BestSeenPart(shapeInstance, assembly);
    dg::DPoint3D anchor;
    if (!CalculateAnchor(part, anchor)) return false;
    UpdateDefinition(definition);
    dg::Location location;
    part->GetLocation(location);
    const dg::DPoint3D world = anchor * location;
    BeforeChange();
    const std::lock_guard hold(m_mutex);
    m_leaders.assign(1, LeaderPtr(new CalloutLeader(anchor, part, assembly)));
    m_type = assembly ? CALLOUT_TYPE_ASSEMBLY : CALLOUT_TYPE_SHAPE;
    m_isKit = isKit;
    location.SetMat(dg::FMat33::Scale(location.GetScale()));
    m_position = world * location.GetXform().Invert();
    m_isInitialized = true;
    return true;
}

void Callout::InitializeFree(const du::SmartPtr<TAnnotation>& definition, const dg::DPoint3D& position) {
    UpdateDefinition(definition);
    BeforeChange();
    const std::lock_guard hold(m_mutex);
    m_type = CALLOUT_TYPE_FREE;
    m_position = position;
    m_isInitialized = true;
}

bool Callout::IsInitialized() const {
    const std::lock_guard hold(m_mutex);
    return m_isInitialized;
}

CALLOUT_TYPE Callout::GetType() const {
    const std::lock_guard hold(m_mutex);
    return m_type;
}

bool Callout::IsKit() const {
    const std::lock_guard hold(m_mutex);
    return m_isKit;
}

bool Callout::IsCustomCallout() const {
    const std::lock_guard hold(m_mutex);
    return m_isCustom;
}

void Callout::SetCustomCallout(bool isCustom) {
    BeforeChange();
    const std::lock_guard hold(m_mutex);
    m_isCustom = isCustom;
}

bool Callout::IsValid() const { return static_cast<bool>(GetScene()); }

du::SmartPtr<TAnnotation> Callout::GetDefinition() const {
    std::string id;
    {
        const std::lock_guard hold(m_mutex);
        if (m_definition) return m_definition;
        id = m_definitionId;
    }
    return id.empty() ? du::SmartPtr<TAnnotation>() : FindCalloutTemplate(id);
}

void Callout::UpdateDefinition(const du::SmartPtr<TAnnotation>& definition) {
    BeforeChange();
    du::SmartPtr<zrk::illustration::CalloutTemplateObserver> observer;
    du::SmartPtr<TAnnotation> observed;
    {
        const std::lock_guard hold(m_mutex);
        m_definition = definition;
        m_definitionId = definition ? definition->GetId() : std::string();
        observer = m_templateObserver;
        if (observer) observed = std::exchange(m_observedDefinition, definition);
    }
    if (observed) observed->UnregisterObserver(observer);
    if (definition && observer) definition->RegisterObserver(observer);
}

void Callout::ReleaseCalloutTemplate() {
    du::SmartPtr<TAnnotation> released;
    const std::lock_guard hold(m_mutex);
    std::swap(released, m_definition);
}

void Callout::RegisterTemplateObserver(
    const du::SmartPtr<zrk::illustration::CalloutTemplateObserver>& observer) {
    UnregisterTemplateObserver();
    const auto definition = GetDefinition();
    {
        const std::lock_guard hold(m_mutex);
        m_templateObserver = observer;
        m_observedDefinition = definition;
    }
    if (definition) definition->RegisterObserver(observer);
}

void Callout::UnregisterTemplateObserver() {
    du::SmartPtr<zrk::illustration::CalloutTemplateObserver> observer;
    du::SmartPtr<TAnnotation> observed;
    {
        const std::lock_guard hold(m_mutex);
        std::swap(observer, m_templateObserver);
        std::swap(observed, m_observedDefinition);
    }
    if (observed) observed->UnregisterObserver(observer);
    if (observer) observer->OnDestroy();
}

std::vector<Callout::LeaderPtr> Callout::Leaders() const {
    const std::lock_guard hold(m_mutex);
    return m_leaders;
}

/// What `read` makes of the leader, or a default value when it is gone.
template <class Read>
auto Callout::ReadLeader(unsigned position, Read read) const {
    const std::lock_guard hold(m_mutex);
    using Result = std::decay_t<decltype(read(*m_leaders[0]))>;
    return position < m_leaders.size() ? Result(read(*m_leaders[position])) : Result();
}

template <class Change>
bool Callout::ChangeLeader(unsigned position, Change change) {
    const std::lock_guard hold(m_mutex);
    if (position >= m_leaders.size()) return false;
    change(*m_leaders[position]);
    return true;
}

std::size_t Callout::ResolvedCount() const {
    return static_cast<std::size_t>(std::count_if(m_leaders.begin(), m_leaders.end(), [](const auto& leader) {
        return static_cast<bool>(leader->m_shapeInstance);
    }));
}

unsigned Callout::GetLeaderLineCount(bool withWaiting) const {
    const std::lock_guard hold(m_mutex);
    return static_cast<unsigned>(withWaiting ? m_leaders.size() : ResolvedCount());
}

du::SmartPtr<zrk::ShapeInstance> Callout::GetShapeInstanceAtPos(unsigned position) const {
    return ReadLeader(position, [](const CalloutLeader& leader) { return leader.m_shapeInstance; });
}

std::string Callout::GetShapeInstanceIdAtPos(unsigned position) const {
    return ReadLeader(position, [](const CalloutLeader& leader) { return leader.m_instanceId; });
}

du::SmartPtr<zrk::BaseInstance> Callout::GetAssemblyInstanceAtPos(unsigned position) const {
    return ReadLeader(position, [](const CalloutLeader& leader) { return leader.m_assembly; });
}

du::SmartPtr<Inset> Callout::GetInsetAtPos(unsigned position) const {
    return ReadLeader(position, [](const CalloutLeader& leader) { return leader.m_inset; });
}

void Callout::SetInsetAtPos(const du::SmartPtr<Inset>& inset, unsigned position) {
    BeforeChange();
    du::SmartPtr<Inset> released = inset;
    ChangeLeader(position, [&](CalloutLeader& leader) { std::swap(leader.m_inset, released); });
}

bool Callout::GetAnchorAtPos(unsigned position, dg::DPoint3D& out) const {
    const std::lock_guard hold(m_mutex);
    if (position >= m_leaders.size()) return false;
    out = m_leaders[position]->m_anchor;
    return true;
}

bool Callout::GetLeaderEndAtPos(unsigned position, LeaderEnd& out) const {
    const std::lock_guard hold(m_mutex);
    if (position >= m_leaders.size() || !m_leaders[position]->m_shapeInstance) return false;
    const CalloutLeader& leader = *m_leaders[position];
    out = {leader.m_shapeInstance, leader.m_assembly, leader.m_inset, leader.m_anchor,
           leader.m_isHidden || leader.m_isClipped};
    return true;
}

void Callout::SetAnchor(const dg::DPoint3D& anchor, unsigned position) {
    BeforeChange();
    const bool isSet = ChangeLeader(position, [&](CalloutLeader& leader) {
        leader.m_anchor = anchor;
        m_isAnchorCalculated = true;
    });
    if (isSet) NotifyModified();
}

bool Callout::IsAnchorPointCalculated() const {
    const std::lock_guard hold(m_mutex);
    return m_isAnchorCalculated;
}

bool Callout::IsHiddenAtPos(unsigned position) const {
    return ReadLeader(position,
                      [](const CalloutLeader& leader) { return leader.m_isHidden || leader.m_isClipped; });
}

bool Callout::IsHiddenAsDashedAtPos(unsigned position) const {
    return ReadLeader(position, [](const CalloutLeader& leader) { return leader.m_isDashed; });
}

void Callout::SetHiddenAsDashedAtPos(bool dashed, unsigned position) {
    ChangeLeader(position, [dashed](CalloutLeader& leader) { leader.m_isDashed = dashed; });
}

bool Callout::IsDimAtPos(unsigned position) const {
    return ReadLeader(position, [](const CalloutLeader& leader) { return leader.m_isDim; });
}

dg::Color Callout::GetDimColorAtPos(unsigned position) const {
    return ReadLeader(position, [](const CalloutLeader& leader) { return leader.m_dimColor; });
}

void Callout::SetDimAtPos(bool dim, unsigned position, const dg::Color& color) {
    ChangeLeader(position, [&](CalloutLeader& leader) {
        leader.m_isDim = dim;
        leader.m_dimColor = color;
    });
}

void Callout::SetCoveredAtPos(bool covered, unsigned position, const dg::Color& dimColor) {
    ChangeLeader(position, [&](CalloutLeader& leader) {
        leader.m_isDashed = covered;
        leader.m_isDim = covered;
        leader.m_dimColor = dimColor;
    });
}

unsigned Callout::GetSymbolIdAtPos(unsigned position) const {
    return ReadLeader(position, [](const CalloutLeader& leader) { return leader.m_symbolId; });
}

void Callout::SetSymbolIdAtPos(unsigned id, unsigned position) {
    BeforeChange();
    ChangeLeader(position, [id](CalloutLeader& leader) { leader.m_symbolId = id; });
}

void Callout::RemoveLeaderAtPos(unsigned position) {
    BeforeChange();
    LeaderPtr removed;
    {
        const std::lock_guard hold(m_mutex);
        if (position >= m_leaders.size()) return;
        removed = m_leaders[position];
        m_leaders.erase(m_leaders.begin() + position);
    }
    NotifyModified();
}

bool Callout::GetInstanceLocationAtPos(dg::Location& out, unsigned position) const {
    const auto shapeInstance = GetShapeInstanceAtPos(position);
    if (shapeInstance) shapeInstance->GetLocation(out);
    return static_cast<bool>(shapeInstance);
}

bool Callout::LeadsNowhere() const { return GetLeaderLineCount(false) > 0 && GetDrawnLeaders().empty(); }

bool Callout::GetLeaderEndOnScreen(unsigned position, const dg::Camera3D& camera, dg::DPoint3D& world,
                                   dg::DPoint3D& pixel) const {
    LeaderEnd end;
    if (!GetLeaderEndAtPos(position, end)) return false;
    dg::Location location;
    end.part->GetLocation(location);
    world = end.anchor * location;
    if (end.inset) return end.inset->GetObjectPtToScreenPt(world, pixel);
    pixel = world * camera.GetWorldToPixel();
    return true;
}

std::vector<unsigned> Callout::GetDrawnLeaders() const {
    const auto leaders = Leaders();
    const auto firstPart = GetShapeInstanceAtPos(0);
    const auto map = firstPart ? VisibilityOf(*firstPart) : nullptr;
    std::vector<unsigned> drawn;
    bool isAnyCollapsed = false;
    std::pair<bool, std::size_t> bestRank;  // uncovered, then the area in which the part is seen
    unsigned best = 0;
    const std::lock_guard hold(m_mutex);
    for (unsigned i = 0; i < leaders.size(); ++i) {
        const CalloutLeader& leader = *leaders[i];
        if (!leader.m_shapeInstance || leader.m_isHidden || leader.m_isClipped) continue;
        const auto* spot = FindVisibleSpot(map.get(), *leader.m_shapeInstance);
        const std::pair rank(!leader.m_isDashed, spot != nullptr ? spot->area : 0);
        if (drawn.empty() || rank > bestRank) {
            bestRank = rank;
            best = i;
        }
        isAnyCollapsed = isAnyCollapsed || leader.m_collapsed;
        drawn.push_back(i);
    }
    return isAnyCollapsed ? std::vector<unsigned>{best} : drawn;
}

bool Callout::CalculateAnchor(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance,
                              dg::DPoint3D& out) const {
    return shapeInstance && FindAnchor(*shapeInstance, out);
}

du::SmartPtr<CalloutLeader> Callout::CreateCalloutLeader(
    const dg::DPoint3D& anchor, const du::SmartPtr<zrk::ShapeInstance>& shapeInstance,
    const du::SmartPtr<zrk::BaseInstance>& assembly) const {
    return du::SmartPtr<CalloutLeader>(new CalloutLeader(anchor, shapeInstance, assembly));
}

void Callout::ConnectLeader(const du::SmartPtr<CalloutLeader>& leader) {
    if (!leader) return;
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        const auto waiting = leader->m_shapeInstance
                                 ? m_leaders.begin() + static_cast<std::ptrdiff_t>(ResolvedCount())
                                 : m_leaders.end();
        m_leaders.insert(waiting, leader);
    }
    NotifyModified();
}

void Callout::CopyLeaders(const Callout& other) {
    std::vector<LeaderPtr> leaders;
    dg::DPoint3D position;
    CALLOUT_TYPE type = CALLOUT_TYPE_SHAPE;
    {
        const std::lock_guard hold(other.m_mutex);
        for (const auto& leader : other.m_leaders) leaders.emplace_back(new CalloutLeader(*leader));
        position = other.m_position;
        type = other.m_type;
    }
    BeforeChange();
    const std::lock_guard hold(m_mutex);
    m_leaders.swap(leaders);
    m_position = position;
    m_type = type;
    m_isInitialized = true;
}

void Callout::ShowAllLeaders(const du::SmartPtr<zrk::Operation>&) {
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        for (const auto& leader : m_leaders) leader->m_collapsed = false;
    }
    MarkDirty();
}

bool Callout::HasItemId() const {
    const std::lock_guard hold(m_mutex);
    return m_itemId.has_value();
}

bool Callout::ReferencesItemId(unsigned id) const {
    const std::lock_guard hold(m_mutex);
    return m_itemId == id;
}

bool Callout::GetItemId(unsigned& id) const {
    const std::lock_guard hold(m_mutex);
    if (m_itemId) id = *m_itemId;
    return m_itemId.has_value();
}

void Callout::SetItemId(unsigned id) {
    BeforeChange();
    ChangeItem(id);
}

void Callout::RemoveItemId() {
    BeforeChange();
    ChangeItem(std::nullopt);
}

void Callout::SetItemIndex(const std::shared_ptr<ItemIndex>& index) { FileItem({index, nullptr}); }

/// Null when the callout is a member of what is gone, and entered nowhere then.
du::SmartPtr<Callout> Callout::CarrierOf(const ItemFile& file) {
    if (!file.index) return nullptr;
    return file.holder ? file.holder->Lock() : du::SmartPtr<Callout>(this);
}

void Callout::FileItem(const ItemFile& file) {
    ItemFile former;
    std::optional<unsigned> id;
    {
        const std::lock_guard hold(m_mutex);
        former = std::exchange(m_itemFile, file);
        id = m_itemId;
    }
    if (!id) return;
    if (const auto carrier = CarrierOf(former)) former.index->Remove(*id, carrier);
    if (const auto carrier = CarrierOf(file)) file.index->Add(*id, carrier);
}

void Callout::ChangeItem(std::optional<unsigned> id) {
    std::optional<unsigned> former;
    ItemFile file;
    {
        const std::lock_guard hold(m_mutex);
        former = std::exchange(m_itemId, id);
        file = m_itemFile;
    }
    const auto carrier = former != id ? CarrierOf(file) : du::SmartPtr<Callout>();
    if (carrier && former) file.index->Remove(*former, carrier);
    if (carrier && id) file.index->Add(*id, carrier);
}

void Callout::ResolveLeaders(const std::map<std::string, du::SmartPtr<zrk::ShapeInstance>>& parts) {
    for (const auto& leader : m_leaders) {
        const auto part = parts.find(leader->m_instanceId);
        if (!leader->m_shapeInstance && part != parts.end()) leader->m_shapeInstance = part->second;
    }
    std::stable_partition(m_leaders.begin(), m_leaders.end(),
                          [](const LeaderPtr& leader) { return static_cast<bool>(leader->m_shapeInstance); });
}

void Callout::UpdateWithCalloutInfo() {
    BeforeChange();
    const std::lock_guard hold(m_mutex);
    ResolveLeaders(m_loaded);
    if (ResolvedCount() == m_leaders.size()) m_loaded.clear();
}

// Insets are not looked up: a leader holds its inset itself.
void Callout::UpdateWithCalloutInfo(const SymbolMap& symbols, const InsetMap&) {
    const auto scene = du::DynamicCast<zrk::ShapeScene>(GetScene());
    if (!scene || GetLeaderLineCount(true) == GetLeaderLineCount(false)) return;
    std::map<std::string, du::SmartPtr<zrk::ShapeInstance>> parts;
    for (const auto& part : scene->GetShapeInstances()) {
        const CalloutLeader probe({}, part, nullptr);
        if (!probe.m_instanceId.empty()) parts.emplace(probe.m_instanceId, part);
    }
    for (const auto& [instance, annotation] : symbols) {
        du::SmartPtr<zrk::ShapeInstance> part;
        scene->GetShapeInstance(instance, part);
        if (part) parts.emplace(instance->GetIdentifier().Text(), part);
    }
    BeforeChange();
    const std::lock_guard hold(m_mutex);
    ResolveLeaders(parts);
}

void Callout::OnShapeInstanceCreate(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance) {
    const CalloutLeader probe({}, shapeInstance, nullptr);
    if (probe.m_instanceId.empty()) return;  // parts without id are not one and the same
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        for (const auto& leader : m_leaders) {
            if (leader->m_instanceId != probe.m_instanceId) continue;
            // A part that comes back takes the place of its former self.
            if (leader->m_shapeInstance) leader->m_shapeInstance = shapeInstance;
            leader->m_isHidden = false;
        }
        if (ResolvedCount() < m_leaders.size()) m_loaded[probe.m_instanceId] = shapeInstance;
    }
    MarkDirty();
}

void Callout::OnShapeInstanceLocation(const du::SmartPtr<zrk::ShapeInstance>&) { MarkDirty(); }

void Callout::SetVisible(const std::string& instanceId, bool visible) {
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        for (const auto& leader : m_leaders) {
            if (instanceId.empty() || leader->m_instanceId == instanceId) leader->m_isHidden = !visible;
        }
    }
    MarkDirty();
}

bool Callout::AttachSubsetScene(const du::SmartPtr<zrk::Scene>& scene, const std::string& instanceId) {
    if (!scene) return false;
    SetVisible(instanceId, true);
    return true;
}

void Callout::SetVisibleWithinInsetBounds(const du::SmartPtr<Inset>& inset) {
    if (!inset) return;
    for (const auto& leader : Leaders()) {
        du::SmartPtr<zrk::ShapeInstance> part;
        dg::DPoint3D point;
        {
            const std::lock_guard hold(m_mutex);
            if (leader->m_inset == inset) part = leader->m_shapeInstance;
            point = leader->m_anchor;
        }
        if (!part) continue;
        dg::Location location;
        part->GetLocation(location);
        dg::DPoint3D pixel;
        const bool isInside = inset->GetObjectPtToScreenPt(point * location, pixel);
        const std::lock_guard hold(m_mutex);
        leader->m_isClipped = !isInside;
    }
    MarkDirty();
}

}  // namespace zrannotations
