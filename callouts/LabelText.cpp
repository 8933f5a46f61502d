#include "callouts/LabelText.h"

#include <utility>

#include "zrannotations/CalloutLabelFileProperties.h"
#include "zrk/illustration/IsRunningIllustrate.h"
#include "zrk/object/Property.h"
#include "zrk/scene/ShapeInstance.h"
#include "zrk/tree/Instance.h"

namespace zrcallouts {
namespace {

using zrk::illustration::SbomInstance;

constexpr unsigned int kLiteralText = 0;
constexpr unsigned int kPropertyReference = 1;
constexpr const char* kFallbackMessage = "852";
constexpr const char* kFilePropertiesMessage = "3206";

du::SmartPtr<zrk::Instance> InstanceOf(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance) {
    du::SmartPtr<zrk::Instance> instance;
    if (shapeInstance) shapeInstance->GetInstance(instance);
    return instance;
}

/// The assembly that stands directly below the root of its container.
du::SmartPtr<zrk::Instance> TopLevelAssembly(du::SmartPtr<zrk::Instance> instance) {
    du::SmartPtr<zrk::Instance> root;
    instance->GetRootContainerRoot(root);
    du::SmartPtr<zrk::Instance> parent;
    instance->GetParent(parent);
    while (parent && parent != root) {
        instance = parent;
        parent = nullptr;
        instance->GetParent(parent);
    }
    return instance;
}

du::SmartPtr<SbomInstance> RootScope(const du::SmartPtr<zrk::Instance>& instance) {
    du::SmartPtr<zrk::Instance> top;
    if (zrk::illustration::IsRunningIllustrate()) {
        instance->GetRootContainerRoot(top);
    } else {
        top = TopLevelAssembly(instance);
    }
    return top ? du::SmartPtr<SbomInstance>(top->GetSbomInstance()) : du::SmartPtr<SbomInstance>();
}

}  // namespace

LabelText::LabelText(du::SmartPtr<zrannotations::Callout> callout,
                     du::SmartPtr<zritemlist::ItemList> itemList, du::SmartPtr<zrk::Scene> scene)
    : m_callout(std::move(callout)),
      m_itemList(std::move(itemList)),
      m_scene(std::move(scene)),
      m_localizer(kMessageModule) {}

std::string LabelText::Of(const zrannotations::LabelContent& content) const {
    if (content.Kind() == kLiteralText) return content.TextOrGroup();
    return content.Kind() == kPropertyReference ? OfReference(content) : std::string();
}

std::string LabelText::OfReference(const zrannotations::LabelContent& content) const {
    std::string text;
    if (OfItem(content, text)) return text;
    if (zrannotations::IsCalloutLabelGroupFileProperty(content.TextOrGroup())) return OfFileProperty(content);
    if (content.PropertyName().empty()) return text;
    text = OfPartProperty(content);
    return text.empty() ? m_localizer.LocalizeMessage(kFallbackMessage, 0) : text;
}

bool LabelText::OfItem(const zrannotations::LabelContent& content, std::string& text) const {
    unsigned int id = 0;
    if (content.TextOrGroup() != "System" || !m_callout->GetItemId(id)) return false;
    const auto items = m_itemList->GetZrkItemList();
    if (content.PropertyName() == "zrITM") {
        bool isCustom = false;
        m_itemList->GetItemLabel(id, text, isCustom);
    } else if (content.PropertyName() == "zrQTY") {
        text = std::to_string(items ? items->GetQuantity(id) : 0);
    } else if (content.PropertyName() == "zrTAG") {
        if (items) text = items->GetItemTag(id);
    } else {
        return false;
    }
    return true;
}

std::string LabelText::OfFileProperty(const zrannotations::LabelContent& content) const {
    const std::string& group = content.TextOrGroup();
    const std::string& name = content.PropertyName();
    return content.ShownPart() == "Name"
               ? zrannotations::GetCalloutLabelFilePropertyName(group, name)
               : zrannotations::GetCalloutLabelFilePropertyValue(m_scene, group, name);
}

std::string LabelText::OfPartProperty(const zrannotations::LabelContent& content) const {
    const auto sbom = FindSbomInstance(content.InstanceScope());
    if (!sbom) return {};
    const auto shapeInstance = m_callout->GetShapeInstanceAtPos(0);
    const du::Symbol source = shapeInstance ? shapeInstance->GetCurrentShapeSource() : du::Symbol::EMPTY;
    const std::string& group = content.TextOrGroup();
    const auto property =
        sbom->QueryProperty(IsFilePropertiesGroup(group) ? du::Symbol::EMPTY : du::Symbol(group),
                            du::Symbol(content.PropertyName()), source);
    if (!property) return {};
    du::Symbol text;
    if (content.ShownPart() == "Name") {
        property->GetName(text);
    } else {
        property->GetValue(text, content.ShownPart());
    }
    return text;
}

bool LabelText::IsFilePropertiesGroup(const std::string& group) const {
    return group == m_localizer.LocalizeMessage(kFilePropertiesMessage, 0) ||
           group == "ZRS File Properties" || group == "__ZRS_PROPERTIES";
}

du::SmartPtr<SbomInstance> LabelText::FindSbomInstance(const std::string& scope) const {
    const auto shapeInstance = m_callout->GetShapeInstanceAtPos(0);
    auto sbom = du::DynamicCast<SbomInstance>(m_callout->GetAssemblyInstanceAtPos(0));
    const auto instance = InstanceOf(shapeInstance);
    if (!sbom && instance) sbom = du::SmartPtr<SbomInstance>(instance->GetSbomInstance());
    if (scope == "Parent") {
        du::SmartPtr<SbomInstance> parent;
        if (sbom) sbom->GetParent(parent);
        return parent;
    }
    return scope == "Root" && instance ? RootScope(instance) : sbom;
}

}  // namespace zrcallouts
