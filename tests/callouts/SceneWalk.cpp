#include "tests/callouts/SceneWalk.h"

#include <utility>

#include "callouts/events/CalloutsDrawWhenHiddenOperationStep.h"
#include "callouts/generator/CalloutGenerator.h"
#include "du/Localizer.h"
#include "tests/callouts/RegistryProbe.h"
#include "tests/callouts/SceneDump.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/object/Checked.h"
#include "zrk/operation/CallStep.h"
#include "zrk/operation/Transaction.h"
#include "zrk/tree/Tree.h"
#include "zrk/world/World.h"

namespace zrcallouts {

using zrk::illustration::SbomInstanceSelectionItem;

namespace {

constexpr int kColumns = 5;
constexpr int kRows = 4;
constexpr std::size_t kMostSymbols = 5;

}  // namespace

SceneWalk::SceneWalk(std::function<unsigned()> random, Host host)
    : EngineFixture(host), m_random(std::move(random)) {
    const Part assembly = AddAssembly("assembly");
    const Part weld = AddAssembly("weld", true);
    const NodePtr shared = MakeBox("bolt");
    for (int i = 0; i < kColumns * kRows; ++i) {
        const int row = i / kColumns;
        const dg::DPoint3D place(5.0 * (i % kColumns) - 10, 5.0 * row - 8, i % 3);
        const Part* parent = i % 5 == 0 ? &assembly : i % 7 == 0 ? &weld : nullptr;
        m_parts.push_back(
            AddPart("part" + std::to_string(i), place, parent, i % 4 == 0 ? shared : NodePtr()));
        m_parts.back().sbom->SetProperty(du::Symbol("Data"), du::Symbol("Size"),
                                         du::Symbol("M" + std::to_string(i % 6)));
    }
    m_templates = {MakeTemplate({ItemLabel(), Literal(" x "), Reference("System", "zrQTY")}),
                   MakeTemplate({Literal("S"), Reference("Data", "Size")}), MakeTemplate({Literal("Note")})};
    AddPartActions();
    AddItemActions();
    AddCombiningActions();
    AddTextActions();
    AddCalloutActions();
    AddViewActions();
}

void SceneWalk::AddAction(const char* name, std::function<void(const OperationPtr&)> act) {
    m_actions.push_back({name, std::move(act)});
}

void SceneWalk::Walk(const std::function<bool()>& goesOn) {
    m_states = {{Look(), "start"}};
    m_now = 0;
    for (int move = 0; goesOn() && !HasFailure(); ++move) {
        SCOPED_TRACE("move " + std::to_string(move));
        Step();
        EXPECT_EQ(RegistryFault(), "");
    }
    while (m_scene->GetHistory().Undo()) {
    }
    EXPECT_EQ(Look(), m_states.front().dump) << "undone to the start";
}

void SceneWalk::Step() {
    const unsigned choice = Below(10);
    if (choice < 5) {
        GoOn();
    } else if (choice < 8) {
        GoBack();
    } else {
        GoForth();
    }
}

void SceneWalk::GoOn() {
    bool isCommitted = false;
    const std::size_t before = m_scene->GetHistory().GetUndoCount();
    const std::string name = Act(isCommitted);
    const bool isEntered = m_scene->GetHistory().GetUndoCount() > before;
    EXPECT_LE(isEntered, isCommitted) << name;
    std::string dump = Look();
    if (isEntered) {
        m_states.resize(++m_now);
        m_states.push_back({std::move(dump), name});
    } else {
        EXPECT_EQ(dump, m_states[m_now].dump) << (isCommitted ? "left no entry: " : "given up: ") << name;
    }
}

void SceneWalk::GoBack() {
    EXPECT_EQ(m_scene->GetHistory().Undo(), m_now > 0);
    if (m_now > 0) --m_now;
    EXPECT_EQ(Look(), m_states[m_now].dump)
        << "undone: " << (m_now + 1 < m_states.size() ? m_states[m_now + 1].name : "");
}

void SceneWalk::GoForth() {
    EXPECT_EQ(m_scene->GetHistory().Redo(), m_now + 1 < m_states.size());
    if (m_now + 1 < m_states.size()) ++m_now;
    EXPECT_EQ(Look(), m_states[m_now].dump) << "done again: " << m_states[m_now].name;
}

std::string SceneWalk::Act(bool& isCommitted) {
    zrk::Transaction transaction(m_scene, "Act");
    std::string names;
    for (unsigned count = 1 + Below(3); count > 0; --count) {
        names += DoOne(transaction.GetOperation()) + ", ";
    }
    isCommitted = !Chance(8);
    if (isCommitted) transaction.Commit();
    return names;
}

std::string SceneWalk::Do(std::size_t action, const OperationPtr& operation) {
    const auto& [name, act] = m_actions[action];
    act(operation);
    Settle();
    return name;
}

std::string SceneWalk::RegistryFault() const { return RegistryProbe(*m_engine).Fault(m_hasRegrouped); }

void SceneWalk::Settle() {
    WaitForPool();
    Pump();
}

std::string SceneWalk::Look() {
    Settle();
    return DumpScene(*m_scene, *m_engine, m_root.sbom);
}

template <class T>
std::vector<du::SmartPtr<T>> SceneWalk::All() const {
    std::vector<du::SmartPtr<T>> found;
    for (const auto& annotation : m_annoSet->GetAnnotations()) {
        if (const auto typed = du::DynamicCast<T>(annotation)) found.push_back(typed);
    }
    return found;
}

std::vector<EngineFixture::Part> SceneWalk::PickParts() {
    std::vector<Part> parts;
    for (const auto& part : m_parts) {
        if (Chance(5)) parts.push_back(part);
    }
    return parts;
}

std::vector<EngineFixture::SbomPtr> SceneWalk::PickInstances() {
    std::vector<SbomPtr> instances;
    for (const auto& part : PickParts()) instances.push_back(part.sbom);
    return instances;
}

EngineFixture::CalloutPtr SceneWalk::PickCallout() { return Pick(All<zrannotations::Callout>()); }

du::SmartPtr<zrk::ShapeInstance> SceneWalk::PickShape() { return Pick(m_scene->GetShapeInstances()); }

void SceneWalk::SwitchLanguage(const OperationPtr& operation) {
    const std::string former = du::Localizer::GetLanguage();
    const std::string language = former == "en" ? "de" : "en";
    zrk::World::GetWorld()->SetLanguage(language);
    operation->AddStep(new zrk::CallStep([former] { zrk::World::GetWorld()->SetLanguage(former); },
                                         [language] { zrk::World::GetWorld()->SetLanguage(language); }));
}

void SceneWalk::AddPartActions() {
    const auto create = [this](const OperationPtr&) {
        CalloutGenerator::Selection selection;
        for (const auto& part : PickParts()) selection.emplace_back(new SbomInstanceSelectionItem(part.sbom));
        m_engine->SetTemplate(Pick(m_templates));
        m_engine->SetCombineForSamePart(Chance(3));
        m_engine->SetDrawOneForSamePart(Chance(2));
        CalloutGenerator::CreateCallouts(m_engine, std::move(selection), nullptr);
    };
    AddAction("create", create);
    AddAction("create", create);  // twice as often as the others
    AddAction("move", [this](const OperationPtr&) {
        if (const auto part = PickShape()) {
            m_scene->SetLocation(part, {
                                           dg::FMat33::IDENTITY,
                                           AnyPlace(Coordinate()),
                                       });
        }
    });
    AddAction("show", [this](const OperationPtr&) {
        for (int i = 0; i < 3; ++i) {
            if (const auto part = PickShape()) m_scene->SetVisible(part, Chance(2));
        }
        if (const auto part = PickShape()) m_scene->SetPhantom(part, Chance(2));
    });
    AddAction("remove part", [this](const OperationPtr&) {
        if (const auto part = PickShape()) m_scene->RemoveShapeInstance(part);
    });
    AddAction("put part", [this](const OperationPtr&) {
        for (const auto& part : m_parts) m_scene->CreateShapeInstance(part.instance);
    });
    AddAction("rename", [this](const OperationPtr& operation) {
        std::vector<zrk::BaseTree::PropertyEdit> edits;
        for (const auto& part : PickParts()) {
            std::optional<du::Symbol> value(du::Symbol("M" + std::to_string(Below(9))));
            if (Chance(4)) value.reset();
            edits.push_back({part.sbom, du::Symbol("Data"), du::Symbol("Size"), value});
        }
        zrk::World::GetWorld()->GetTree()->EditProperties(edits, operation);
    });
}

void SceneWalk::AddItemActions() {
    AddAction("add item", [this](const OperationPtr& operation) {
        m_itemList->AddItem(PickInstances(), Chance(3) ? "X" : "", !Chance(4), Chance(2), operation);
    });
    AddAction("edit item", [this](const OperationPtr& operation) {
        const unsigned id = PickItem();
        DoOneOf({
            [&] { m_itemList->SetLabel(id, Chance(2) ? "" : "L" + std::to_string(Below(5)), operation); },
            [&] { m_itemList->SetTag(id, "T" + std::to_string(Below(5)), operation); },
            [&] { m_itemList->SetItemized(id, Chance(2), operation); },
            [&] { m_itemList->SetNumber(id, Below(30), operation); },
        });
    });
    AddAction("delete item", [this](const OperationPtr& operation) {
        const unsigned id = PickItem();
        OperationPtr target = operation;
        if (Chance(2)) m_engine->OnItemRemoved(id, operation);
        m_itemList->DeleteItem(id, target);
    });
    AddAction("join", [this](const OperationPtr& operation) {
        m_hasRegrouped = true;
        const unsigned id = PickItem();
        const auto instances = PickInstances();
        m_itemList->JoinItem(id, instances, operation);
        m_engine->UpdateItemGroupCalloutLeaders(id, {instances.begin(), instances.end()}, {}, operation);
    });
    AddAction("leave", [this](const OperationPtr& operation) {
        m_hasRegrouped = true;
        const unsigned id = PickItem();
        const std::vector<SbomPtr> instances{Pick(Items().GetOrderedInstances(id))};
        if (!instances.front()) return;
        m_itemList->LeaveItem(id, instances, operation);
        m_engine->UpdateItemGroupCalloutLeaders(id, {}, {instances.begin(), instances.end()}, operation);
        // A label that leads nowhere any more goes too.
        for (const auto& callout : OfItem(id)) {
            if (callout->GetLeaderLineCount(true) == 0)
                m_annoSet->RemoveAnnotationFromSet(callout, operation);
        }
    });
    AddAction("clear", [this](const OperationPtr& operation) {
        if (!Chance(4)) return;
        if (Chance(2)) m_engine->OnListCleared(operation);
        m_itemList->Clear(operation);
    });
    AddAction("number", [this](const OperationPtr& operation) {
        m_itemList->SetNumbering({Chance(2), Chance(2) ? "P" : "", "-"}, operation);
    });
    AddAction("generate", [this](const OperationPtr& operation) {
        m_itemList->GenerateFromStructure(m_root.sbom, operation);
    });
}

void SceneWalk::AddCombiningActions() {
    AddAction("combine", [this](const OperationPtr& operation) {
        CalloutVec callouts;
        for (const auto& callout : All<zrannotations::Callout>()) {
            if (Chance(4) && callouts.size() < 4) callouts.push_back(callout);
        }
        zrannotations::CombinedCallout::Combine(callouts, operation);
    });
    AddAction("dissolve", [this](const OperationPtr& operation) {
        if (const auto combined = Pick(All<zrannotations::CombinedCallout>())) combined->Dissolve(operation);
    });
    AddAction("inset", [this](const OperationPtr&) {
        const auto inset = Pick(All<zrannotations::Inset>());
        if (!inset) {
            AddInset(50.0 + Below(300), 50.0 + Below(200));
            return;
        }
        DoOneOf({
            [&] {
                inset->Displace({Coordinate(), Coordinate(), 0}, Chance(4));
            },
            [&] { inset->SetRadius(20.0 + Below(80)); },
            [&] { inset->SetFactor(1.5F + static_cast<float>(Below(5)), Chance(4)); },
            [&] { inset->SetVisible(!inset->IsVisible()); },
            [&] {
                inset->SetSource({100.0 + Below(200), 100.0 + Below(100), 0});
            },
            [&] { m_annoSet->RemoveAnnotationFromSet(inset, nullptr); },
            [&] { AddInset(50.0 + Below(300), 50.0 + Below(200)); },
        });
    });
    AddAction("lead", [this](const OperationPtr&) {
        const auto inset = Pick(All<zrannotations::Inset>());
        if (const auto callout = PickCallout()) callout->LeadThrough(Chance(3) ? nullptr : inset, 0);
    });
}

void SceneWalk::AddTextActions() {
    AddAction("template", [this](const OperationPtr& operation) {
        std::vector<ContentPtr> contents{Literal("T" + std::to_string(Below(9)))};
        if (Chance(2)) contents.push_back(Reference("Data", "Size"));
        if (Chance(2)) contents.push_back(ItemLabel());
        Pick(m_templates)->SetTextContent(std::move(contents), operation);
    });
    AddAction("definition", [this](const OperationPtr&) {
        auto callout = PickCallout();
        if (!callout || callout->IsCombined()) return;
        callout->UpdateDefinition(Pick(m_templates));
        m_engine->CheckForTypeUpdate(callout);
        m_engine->SetCalloutText(callout);
    });
    AddAction("translate", [this](const OperationPtr&) {
        const auto callout = PickCallout();
        if (!callout) return;
        auto& text = callout->GetLocalizableString();
        text = du::Symbol("source" + std::to_string(Below(9)));
        text.SetTranslation("de", du::Symbol("Text" + std::to_string(Below(9))));
        text.SetEnabled(!Chance(4));
    });
    AddAction("language", [this](const OperationPtr& operation) { SwitchLanguage(operation); });
}

void SceneWalk::AddCalloutActions() {
    AddAction("callout", [this](const OperationPtr&) {
        const auto callout = PickCallout();
        if (!callout) return;
        DoOneOf({
            [&] { callout->SetLabelPosition(AnyPlace(0)); },
            [&] { callout->SetLabelScreenSpaceMode(m_view); },
            [&] { callout->SetAnchor(AnyPlace(1), 0); },
            [&] { callout->SetText(du::Symbol("own"), false); },
            [&] { callout->SetVisible("", Chance(2)); },
            [&] { callout->ShowAllLeaders(nullptr); },
            [&] { callout->SetCustomCallout(Chance(2)); },
            [&] { callout->SetSymbolIdAtPos(Below(9), 0); },
        });
    });
    AddAction("remove", [this](const OperationPtr& operation) {
        for (const auto& callout : All<zrannotations::Callout>()) {
            if (!Chance(4)) continue;
            m_annoSet->RemoveAnnotationWithDependencies(callout, Chance(2) ? operation : nullptr);
        }
    });
    AddAction("free",
              [this](const OperationPtr& operation) { Show(MakeFreeCallout(m_templates[2]), operation); });
    AddAction("refer", [this](const OperationPtr&) {
        const auto callout = PickCallout();
        if (!callout) return;
        if (m_annoSet->IsReferencedAnnotation(callout)) {
            m_annoSet->RemoveReferencedAnnotation(callout);
        } else {
            m_annoSet->AddReferencedAnnotation(callout);
        }
    });
}

void SceneWalk::AddViewActions() {
    AddAction("symbol", [this](const OperationPtr& operation) {
        Part symbol;
        if (m_symbols.size() < kMostSymbols) {
            symbol = AddSymbol("symbol" + std::to_string(m_symbols.size()), AnyPlace(4));
            m_symbols.push_back(symbol);
        } else {
            symbol = Pick(m_symbols);
            du::SmartPtr<zrk::ShapeInstance> shown;
            m_scene->GetShapeInstance(symbol.instance, shown);
            if (shown) return;
            symbol.shape = m_scene->CreateShapeInstance(symbol.instance);
        }
        Show(
            du::SmartPtr<zrk::Annotation>(zrk::Checked(new zrannotations::SymbolAnnotation(symbol.instance))),
            operation);
        Show(MakeCallout(m_templates[2], symbol), operation);
    });
    AddAction("remove symbol", [this](const OperationPtr&) {
        const auto symbol = Pick(All<zrannotations::SymbolAnnotation>());
        if (!symbol) return;
        du::SmartPtr<zrk::ShapeInstance> part;
        m_scene->GetShapeInstance(symbol->GetInstance(), part);
        if (part) m_scene->RemoveShapeInstance(part);
        m_annoSet->RemoveAnnotationFromSet(symbol, nullptr);
    });
    AddAction("hidden", [this](const OperationPtr& operation) {
        const du::SmartPtr<zrk::OperationStep> step(
            new CalloutsDrawWhenHiddenOperationStep(m_engine, !m_scene->GetDrawWhenHidden()));
        operation->AddStep(step);
        step->Redo();
    });
    AddAction("view", [this](const OperationPtr&) {
        const float grey = static_cast<float>(Below(9)) / 9.0F;
        DoOneOf({
            [&] {
                m_view->SetCamera(dg::Camera3D::Orthographic(AnyPlace(0), {0, 0.1, -1}, {0, 1, 0},
                                                             5.0 + Below(9), 0, 0, 100.0));
            },
            [&] { m_view->Resize(200 + static_cast<int>(Below(400)), 200 + static_cast<int>(Below(300))); },
            [&] {
                m_view->SetBackgroundColors({grey, 0, 0, 1}, {0, grey, 0, 1}, {0, 0, grey, 1});
            },
        });
    });
}

}  // namespace zrcallouts
