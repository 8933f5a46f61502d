#include "app/project/ApplyProject.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>

#include "app/document/SymbolShapes.h"
#include "zrannotations/CombinedCallout.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/object/Checked.h"

namespace zrsheet {
namespace {

using zrannotations::Callout;
using zrannotations::CalloutState;
using zrk::illustration::SbomInstance;
using CalloutPtr = du::SmartPtr<Callout>;

dg::DPoint3D PointOf(const ProjectPoint& point) { return {point[0], point[1], point[2]}; }

dg::Color ColorOf(const ProjectColor& color) {
    return {static_cast<float>(color[0]), static_cast<float>(color[1]), static_cast<float>(color[2]),
            static_cast<float>(color[3])};
}

dg::Location LocationOf(const ProjectMatrix& matrix) { return dg::Location(dg::DMat44(matrix)); }

du::LocalizableString TextOf(const ProjectText& text) {
    du::LocalizableString restored;
    restored = du::Symbol(text.source);
    for (const auto& [language, translation] : text.translations)
        restored.SetTranslation(language, du::Symbol(translation));
    restored.SetEnabled(text.enabled);
    restored.SetDeleted(text.deleted);
    return restored;
}

class Applier {
public:
    Applier(const ProjectData& project, Document& document, ModelRecord& record)
        : m_project(project), m_document(document), m_record(record) {
        m_document.Scene()->GetAnnoSet(m_annoSet);
        m_instances["/"] = document.Model().Root();
        for (const auto& instance : document.Model().Instances())
            m_instances[instance->GetIdentifier().Text()] = instance;
        for (const auto& instance : project.instances) m_saved[instance.path] = &instance;
        for (const auto& instance : project.orphans) m_saved[instance.path] = &instance;
    }

    // Callouts come in while all parts are there, for leaders to hold on to them; what happens to the parts
    // then happens to the leaders as well, which are put right at the end.
    void Apply() {
        ApplySettings();
        ApplyView();
        ApplyProperties();
        ApplyWelds();
        ApplyItems();
        for (const auto& symbol : m_project.symbols) AddSymbol(symbol);
        for (const auto& inset : m_project.insets) AddInset(inset);
        for (const auto& callout : m_project.callouts) AddCallout(callout);
        for (const auto& callout : m_project.savedCallouts)
            m_annoSet->AddReferencedAnnotation(MakeCallout(callout).callout);
        for (const auto& part : m_project.parts) ApplyPart(part);
        for (const auto& symbol : m_symbols) {
            if (symbol.second.isHidden) m_document.Scene()->SetVisible(symbol.second.shape, false);
        }
        for (const auto& [callout, state] : m_callouts) callout->RestoreState(state);
        ListLost();
    }

private:
    struct Symbol {
        unsigned id = 0;         // of the annotation
        std::string identifier;  // of the instance
        du::SmartPtr<zrk::ShapeInstance> shape;
        bool isHidden = false;
    };

    void ApplySettings() {
        m_document.SetPage(m_project.page.width, m_project.page.height);
        m_document.SetLeaders(m_project.settings.leaders);
        m_document.SetLanguage(m_project.settings.language);
        m_document.Scene()->SetDrawWhenHidden(m_project.settings.drawWhenHidden);
        m_document.SetStyle(m_project.style);
        m_document.SetPicture(m_project.picture);
        m_document.SetLayout(m_project.layout);
        m_document.SetPaper(m_project.paper);
        std::set<std::string> names;
        for (const auto& each : m_project.templates) {
            m_document.DefineTemplate({each.name, each.text, each.translations});
            names.insert(each.name);
        }
        m_document.UseTemplate(m_project.settings.labelTemplate);
        for (const auto& name : m_document.Templates().Names()) {
            if (names.count(name) == 0) m_document.RemoveTemplate(name);
        }
    }

    void ApplyView() {
        const auto& camera = m_project.camera;
        m_document.View()->SetCamera(
            dg::Camera3D::FromMatrix(dg::DMat44(camera.worldToPixel), camera.width, camera.height));
        const auto& background = m_project.background;
        m_document.View()->SetBackgroundColors(ColorOf(background.top), ColorOf(background.bottom),
                                               ColorOf(background.border));
    }

