#include "app/project/CaptureProject.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

#include "zrannotations/CombinedCallout.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/annotation/AnnoSet.h"

namespace zrsheet {
namespace {

using zrannotations::Callout;
using zrannotations::CalloutState;
using zrk::illustration::SbomInstance;

ProjectPoint PointOf(const dg::DPoint3D& point) { return {point.x, point.y, point.z}; }

ProjectMatrix MatrixOf(const dg::DMat44& matrix) {
    ProjectMatrix values{};
    for (std::size_t i = 0; i < 16; ++i) values[i] = matrix(i / 4, i % 4);
    return values;
}

ProjectColor ColorOf(const dg::Color& color) {
    return {static_cast<double>(color.r), static_cast<double>(color.g), static_cast<double>(color.b),
            static_cast<double>(color.a)};
}

ProjectMatrix PlacementOf(const zrk::ShapeInstance& shape) {
    dg::Location location;
    shape.GetLocation(location);
    return MatrixOf(location.GetXform());
}

ProjectText TextOf(const du::LocalizableString& text) {
    ProjectText captured;
    captured.source = text.GetSource().Text();
    for (const auto& [language, translation] : text.GetTranslations())
        captured.translations[language] = translation.Text();
    captured.enabled = text.IsEnabled();
    captured.deleted = text.IsDeleted();
    return captured;
}

std::string SymbolName(const zrk::Instance& symbol) {
    du::SmartPtr<zrk::ComponentInstance> component;
    symbol.GetComponentInstance(component);
    du::Symbol name;
    component->GetID(name);
    return name.Text();
}

class Capturer {
public:
    Capturer(const Document& document, const ModelRecord& record) : m_document(document), m_record(record) {}

    ProjectData Capture() {
        m_project.model = m_record.file;
        m_project.instances = m_record.instances;
        CaptureSettings();
        CaptureView();
        CaptureParts();
        CaptureItems();
        CaptureAnnotations();
        ListOrphans();
        return std::move(m_project);
    }

private:
    void CaptureSettings() {
        m_project.page = {m_document.PageWidth(), m_document.PageHeight()};
        m_project.settings = {m_document.Language(), m_document.Leaders(),
                              m_document.Scene()->GetDrawWhenHidden(), m_document.CurrentTemplate()};
        m_project.style = m_document.Style();
        m_project.picture = m_document.Picture();
        m_project.layout = m_document.Layout();
        m_project.paper = m_document.Paper();
        for (const NamedTemplate& each : m_document.Templates().All())
            m_project.templates.push_back({each.name, each.text, each.translations});
    }

    void CaptureView() {
        dg::Camera3D camera;
        m_document.View()->GetCamera(camera);
        m_project.camera = {MatrixOf(camera.GetWorldToPixel()), camera.GetViewportWidth(),
                            camera.GetViewportHeight()};
        dg::Color top;
        dg::Color bottom;
        dg::Color border;
        m_document.View()->GetBackgroundColors(top, bottom, border);
        m_project.background = {ColorOf(top), ColorOf(bottom), ColorOf(border)};
    }

    void CaptureParts() {
        for (const auto& instance : m_document.Model().Instances()) {
            ProjectPart part = DifferenceOf(*instance);
            ProjectPart unchanged;
            unchanged.path = part.path;
            if (!(part == unchanged)) m_project.parts.push_back(std::move(part));
        }
        for (const auto& part : m_record.lostParts) m_project.parts.push_back(part);
    }

    ProjectPart DifferenceOf(const SbomInstance& instance) const {
        ProjectPart part;
        part.path = instance.GetIdentifier().Text();
        const auto& ebom = instance.GetEbomInstance();
        du::SmartPtr<zrk::ShapeInstance> shape;
        m_document.Scene()->GetShapeInstance(ebom, shape);
        const bool isLeaf = !instance.HasChildren();
        part.weld = instance.IsWeld();
        part.removed = isLeaf && !shape;
        if (shape) {
            part.hidden = !shape->IsVisible();
            part.phantom = shape->IsPhantom();
            dg::Location location;
            shape->GetLocation(location);
            if (!(location == ebom->GetWorldLocation())) part.placement = MatrixOf(location.GetXform());
        }
        const auto original = m_record.properties.find(part.path);
        for (auto& [name, value] : PropertiesOf(instance)) {
            const auto before = original->second.find(name);
            if (before == original->second.end() || before->second != value) part.properties[name] = value;
        }
        return part;
    }

