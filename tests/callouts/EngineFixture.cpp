#include "tests/callouts/EngineFixture.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "callouts/dll/ZRDll.h"
#include "du/Localizer.h"
#include "tests/support/Cube.h"
#include "zrannotations/CalloutLeader.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrk/illustration/CollectionItem.h"
#include "zrk/object/Checked.h"
#include "zrk/operation/Operation.h"
#include "zrk/scene/Shape.h"
#include "zrk/tree/ComponentInstance.h"
#include "zrk/tree/Tree.h"
#include "zrk/world/Kernel.h"
#include "zrk/world/World.h"

namespace zrcallouts {
namespace {

constexpr int kViewWidth = 400;
constexpr int kViewHeight = 300;
constexpr unsigned kPoolThreads = 2;

dg::Location At(const dg::DPoint3D& position) { return {dg::FMat33::IDENTITY, position}; }

}  // namespace

EngineFixture::EngineFixture(Host host) {
    if (host == Host::kOwn) m_session.emplace(kPoolThreads);
    m_scene = new zrk::illustration::Illustration3dScene;
    m_view = new zrk::ShapeView(m_scene, 1);
    m_view->SetCamera(
        dg::Camera3D::Orthographic({0, 0, 0}, {0, 0, -1}, {0, 1, 0}, 10.0, kViewWidth, kViewHeight, 100.0));
    m_scene->AddView(m_view);
    m_scene->GetAnnoSet(m_annoSet);
    m_root.instance = new zrk::Instance(du::Symbol("root"), "root", nullptr, dg::Location::IDENTITY);
    m_root.sbom = new zrk::illustration::SbomInstance(du::Symbol("root"), "root");
    m_root.sbom->SetEbomInstance(m_root.instance);
    if (host == Host::kOwn) zrk::World::GetWorld()->GetTree()->SetRoot(m_root.instance);
    StartEngine();
}

EngineFixture::~EngineFixture() {
    if (m_engine) StopEngine();
    if (m_session) zrk::Kernel::GetKernel()->CancelPendingEvents();
    m_scene->Close();
    if (!m_session) return;
    zrannotations::ClearCalloutTemplates();
    du::Localizer::SetLanguage("en");
}

void EngineFixture::StartEngine() {
    du::SmartPtr<du::RefCounted> component;
    ASSERT_TRUE(ZRDllCreateComponent("create", "callouts", "calloutengine", component));
    m_engine = du::DynamicCast<Callouts>(component);
    ASSERT_TRUE(m_engine);
    m_engine->Initialize(m_scene);
    m_itemList = m_engine->GetItemsList();
}

void EngineFixture::StopEngine() {
    m_engine->Destroy();
    WaitForPool();
    m_engine = nullptr;
}

EngineFixture::NodePtr EngineFixture::MakeBox(const std::string& name) {
    return zrk::Checked(new zrk::ComponentNode(name, zrk::Checked(new zrk::Shape(zrtest::MakeCube(-1, 1)))));
}

EngineFixture::Part EngineFixture::Insert(const std::string& name, const NodePtr& node,
                                          const dg::Location& location, const Part* parent,
                                          const SbomPtr& sbom) {
    const Part& above = parent != nullptr ? *parent : m_root;
    Part part;
    part.instance = new zrk::Instance(du::Symbol(name), name, node, location);
    part.sbom = sbom ? sbom : SbomPtr(new zrk::illustration::SbomInstance(du::Symbol(name), name));
    above.instance->AddChild(part.instance);
    above.sbom->AddChild(part.sbom);
    part.sbom->SetEbomInstance(part.instance);
    return part;
}

EngineFixture::Part EngineFixture::AddPart(const std::string& name, const dg::DPoint3D& position,
                                           const Part* parent, const NodePtr& node, const SbomPtr& sbom) {
    Part part = Insert(name, node ? node : MakeBox(name), At(position), parent, sbom);
    part.shape = m_scene->CreateShapeInstance(part.instance);
    return part;
}

EngineFixture::Part EngineFixture::AddAssembly(const std::string& name, bool isWeld, const Part* parent) {
    const NodePtr node(new zrk::ComponentNode(name, nullptr));
    Part assembly = Insert(name, node, dg::Location::IDENTITY, parent, nullptr);
    assembly.sbom->SetWeld(isWeld);
    return assembly;
}

EngineFixture::Part EngineFixture::AddSymbol(const std::string& id, const dg::DPoint3D& position,
                                             const NodePtr& node) {
    const du::SmartPtr<zrk::ComponentInstance> component(
        zrk::Checked(new zrk::ComponentInstance(du::Symbol(id))));
    Part symbol;
    symbol.instance = zrk::Checked(new zrk::Instance(component, id, node ? node : MakeBox(id), At(position)));
    m_root.instance->AddChild(symbol.instance);
    symbol.shape = m_scene->CreateShapeInstance(symbol.instance);
    return symbol;
}

void EngineFixture::SetProperty(const Part& part, const char* group, const char* name, const char* value) {
    part.sbom->SetProperty(du::Symbol(group), du::Symbol(name), du::Symbol(value));
}

EngineFixture::ContentPtr EngineFixture::Literal(const std::string& text) {
    return new zrannotations::LabelContent(text, zrannotations::TextProperties());
}

EngineFixture::ContentPtr EngineFixture::Reference(const std::string& group, const std::string& name,
                                                   const std::string& shownPart, const std::string& scope) {
    return new zrannotations::LabelContent(group, name, shownPart, scope, zrannotations::TextProperties());
}

EngineFixture::TemplatePtr EngineFixture::MakeTemplate(std::vector<ContentPtr> contents,
                                                       const std::string& name, bool isCustom) {
    const std::string id = "template" + std::to_string(zrannotations::GetCalloutTemplates().size());
    const du::SmartPtr<zrk::illustration::CollectionItem> item(
        new zrk::illustration::CollectionItem(name, isCustom));
    const TemplatePtr definition(new zrannotations::TAnnotation(id, std::move(contents), item));
    zrannotations::AddCalloutTemplate(definition);
    return definition;
}

EngineFixture::CalloutPtr EngineFixture::MakeCallout(const TemplatePtr& definition, const Part& part,
                                                     std::optional<unsigned> itemId, const Part* assembly,
                                                     bool isKit) {
    const CalloutPtr callout(zrk::Checked(new zrannotations::Callout));
    EXPECT_TRUE(
        callout->Initialize(definition, part.shape, isKit, assembly != nullptr ? assembly->sbom : SbomPtr()));
    if (itemId) callout->SetItemId(*itemId);
    return callout;
}

EngineFixture::CalloutPtr EngineFixture::MakeFreeCallout(const TemplatePtr& definition,
                                                         std::optional<unsigned> itemId) {
    const CalloutPtr callout(zrk::Checked(new zrannotations::Callout));
    callout->InitializeFree(definition, {0, 0, 0});
    if (itemId) callout->SetItemId(*itemId);
    return callout;
}

EngineFixture::CalloutPtr EngineFixture::MakeLabelAt(double x, double y) {
    const auto callout = MakeFreeCallout(nullptr);
    callout->SetLabelPosition({0.1 * (x - 200), 0.1 * (150 - y), 0});
    return callout;
}

void EngineFixture::Translate(const CalloutPtr& callout, bool isEnabled) {
    auto& text = callout->GetLocalizableString();
    text = du::Symbol("Screw");
    text.SetTranslation("de", du::Symbol("Schraube"));
    text.SetEnabled(isEnabled);
}

void EngineFixture::Show(const du::SmartPtr<zrk::Annotation>& annotation,
                         const du::SmartPtr<zrk::Operation>& operation) {
    m_annoSet->AddAnnotationToSet(annotation, operation);
}

EngineFixture::CalloutPtr EngineFixture::AddCallout(const TemplatePtr& definition, const Part& part,
                                                    std::optional<unsigned> itemId) {
    const CalloutPtr callout = MakeCallout(definition, part, itemId);
    Show(callout);
    return callout;
}

void EngineFixture::Connect(const CalloutPtr& callout, const Part& part, const Part* assembly) {
    dg::DPoint3D anchor;
    ASSERT_TRUE(callout->CalculateAnchor(part.shape, anchor));
    callout->ConnectLeader(
        callout->CreateCalloutLeader(anchor, part.shape, assembly != nullptr ? assembly->sbom : SbomPtr()));
}

void EngineFixture::ConnectWaiting(const CalloutPtr& callout, const std::string& instanceId) {
    callout->ConnectLeader(new zrannotations::CalloutLeader(dg::DPoint3D(0, 0, 1), instanceId));
}

EngineFixture::InsetPtr EngineFixture::AddInset(double x, double y) {
    zrannotations::Inset::Glass glass;
    glass.source = {x, y, 0};
    glass.centre = {300, 80, 0};
    glass.radius = 60;
    glass.factor = 5.0F;
    const InsetPtr inset(zrk::Checked(new zrannotations::Inset(m_view, glass)));
    Show(inset);
    return inset;
}

unsigned EngineFixture::AddItem(const std::vector<Part>& parts, const std::string& label) {
    std::vector<SbomPtr> instances;
    std::transform(parts.begin(), parts.end(), std::back_inserter(instances),
                   [](const Part& part) { return part.sbom; });
    return Items().AddItem(instances, label, true, false);
}

std::string EngineFixture::ShownTexts() const {
    std::string texts;
    for (const auto& annotation : m_annoSet->GetAnnotations()) {
        if (const auto callout = du::DynamicCast<zrannotations::Callout>(annotation))
            texts += (texts.empty() ? "" : "|") + Text(callout);
    }
    return texts;
}

EngineFixture::CalloutVec EngineFixture::Filed(const Part& part) const {
    Callouts::CalloutSet callouts;
    m_engine->GetCalloutSetForSbomInstance(part.sbom, callouts);
    return {callouts.begin(), callouts.end()};
}

EngineFixture::CalloutVec EngineFixture::OfItem(unsigned itemId) const {
    CalloutVec callouts;
    m_engine->GetItemIdCallouts(itemId, callouts);
    return callouts;
}

std::optional<unsigned> EngineFixture::ItemOf(const CalloutPtr& callout) {
    unsigned id = 0;
    return callout->GetItemId(id) ? std::optional(id) : std::nullopt;
}

std::string EngineFixture::PixelOf(const CalloutPtr& callout) const {
    du::SmartPtr<zrk::ShapeView> view = m_view;
    const dg::DPoint3D p = callout->GetLabelRelativeScreenPosition(view);
    return std::to_string(std::lround(p.x)) + "," + std::to_string(std::lround(p.y));
}

du::SmartPtr<zrk::Operation> EngineFixture::MakeOperation() const {
    return new zrk::Operation("Test", m_scene, true);
}

std::size_t EngineFixture::Pump() {
    const auto kernel = zrk::Kernel::GetKernel();
    const auto managed = kernel->GetManaged();
    kernel->DispatchEvents();
    return static_cast<std::size_t>(std::count_if(managed.begin(), managed.end(), [](const auto& object) {
        return static_cast<bool>(du::DynamicCast<zrk::PickEvent>(object));
    }));
}

void EngineFixture::WaitForPool() { zrk::World::GetWorld()->GetTaskPool()->WaitIdle(); }

}  // namespace zrcallouts