    void ApplyProperties() {
        for (const auto& part : m_project.parts) {
            const auto instance = m_instances.find(part.path);
            if (instance == m_instances.end()) continue;
            for (const auto& [name, value] : part.properties)
                instance->second->SetProperty(du::Symbol::EMPTY, du::Symbol(name), du::Symbol(value));
        }
    }

    void ApplyWelds() {
        for (const auto& part : m_project.parts) {
            const auto instance = m_instances.find(part.path);
            if (instance != m_instances.end() && part.weld) instance->second->SetWeld(true);
        }
    }

    void ApplyItems() {
        using zrk::illustration::ItemsList;
        const auto& items = m_document.Items();
        const zrk::Observable::UpdateGroup group{du::SmartPtr<zrk::Observable>(items)};
        items->Clear();
        const ProjectNumbering& numbering = m_project.numbering;
        items->SetNumbering({numbering.hierarchical, numbering.prefix, numbering.separator, numbering.start,
                             numbering.increment, numbering.digits, numbering.alphabetic});
        for (const auto& saved : m_project.items) {
            ItemsList::Item item;
            item.customLabel = saved.label;
            item.number = saved.number;
            item.parent = saved.parent;
            item.isItemized = saved.itemized;
            item.isManual = saved.manual;
            item.isLocked = saved.locked;
            item.tag = saved.tag;
            item.instances = PresentInstances(saved);
            items->Restore(saved.id, item);
        }
        for (const auto& [parent, number] : numbering.last) items->SetLastNumber(parent, number);
    }

    std::vector<Document::SbomPtr> PresentInstances(const ProjectItem& item) {
        std::vector<Document::SbomPtr> present;
        for (std::size_t i = 0; i < item.instances.size(); ++i) {
            const auto instance = m_instances.find(item.instances[i]);
            if (instance != m_instances.end()) {
                present.push_back(instance->second);
            } else {
                m_record.lostOfItems[item.id].push_back({i, item.instances[i]});
            }
        }
        return present;
    }

    void AddSymbol(const ProjectSymbol& symbol) {
        const auto component = SymbolComponent(symbol.shape);
        const du::SmartPtr<zrk::Instance> instance(
            zrk::Checked(new zrk::Instance(du::SmartPtr<zrk::ComponentInstance>(zrk::Checked(
                                               new zrk::ComponentInstance(du::Symbol(symbol.name)))),
                                           symbol.shape, component, LocationOf(symbol.placement))));
        const du::SmartPtr<zrk::Annotation> annotation(
            zrk::Checked(new zrannotations::SymbolAnnotation(instance)));
        m_annoSet->AddAnnotationToSet(annotation, nullptr);
        m_symbols[symbol.name] = {annotation->Id(), instance->GetIdentifier().Text(),
                                  m_document.Scene()->CreateShapeInstance(instance), symbol.hidden};
    }

    void AddInset(const ProjectInset& saved) {
        const zrannotations::Inset::Glass glass{PointOf(saved.source), PointOf(saved.centre), saved.radius,
                                                static_cast<float>(saved.factor)};
        const du::SmartPtr<zrannotations::Inset> inset(
            zrk::Checked(new zrannotations::Inset(m_document.View(), glass)));
        inset->RestoreState({glass, saved.visible});
        m_annoSet->AddAnnotationToSet(inset, nullptr);
        m_insets[saved.id] = inset;
    }

    void AddCallout(const ProjectCallout& saved) {
        zrannotations::CalloutMember made = MakeCallout(saved);
        m_annoSet->AddAnnotationToSet(made.callout, nullptr);
        m_callouts.emplace_back(std::move(made.callout), std::move(made.state));
    }

    static CalloutPtr NewCallout(const std::vector<CalloutPtr>& members) {
        if (members.empty()) return zrk::Checked(new Callout);
        return zrk::Checked(new zrannotations::CombinedCallout(members));
    }

    zrannotations::CalloutMember MakeCallout(const ProjectCallout& saved) {
        CalloutState state = StateOf(saved);
        std::vector<CalloutPtr> members;
        for (const auto& member : saved.members) {
            state.members.push_back(MakeCallout(member));
            members.push_back(state.members.back().callout);
        }
        const CalloutPtr callout = NewCallout(members);
        callout->RestoreState(state);
        if (saved.placed) m_document.SetPlacedByHand(callout, true);
        return {callout, std::move(state)};
    }

