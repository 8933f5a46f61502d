#include "tests/callouts/SceneDump.h"

#include <iomanip>
#include <limits>
#include <sstream>

#include "du/Localizer.h"
#include "zrannotations/Callout.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrannotations/Inset.h"
#include "zritemlist/ItemList.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/scene/ShapeView.h"

namespace zrcallouts {
namespace {

using zrannotations::CalloutState;

class Dump {
public:
    Dump() { m_out << std::setprecision(std::numeric_limits<double>::max_digits10); }

    template <class... Values>
    Dump& Line(const Values&... values) {
        ((m_out << ' ' << values), ...);
        m_out << '\n';
        return *this;
    }
    std::string Text() const { return m_out.str(); }

private:
    std::ostringstream m_out;
};

std::string Id(const du::SmartPtr<zrk::Annotation>& annotation) {
    return annotation ? "#" + std::to_string(annotation->Id()) : "-";
}

std::string Name(const du::SmartPtr<zrk::ShapeInstance>& part) {
    if (!part) return "-";
    du::SmartPtr<zrk::Instance> instance;
    part->GetInstance(instance);
    return instance->GetName() + "." + std::to_string(part->GetSequence());
}

std::string Optional(const auto& value) {
    std::ostringstream out;
    if (value) out << *value;
    return "'" + out.str() + "'";
}

std::string Text(const dg::DPoint3D& p) {
    std::ostringstream out;
    out << std::setprecision(std::numeric_limits<double>::max_digits10) << '(' << p.x << ',' << p.y << ','
        << p.z << ')';
    return out.str();
}

std::string Text(const dg::DMat44& matrix) {
    return Text(dg::DPoint3D(0, 0, 0) * matrix) + Text(dg::DPoint3D(1, 2, 3) * matrix);
}

std::optional<std::string> Text(const std::optional<du::Symbol>& symbol) {
    return symbol ? std::optional(symbol->Text()) : std::nullopt;
}

void Write(Dump& dump, const CalloutState& state) {
    dump.Line("  definition", state.definitionId, "type", state.type, state.isInitialized, state.isKit,
              state.isCustom, state.isAnchorCalculated, "item", Optional(state.itemId), "view", state.viewId);
    dump.Line("  text", state.text.Text(), "|", state.localizedText.Text(), "|",
              Optional(Text(state.legacyText)), "|", state.localizable.GetSource().Text(),
              state.localizable.IsEnabled(), state.localizable.IsDeleted());
    for (const auto& [language, text] : state.localizable.GetTranslations()) {
        dump.Line("  translation", language, text.Text());
    }
    dump.Line("  label", Text(state.position), static_cast<bool>(state.screenView), Text(state.pixel));
    for (const auto& leader : state.leaders) {
        dump.Line("  leader", Name(leader.part), leader.instanceId,
                  leader.assembly ? leader.assembly->GetName() : "-", Text(leader.anchor), Id(leader.inset),
                  leader.symbolId, leader.isHidden, leader.isCollapsed);
    }
    for (const auto& member : state.members) {
        dump.Line("  member", Id(member.callout));
        Write(dump, member.state);
    }
}

void Write(Dump& dump, const zrannotations::Inset& inset) {
    const auto state = inset.CaptureState();
    dump.Line("  glass", Text(state.glass.source), Text(state.glass.centre), state.glass.radius,
              state.glass.factor, state.isVisible);
}

void WriteAnnotations(Dump& dump, const zrk::AnnoSet& annoSet) {
    for (const auto& annotation : annoSet.GetAnnotations()) {
        dump.Line("annotation", Id(annotation), annotation->GetClass().Text(),
                  annoSet.IsReferencedAnnotation(annotation));
        if (const auto callout = du::DynamicCast<zrannotations::Callout>(annotation)) {
            Write(dump, callout->CaptureState());
        } else if (const auto inset = du::DynamicCast<zrannotations::Inset>(annotation)) {
            Write(dump, *inset);
        }
    }
    for (const auto& annotation : annoSet.GetReferencedAnnotations()) dump.Line("referenced", Id(annotation));
}

void WriteItems(Dump& dump, const zrk::illustration::ItemsList& items, const Callouts& engine) {
    zrk::illustration::ItemsList::Numbering numbering;
    items.GetNumberingSettings(numbering);
    dump.Line("numbering", numbering.hierarchical, numbering.prefix, numbering.separator);
    for (const unsigned id : items.GetItemIds()) {
        const auto item = *items.Capture(id);
        std::string label;
        bool isCustom = false;
        items.GetLabel(id, label, isCustom);
        dump.Line("item", id, label, isCustom, item.number, item.parent, item.isItemized, item.isManual,
                  item.tag, items.GetIndex(id));
        for (const auto& instance : item.instances) dump.Line("  holds", instance->GetName());
        std::vector<Callouts::CalloutPtr> callouts;
        engine.GetItemIdCallouts(id, callouts);
        for (const auto& callout : callouts) dump.Line("  called", Id(callout));
    }
}

void WriteScene(Dump& dump, const zrk::illustration::Illustration3dScene& scene) {
    for (const auto& part : scene.GetShapeInstances()) {
        dg::Location location;
        part->GetLocation(location);
        dump.Line("part", Name(part), Text(location.GetXform()), part->IsVisible(), part->IsPhantom());
    }
    const auto view = du::DynamicCast<zrk::ShapeView>(scene.GetView(0));
    dg::Camera3D camera;
    view->GetCamera(camera);
    dg::Color top;
    dg::Color bottom;
    dg::Color border;
    view->GetBackgroundColors(top, bottom, border);
    dump.Line("view", Text(camera.GetWorldToPixel()), camera.GetViewportWidth(), camera.GetViewportHeight(),
              top.r, bottom.g, border.b, "hidden", scene.GetDrawWhenHidden());
}

bool LeadsTo(const zrannotations::Callout& callout, const std::string& instanceId) {
    for (unsigned int i = 0; i < callout.GetLeaderLineCount(true); ++i) {
        if (callout.GetShapeInstanceIdAtPos(i) == instanceId) return true;
    }
    return false;
}

// Callouts that left the part with their item group stay filed under it, so they tell nothing of the scene.
void WriteStructure(Dump& dump, Callouts& engine, const zrk::AnnoSet& annoSet,
                    const du::SmartPtr<zrk::illustration::SbomInstance>& instance) {
    dump.Line("node", instance->GetName(), instance->CarriesItem());
    for (const auto& [key, value] : instance->GetProperties()) {
        dump.Line("  property", std::get<0>(key).Text(), std::get<1>(key).Text(), value.Text());
    }
    Callouts::CalloutSet filed;
    engine.GetCalloutSetForSbomInstance(instance, filed);
    for (const auto& callout : filed) {
        const bool isThere = annoSet.Contains(callout) || annoSet.IsReferencedAnnotation(callout);
        if (isThere && LeadsTo(*callout, instance->GetIdentifier())) dump.Line("  filed", Id(callout));
    }
    for (const auto& child : instance->GetChildren()) WriteStructure(dump, engine, annoSet, child);
}

void WriteTemplates(Dump& dump) {
    for (const auto& definition : zrannotations::GetCalloutTemplates()) {
        dump.Line("template", definition->GetId());
        zrannotations::TAnnotation::Contents contents;
        definition->GetTextContent(contents);
        for (const auto& content : contents) dump.Line("  ", content->TextOrGroup(), content->PropertyName());
    }
    dump.Line("language", du::Localizer::GetLanguage());
}

}  // namespace

std::string DumpScene(const zrk::illustration::Illustration3dScene& scene, Callouts& engine,
                      const du::SmartPtr<zrk::illustration::SbomInstance>& root) {
    Dump dump;
    du::SmartPtr<zrk::AnnoSet> annoSet;
    scene.GetAnnoSet(annoSet);
    WriteAnnotations(dump, *annoSet);
    WriteItems(dump, *engine.GetItemsList()->GetZrkItemList(), engine);
    WriteScene(dump, scene);
    WriteStructure(dump, engine, *annoSet, root);
    WriteTemplates(dump);
    return dump.Text();
}

}  // namespace zrcallouts