    void CaptureItems() {
        const auto& items = *m_document.Items();
        CaptureNumbering(items);
        for (const unsigned id : items.GetItemIds()) {
            const auto item = items.Capture(id);
            if (!item) continue;
            m_items.insert(id);
            ProjectItem captured{id,
                                 item->customLabel,
                                 item->number,
                                 item->parent,
                                 item->isItemized,
                                 item->isManual,
                                 item->isLocked,
                                 item->tag,
                                 {}};
            for (const auto& instance : item->instances)
                captured.instances.push_back(instance->GetIdentifier().Text());
            AddLostInstances(captured);
            m_project.items.push_back(std::move(captured));
        }
    }

    void CaptureNumbering(const zrk::illustration::ItemsList& items) {
        const auto numbers = items.CaptureNumbers();
        const auto& numbering = numbers.numbering;
        m_project.numbering = {
            numbering.hierarchical, numbering.prefix, numbering.separator,  numbering.start,
            numbering.increment,    numbering.digits, numbering.alphabetic, {}};
        auto lasts = numbers.lasts;
        for (const unsigned id : items.GetItemIds()) {
            const auto item = items.Capture(id);
            const auto last = lasts.find(item && numbering.hierarchical ? item->parent : 0);
            if (item && last != lasts.end() && last->second == item->number) lasts.erase(last);
        }
        for (const auto& [parent, number] : lasts) m_project.numbering.last.push_back({parent, number});
    }

    void AddLostInstances(ProjectItem& item) const {
        const auto lost = m_record.lostOfItems.find(item.id);
        if (lost == m_record.lostOfItems.end()) return;
        for (const auto& [index, path] : lost->second) {
            const std::size_t place = std::min(index, item.instances.size());
            item.instances.insert(item.instances.begin() + static_cast<std::ptrdiff_t>(place), path);
        }
    }

    void CaptureAnnotations() {
        du::SmartPtr<zrk::AnnoSet> annoSet;
        m_document.Scene()->GetAnnoSet(annoSet);
        const auto annotations = annoSet->GetAnnotations();
        for (const auto& annotation : annotations) {
            if (const auto symbol = du::DynamicCast<zrannotations::SymbolAnnotation>(annotation)) {
                CaptureSymbol(*symbol);
            } else if (const auto inset = du::DynamicCast<zrannotations::Inset>(annotation)) {
                CaptureInset(*inset);
            }
        }
        for (const auto& annotation : annotations) {
            if (const auto callout = du::DynamicCast<Callout>(annotation))
                m_project.callouts.push_back(CalloutOf(callout));
        }
        // The set keeps these by address, which tells nothing.
        std::map<unsigned, du::SmartPtr<Callout>> saved;
        for (const auto& annotation : annoSet->GetReferencedAnnotations()) {
            const auto callout = du::DynamicCast<Callout>(annotation);
            if (callout && !annoSet->Contains(annotation)) saved.emplace(callout->Id(), callout);
        }
        for (const auto& [id, callout] : saved) m_project.savedCallouts.push_back(CalloutOf(callout));
    }

    void CaptureSymbol(const zrannotations::SymbolAnnotation& symbol) {
        const auto& instance = symbol.GetInstance();
        du::SmartPtr<zrk::ShapeInstance> shape;
        m_document.Scene()->GetShapeInstance(instance, shape);
        if (!shape) return;  // it is being taken away
        const std::string name = SymbolName(*instance);
        m_symbols[symbol.Id()] = name;
        m_project.symbols.push_back(
            {name, instance->GetComponentNode()->GetObjectName(), PlacementOf(*shape), !shape->IsVisible()});
    }

    void CaptureInset(const zrannotations::Inset& inset) {
        const auto id = static_cast<unsigned>(m_insets.size() + 1);
        m_insets[&inset] = id;
        const auto state = inset.CaptureState();
        m_project.insets.push_back({id, PointOf(state.glass.source), PointOf(state.glass.centre),
                                    state.glass.radius, static_cast<double>(state.glass.factor),
                                    state.isVisible});
    }