    CalloutState StateOf(const ProjectCallout& saved) {
        CalloutState state;
        for (const auto& leader : saved.leaders) state.leaders.push_back(StateOf(leader));
        // Where the host expects them.
        std::stable_partition(state.leaders.begin(), state.leaders.end(),
                              [](const auto& leader) { return static_cast<bool>(leader.part); });
        state.definitionId = saved.labelTemplate;
        state.type = static_cast<zrannotations::CALLOUT_TYPE>(saved.type);
        state.isInitialized = true;
        state.isKit = saved.kit;
        state.isCustom = saved.custom;
        state.isAnchorCalculated = saved.anchorCalculated;
        if (saved.item != 0) state.itemId = saved.item;
        state.text = du::Symbol(saved.text);
        state.localizedText = du::Symbol(saved.localizedText);
        if (saved.legacyText) state.legacyText = du::Symbol(*saved.legacyText);
        state.localizable = TextOf(saved.localizable);
        state.position = PointOf(saved.position);
        if (saved.pixel) {
            state.screenView = m_document.View();
            state.pixel = PointOf(*saved.pixel);
        }
        state.viewId = saved.view;
        state.style = saved.style;
        return state;
    }

    zrannotations::LeaderState StateOf(const ProjectLeader& saved) {
        zrannotations::LeaderState leader;
        leader.anchor = PointOf(saved.anchor);
        const auto symbol = m_symbols.find(saved.target);
        const bool isOnSymbol = symbol != m_symbols.end();
        leader.part = isOnSymbol ? symbol->second.shape : ShapeOf(saved.target);
        leader.instanceId = isOnSymbol ? symbol->second.identifier : saved.target;
        if (!saved.assembly.empty()) leader.assembly = AssemblyOf(saved.assembly);
        if (!saved.symbol.empty()) leader.symbolId = m_symbols[saved.symbol].id;
        if (saved.inset != 0) leader.inset = m_insets[saved.inset];
        leader.isHidden = saved.hidden;
        leader.isCollapsed = saved.collapsed;
        return leader;
    }

    du::SmartPtr<zrk::ShapeInstance> ShapeOf(const std::string& path) const {
        du::SmartPtr<zrk::ShapeInstance> shape;
        const auto instance = m_instances.find(path);
        if (instance != m_instances.end())
            m_document.Scene()->GetShapeInstance(instance->second->GetEbomInstance(), shape);
        return shape;
    }

    /// Of one that is gone, something of its name, so that the leader does not forget it.
    Document::SbomPtr AssemblyOf(const std::string& path) {
        Document::SbomPtr& instance = m_instances.contains(path) ? m_instances[path] : m_goneAssemblies[path];
        if (!instance) instance = zrk::Checked(new SbomInstance(du::Symbol(path), m_saved.at(path)->name));
        return instance;
    }

    void ApplyPart(const ProjectPart& part) {
        if (!m_instances.contains(part.path)) {
            m_record.lostParts.push_back(part);
            return;
        }
        const auto shape = ShapeOf(part.path);
        if (!shape) return;
        const auto& scene = m_document.Scene();
        if (part.placement) scene->SetLocation(shape, LocationOf(*part.placement));
        if (part.hidden) scene->SetVisible(shape, false);
        if (part.phantom) scene->SetPhantom(shape, true);
        if (part.removed) scene->RemoveShapeInstance(shape);
    }

    void ListLost() {
        for (const auto* saved : {&m_project.instances, &m_project.orphans}) {
            for (const auto& instance : *saved) {
                if (!m_instances.contains(instance.path)) m_record.lost.push_back(instance);
            }
        }
    }

    const ProjectData& m_project;
    Document& m_document;
    ModelRecord& m_record;
    du::SmartPtr<zrk::AnnoSet> m_annoSet;
    std::unordered_map<std::string, Document::SbomPtr> m_instances;  // by path
    std::unordered_map<std::string, const ProjectInstance*> m_saved;
    std::unordered_map<std::string, Document::SbomPtr> m_goneAssemblies;
    std::map<std::string, Symbol> m_symbols;
    std::map<unsigned, du::SmartPtr<zrannotations::Inset>> m_insets;
    std::vector<std::pair<CalloutPtr, CalloutState>> m_callouts;
};

}  // namespace

void ApplyProject(const ProjectData& project, Document& document, ModelRecord& record) {
    Applier(project, document, record).Apply();
}

}  // namespace zrsheet
