// A running host with one scene of small boxes and a callouts engine attached to it: what the tests of the
// engine, of the generator and of the layout start from. Nothing is replaced: picks are rays, undo is the
// scene's history.

#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "callouts/Callouts.h"
#include "du/SmartPtr.h"
#include "zrannotations/Callout.h"
#include "zrannotations/CombinedCallout.h"
#include "zrannotations/Inset.h"
#include "zrannotations/LabelContent.h"
#include "zrannotations/TAnnotation.h"
#include "zritemlist/ItemList.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/illustration/Illustration3dScene.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/illustration/SbomInstance.h"
#include "zrk/scene/ShapeView.h"
#include "zrk/tree/ComponentNode.h"
#include "zrk/tree/Instance.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrcallouts {

/// The scene's view is 400 x 300 pixels and looks down the z axis, 10 pixels a unit: the point (x, y, z) lies
/// at the pixel (200 + 10 x, 150 - 10 y), and greater z hide smaller ones.
class EngineFixture : public testing::Test {
protected:
    using CalloutPtr = du::SmartPtr<zrannotations::Callout>;
    using CalloutVec = std::vector<CalloutPtr>;
    using CombinedPtr = du::SmartPtr<zrannotations::CombinedCallout>;
    using InsetPtr = du::SmartPtr<zrannotations::Inset>;
    using TemplatePtr = du::SmartPtr<zrannotations::TAnnotation>;
    using ContentPtr = du::SmartPtr<zrannotations::LabelContent>;
    using SbomPtr = du::SmartPtr<zrk::illustration::SbomInstance>;
    using NodePtr = du::SmartPtr<zrk::ComponentNode>;

    /// A part in both structures and in the scene; an assembly has no shape.
    struct Part {
        SbomPtr sbom;
        du::SmartPtr<zrk::Instance> instance;
        du::SmartPtr<zrk::ShapeInstance> shape;
    };

    enum class Host { kOwn, kRunning };

    /// Starts a host of its own, or joins one that the caller has started, with other scenes beside this one.
    explicit EngineFixture(Host host = Host::kOwn);
    ~EngineFixture() override;

    /// A new engine through the component's entry point, attached to the scene.
    void StartEngine();
    /// Destroys the engine and waits until the pool has detached its callouts.
    void StopEngine();

    /// A box with sides of 2 units around its origin.
    static NodePtr MakeBox(const std::string& name);
    /// Into both structures, not into the scene; below the root unless there is a parent.
    Part Insert(const std::string& name, const NodePtr& node, const dg::Location& location,
                const Part* parent, const SbomPtr& sbom);
    /// A box at `position`; its identifiers are `name`. Without `node` it is of a kind of its own; without
    /// `sbom` a plain service instance stands for it.
    Part AddPart(const std::string& name, const dg::DPoint3D& position, const Part* parent = nullptr,
                 const NodePtr& node = nullptr, const SbomPtr& sbom = nullptr);
    Part AddAssembly(const std::string& name, bool isWeld = false, const Part* parent = nullptr);
    /// A 3-D symbol; callouts on it are filed under "/" + `id`. Without `node` it has a shape of its own.
    Part AddSymbol(const std::string& id, const dg::DPoint3D& position, const NodePtr& node = nullptr);

    static void SetProperty(const Part& part, const char* group, const char* name, const char* value);

    static ContentPtr Literal(const std::string& text);
    static ContentPtr Reference(const std::string& group, const std::string& name,
                                const std::string& shownPart = "", const std::string& scope = "");
    /// Shows the label of the callout's item.
    static ContentPtr ItemLabel() { return Reference("System", "zrITM"); }
    /// In the template registry under an id of its own, as templates of a document are.
    static TemplatePtr MakeTemplate(std::vector<ContentPtr> contents, const std::string& name = "Callout",
                                    bool isCustom = true);