    ProjectCallout CalloutOf(const Document::CalloutPtr& callout) {
        return CalloutOf(callout, callout->CaptureState());
    }

    ProjectCallout CalloutOf(const Document::CalloutPtr& original, const CalloutState& state) {
        ProjectCallout callout;
        callout.type = static_cast<ProjectCalloutType>(state.type);
        if (m_document.Templates().Find(state.definitionId)) callout.labelTemplate = state.definitionId;
        callout.kit = state.isKit;
        callout.custom = state.isCustom;
        callout.placed = m_document.IsPlacedByHand(original);
        if (state.itemId && m_items.count(*state.itemId) != 0) callout.item = *state.itemId;
        callout.text = state.text.Text();
        callout.localizedText = state.localizedText.Text();
        if (state.legacyText) callout.legacyText = state.legacyText->Text();
        callout.localizable = TextOf(state.localizable);
        callout.position = PointOf(state.position);
        if (state.screenView) callout.pixel = PointOf(state.pixel);
        callout.anchorCalculated = state.isAnchorCalculated;
        callout.view = state.viewId;
        callout.style = state.style;
        for (const auto& leader : state.leaders) callout.leaders.push_back(LeaderOf(leader));
        for (const auto& member : state.members) {
            if (member.callout) callout.members.push_back(CalloutOf(member.callout, member.state));
        }
        return callout;
    }

    ProjectLeader LeaderOf(const zrannotations::LeaderState& state) {
        ProjectLeader leader;
        du::SmartPtr<zrk::Instance> instance;
        if (state.part) state.part->GetInstance(instance);
        leader.target = instance && instance->Is3dSymbol() ? SymbolName(*instance) : state.instanceId;
        const auto symbol = m_symbols.find(state.symbolId);
        if (symbol != m_symbols.end()) leader.symbol = symbol->second;
        leader.anchor = PointOf(state.anchor);
        if (state.assembly) leader.assembly = state.assembly->GetIdentifier().Text();
        const auto inset = m_insets.find(state.inset.get());
        if (inset != m_insets.end()) leader.inset = inset->second;
        leader.hidden = state.isHidden;
        leader.collapsed = state.isCollapsed;
        return leader;
    }

    // What is referred to and is not there.
    void ListOrphans() {
        std::set<std::string> known;
        for (const auto& instance : m_project.instances) known.insert(instance.path);
        for (const auto& symbol : m_project.symbols) known.insert(symbol.name);
        std::set<std::string> lost = Referred();
        std::erase_if(lost, [&known](const auto& path) { return path == "/" || known.count(path) != 0; });
        for (const auto& instance : m_record.lost) {
            if (lost.erase(instance.path) != 0) m_project.orphans.push_back(instance);
        }
        for (const auto& path : lost) m_project.orphans.push_back({path, "", ""});
    }

    std::set<std::string> Referred() const {
        std::set<std::string> paths;
        for (const auto& part : m_project.parts) paths.insert(part.path);
        for (const auto& item : m_project.items) paths.insert(item.instances.begin(), item.instances.end());
        AddReferred(m_project.callouts, paths);
        AddReferred(m_project.savedCallouts, paths);
        paths.erase("");
        return paths;
    }

    static void AddReferred(const std::vector<ProjectCallout>& callouts, std::set<std::string>& paths) {
        for (const auto& callout : callouts) {
            for (const auto& leader : callout.leaders) {
                paths.insert(leader.target);
                paths.insert(leader.assembly);
            }
            AddReferred(callout.members, paths);
        }
    }

    const Document& m_document;
    const ModelRecord& m_record;
    ProjectData m_project;
    std::set<unsigned> m_items;
    std::map<unsigned, std::string> m_symbols;  // by the annotation's id
    std::unordered_map<const zrannotations::Inset*, unsigned> m_insets;
};

}  // namespace

ProjectData CaptureProject(const Document& document, const ModelRecord& record) {
    return Capturer(document, record).Capture();
}

}  // namespace zrsheet