    /// Not in the scene yet. No item id unless one is given.
    CalloutPtr MakeCallout(const TemplatePtr& definition, const Part& part,
                           std::optional<unsigned> itemId = std::nullopt, const Part* assembly = nullptr,
                           bool isKit = false);
    CalloutPtr MakeFreeCallout(const TemplatePtr& definition, std::optional<unsigned> itemId = std::nullopt);
    /// A free callout without text whose label stands at the pixel of the view as it was made.
    CalloutPtr MakeLabelAt(double x, double y);
    static CombinedPtr Combine(const CalloutVec& members) {
        return new zrannotations::CombinedCallout(members);
    }
    /// Makes it say "Screw", and "Schraube" in German.
    static void Translate(const CalloutPtr& callout, bool isEnabled = true);
    /// Enters the annotation into the scene, as the user's commands do.
    void Show(const du::SmartPtr<zrk::Annotation>& annotation,
              const du::SmartPtr<zrk::Operation>& operation = nullptr);
    bool Remove(const du::SmartPtr<zrk::Annotation>& annotation) {
        return m_annoSet->RemoveAnnotationFromSet(annotation, nullptr);
    }
    /// MakeCallout and Show.
    CalloutPtr AddCallout(const TemplatePtr& definition, const Part& part,
                          std::optional<unsigned> itemId = std::nullopt);
    static void Connect(const CalloutPtr& callout, const Part& part, const Part* assembly = nullptr);
    /// A leader to a part that is not loaded.
    static void ConnectWaiting(const CalloutPtr& callout, const std::string& instanceId);
    /// In the scene. Magnifies what lies around the pixel (x, y) five-fold.
    InsetPtr AddInset(double x, double y);

    /// A new item that holds the parts.
    unsigned AddItem(const std::vector<Part>& parts, const std::string& label = "");
    zrk::illustration::ItemsList& Items() const { return *m_itemList->GetZrkItemList(); }
    bool IsShown(const du::SmartPtr<zrk::Annotation>& annotation) const {
        return m_annoSet->Contains(annotation);
    }
    /// "text|text": what the callouts of the scene say, in the order in which they entered it.
    std::string ShownTexts() const;
    /// The callouts that the engine files under the part.
    CalloutVec Filed(const Part& part) const;
    /// The callouts that the engine has registered for the item.
    CalloutVec OfItem(unsigned itemId) const;
    static std::optional<unsigned> ItemOf(const CalloutPtr& callout);
    static std::string Text(const CalloutPtr& callout) { return callout->GetText(false).Text(); }
    /// "x,y": the pixel of the callout's label, rounded.
    std::string PixelOf(const CalloutPtr& callout) const;
    du::SmartPtr<zrk::Operation> MakeOperation() const;
    bool Undo() { return m_scene->GetHistory().Undo(); }
    bool Redo() { return m_scene->GetHistory().Redo(); }
    std::size_t UndoCount() const { return m_scene->GetHistory().GetUndoCount(); }

    /// Answers everything that is on its way; returns how much that was.
    static std::size_t Pump();
    static void WaitForPool();

    std::optional<zrkapp::illustration::HostSession> m_session;  // unless the host was running
    du::SmartPtr<zrk::illustration::Illustration3dScene> m_scene;
    du::SmartPtr<zrk::ShapeView> m_view;
    du::SmartPtr<zrk::AnnoSet> m_annoSet;
    Part m_root;
    du::SmartPtr<Callouts> m_engine;
    du::SmartPtr<zritemlist::ItemList> m_itemList;  // the scene's while the engine lives
};

/// Three parts side by side, and the two kinds of templates: with an item's number, and without.
class ThreeParts : public EngineFixture {
protected:
    const Part m_a = AddPart("A", {-5, 0, 0});
    const Part m_b = AddPart("B", {0, 0, 0});
    const Part m_c = AddPart("C", {5, 0, 0});
    const TemplatePtr m_numbered = MakeTemplate({ItemLabel()});
    const TemplatePtr m_literal = MakeTemplate({Literal("fixed")});
};

}  // namespace zrcallouts
