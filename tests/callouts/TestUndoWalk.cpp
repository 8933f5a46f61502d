// Long random walks of everything that a user can do, to and fro through the history.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <utility>

#include "callouts/events/CalloutsDrawWhenHiddenOperationStep.h"
#include "callouts/generator/CalloutGenerator.h"
#include "du/Localizer.h"
#include "tests/callouts/EngineFixture.h"
#include "tests/callouts/SceneDump.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/operation/CallStep.h"
#include "zrk/operation/Transaction.h"
#include "zrk/tree/Tree.h"
#include "zrk/world/World.h"

namespace zrcallouts {
namespace {

using zrk::illustration::SbomInstanceSelectionItem;

constexpr int kColumns = 5;
constexpr int kRows = 4;

class UndoWalkTest : public EngineFixture, public testing::WithParamInterface<unsigned> {
protected:
    using OperationPtr = du::SmartPtr<zrk::Operation>;
    using Action = void (UndoWalkTest::*)(const OperationPtr&);

    UndoWalkTest() : m_random(GetParam()) {
        const Part assembly = AddAssembly("assembly");
        const Part weld = AddAssembly("weld", true);
        const NodePtr shared = MakeBox("bolt");
        for (int i = 0; i < kColumns * kRows; ++i) {
            const dg::DPoint3D place(5.0 * (i % kColumns) - 10, 5.0 * (i / kColumns) - 8, i % 3);
            const Part* parent = i % 5 == 0 ? &assembly : i % 7 == 0 ? &weld : nullptr;
            m_parts.push_back(
                AddPart("part" + std::to_string(i), place, parent, i % 4 == 0 ? shared : NodePtr()));
            m_parts.back().sbom->SetProperty(du::Symbol("Data"), du::Symbol("Size"),
                                             du::Symbol("M" + std::to_string(i % 6)));
        }
        m_templates = {MakeTemplate({ItemLabel(), Literal(" x "), Reference("System", "zrQTY")}),
                       MakeTemplate({Literal("S"), Reference("Data", "Size")}),
                       MakeTemplate({Literal("Note")})};
    }

    unsigned Below(std::size_t count) { return static_cast<unsigned>(m_random() % count); }
    bool Chance(unsigned oneIn) { return Below(oneIn) == 0; }
    double Coordinate() { return static_cast<double>(Below(2000)) / 100.0 - 10.0; }
    template <class T>
    T Pick(const std::vector<T>& choices) {
        return choices.empty() ? T() : choices[Below(choices.size())];
    }
    std::vector<Part> PickParts() {
        std::vector<Part> parts;
        for (const auto& part : m_parts) {
            if (Chance(5)) parts.push_back(part);
        }
        return parts;
    }
    std::vector<SbomPtr> PickInstances() {
        std::vector<SbomPtr> instances;
        for (const auto& part : PickParts()) instances.push_back(part.sbom);
        return instances;
    }
    template <class T>
    std::vector<du::SmartPtr<T>> All() const {
        std::vector<du::SmartPtr<T>> found;
        for (const auto& annotation : m_annoSet->GetAnnotations()) {
            if (const auto typed = du::DynamicCast<T>(annotation)) found.push_back(typed);
        }
        return found;
    }
    CalloutPtr PickCallout() { return Pick(All<zrannotations::Callout>()); }
    du::SmartPtr<zrk::ShapeInstance> PickShape() { return Pick(m_scene->GetShapeInstances()); }
    unsigned PickItem() { return Pick(Items().GetItemIds()); }

    void Create(const OperationPtr&) {
        CalloutGenerator::Selection selection;
        for (const auto& part : PickParts()) selection.emplace_back(new SbomInstanceSelectionItem(part.sbom));
        m_engine->SetTemplate(Pick(m_templates));
        m_engine->SetCombineForSamePart(Chance(3));
        m_engine->SetDrawOneForSamePart(Chance(2));
        CalloutGenerator::CreateCallouts(m_engine, std::move(selection), nullptr);
    }
    void MovePart(const OperationPtr&) {
        if (const auto part = PickShape()) {
            m_scene->SetLocation(part, {dg::FMat33::IDENTITY, {Coordinate(), Coordinate(), Coordinate()}});
        }
    }
    void ShowPart(const OperationPtr&) {
        for (int i = 0; i < 3; ++i) {
            if (const auto part = PickShape()) m_scene->SetVisible(part, Chance(2));
        }
        if (const auto part = PickShape()) m_scene->SetPhantom(part, Chance(2));
    }
    void RemovePart(const OperationPtr&) {
        if (const auto part = PickShape()) m_scene->RemoveShapeInstance(part);
    }
    void PutPart(const OperationPtr&) {
        for (const auto& part : m_parts) m_scene->CreateShapeInstance(part.instance);
    }
    void Rename(const OperationPtr& operation) {
        std::vector<zrk::BaseTree::PropertyEdit> edits;
        for (const auto& part : PickParts()) {
            std::optional<du::Symbol> value(du::Symbol("M" + std::to_string(Below(9))));
            if (Chance(4)) value.reset();
            edits.push_back({part.sbom, du::Symbol("Data"), du::Symbol("Size"), value});
        }
        zrk::World::GetWorld()->GetTree()->EditProperties(edits, operation);
    }
    void AddItemOf(const OperationPtr& operation) {
        m_itemList->AddItem(PickInstances(), Chance(3) ? "X" : "", !Chance(4), Chance(2), operation);
    }
    void EditItem(const OperationPtr& operation) {
        const unsigned id = PickItem();
        switch (Below(4)) {
            case 0:
                m_itemList->SetLabel(id, Chance(2) ? "" : "L" + std::to_string(Below(5)), operation);
                break;
            case 1:
                m_itemList->SetTag(id, "T" + std::to_string(Below(5)), operation);
                break;
            case 2:
                m_itemList->SetItemized(id, Chance(2), operation);
                break;
            default:
                m_itemList->SetNumber(id, Below(30), operation);
        }
    }
    void DeleteItem(const OperationPtr& operation) {
        const unsigned id = PickItem();
        OperationPtr target = operation;
        if (Chance(2)) m_engine->OnItemRemoved(id, operation);
        m_itemList->DeleteItem(id, target);
    }
    void JoinItem(const OperationPtr& operation) {
        const unsigned id = PickItem();
        const auto instances = PickInstances();
        m_itemList->JoinItem(id, instances, operation);
        m_engine->UpdateItemGroupCalloutLeaders(id, {instances.begin(), instances.end()}, {}, operation);
    }
    void LeaveItem(const OperationPtr& operation) {
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
    }
    void ClearItems(const OperationPtr& operation) {
        if (!Chance(4)) return;
        if (Chance(2)) m_engine->OnListCleared(operation);
        m_itemList->Clear(operation);
    }
    void Number(const OperationPtr& operation) {
        m_itemList->SetNumbering({Chance(2), Chance(2) ? "P" : "", "-"}, operation);
    }
    void Generate(const OperationPtr& operation) {
        m_itemList->GenerateFromStructure(m_root.sbom, operation);
    }
    void Combine(const OperationPtr& operation) {
        CalloutVec callouts;
        for (const auto& callout : All<zrannotations::Callout>()) {
            if (Chance(4) && callouts.size() < 4) callouts.push_back(callout);
        }
        zrannotations::CombinedCallout::Combine(callouts, operation);
    }
    void Dissolve(const OperationPtr& operation) {
        if (const auto combined = Pick(All<zrannotations::CombinedCallout>())) combined->Dissolve(operation);
    }
    void EditInset(const OperationPtr&) {
        const auto inset = Pick(All<zrannotations::Inset>());
        if (!inset) {
            AddInset(50.0 + Below(300), 50.0 + Below(200));
            return;
        }
        switch (Below(7)) {
            case 0:
                inset->Displace({Coordinate(), Coordinate(), 0}, Chance(4));
                break;
            case 1:
                inset->SetRadius(20.0 + Below(80));
                break;
            case 2:
                inset->SetFactor(1.5F + static_cast<float>(Below(5)), Chance(4));
                break;
            case 3:
                inset->SetVisible(!inset->IsVisible());
                break;
            case 4:
                inset->SetSource({100.0 + Below(200), 100.0 + Below(100), 0});
                break;
            case 5:
                m_annoSet->RemoveAnnotationFromSet(inset, nullptr);
                break;
            default:
                AddInset(50.0 + Below(300), 50.0 + Below(200));
        }
    }
    void LeadThroughInset(const OperationPtr&) {
        const auto inset = Pick(All<zrannotations::Inset>());
        if (const auto callout = PickCallout()) callout->LeadThrough(Chance(3) ? nullptr : inset, 0);
    }
    void EditTemplate(const OperationPtr& operation) {
        std::vector<ContentPtr> contents{Literal("T" + std::to_string(Below(9)))};
        if (Chance(2)) contents.push_back(Reference("Data", "Size"));
        if (Chance(2)) contents.push_back(ItemLabel());
        Pick(m_templates)->SetTextContent(std::move(contents), operation);
    }
    void ChangeTemplate(const OperationPtr&) {
        auto callout = PickCallout();
        if (!callout || callout->IsCombined()) return;
        callout->UpdateDefinition(Pick(m_templates));
        m_engine->CheckForTypeUpdate(callout);
        m_engine->SetCalloutText(callout);
    }
    void Translate(const OperationPtr&) {
        const auto callout = PickCallout();
        if (!callout) return;
        auto& text = callout->GetLocalizableString();
        text = du::Symbol("source" + std::to_string(Below(9)));
        text.SetTranslation("de", du::Symbol("Text" + std::to_string(Below(9))));
        text.SetEnabled(!Chance(4));
    }
    void SwitchLanguage(const OperationPtr& operation) {
        const std::string former = du::Localizer::GetLanguage();
        const std::string language = former == "en" ? "de" : "en";
        zrk::World::GetWorld()->SetLanguage(language);
        operation->AddStep(new zrk::CallStep([former] { zrk::World::GetWorld()->SetLanguage(former); },
                                             [language] { zrk::World::GetWorld()->SetLanguage(language); }));
    }
    void EditCallout(const OperationPtr&) {
        const auto callout = PickCallout();
        if (!callout) return;
        switch (Below(8)) {
            case 0:
                callout->SetLabelPosition({Coordinate(), Coordinate(), 0});
                break;
            case 1:
                callout->SetLabelScreenSpaceMode(m_view);
                break;
            case 2:
                callout->SetAnchor({Coordinate(), Coordinate(), 1}, 0);
                break;
            case 3:
                callout->SetText(du::Symbol("own"), false);
                break;
            case 4:
                callout->SetVisible("", Chance(2));
                break;
            case 5:
                callout->ShowAllLeaders(nullptr);
                break;
            case 6:
                callout->SetCustomCallout(Chance(2));
                break;
            default:
                callout->SetSymbolIdAtPos(Below(9), 0);
        }
    }
    void RemoveCallouts(const OperationPtr& operation) {
        for (const auto& callout : All<zrannotations::Callout>()) {
            if (!Chance(4)) continue;
            m_annoSet->RemoveAnnotationWithDependencies(callout, Chance(2) ? operation : nullptr);
        }
    }
    void AddFree(const OperationPtr& operation) { Show(MakeFreeCallout(m_templates[2]), operation); }
    void Refer(const OperationPtr&) {
        const auto callout = PickCallout();
        if (!callout) return;
        if (m_annoSet->IsReferencedAnnotation(callout)) {
            m_annoSet->RemoveReferencedAnnotation(callout);
        } else {
            m_annoSet->AddReferencedAnnotation(callout);
        }
    }
    void AddSymbolPart(const OperationPtr& operation) {
        const Part symbol =
            AddSymbol("symbol" + std::to_string(++m_symbols), {Coordinate(), Coordinate(), 4});
        Show(du::SmartPtr<zrk::Annotation>(new zrannotations::SymbolAnnotation(symbol.instance)), operation);
        Show(MakeCallout(m_templates[2], symbol), operation);
    }
    void RemoveSymbolPart(const OperationPtr&) {
        const auto symbol = Pick(All<zrannotations::SymbolAnnotation>());
        if (!symbol) return;
        du::SmartPtr<zrk::ShapeInstance> part;
        m_scene->GetShapeInstance(symbol->GetInstance(), part);
        if (part) m_scene->RemoveShapeInstance(part);
        m_annoSet->RemoveAnnotationFromSet(symbol, nullptr);
    }
    void DrawHidden(const OperationPtr& operation) {
        const du::SmartPtr<zrk::OperationStep> step(
            new CalloutsDrawWhenHiddenOperationStep(m_engine, !m_scene->GetDrawWhenHidden()));
        operation->AddStep(step);
        step->Redo();
    }
    void EditView(const OperationPtr&) {
        const float grey = static_cast<float>(Below(9)) / 9.0F;
        switch (Below(3)) {
            case 0:
                m_view->SetCamera(dg::Camera3D::Orthographic({Coordinate(), Coordinate(), 0}, {0, 0.1, -1},
                                                             {0, 1, 0}, 5.0 + Below(9), 0, 0, 100.0));
                break;
            case 1:
                m_view->Resize(200 + static_cast<int>(Below(400)), 200 + static_cast<int>(Below(300)));
                break;
            default:
                m_view->SetBackgroundColors({grey, 0, 0, 1}, {0, grey, 0, 1}, {0, 0, grey, 1});
        }
    }

    static constexpr std::pair<const char*, Action> kActions[] = {
        {"create", &UndoWalkTest::Create},
        {"create", &UndoWalkTest::Create},
        {"move", &UndoWalkTest::MovePart},
        {"show", &UndoWalkTest::ShowPart},
        {"remove part", &UndoWalkTest::RemovePart},
        {"put part", &UndoWalkTest::PutPart},
        {"rename", &UndoWalkTest::Rename},
        {"add item", &UndoWalkTest::AddItemOf},
        {"edit item", &UndoWalkTest::EditItem},
        {"delete item", &UndoWalkTest::DeleteItem},
        {"join", &UndoWalkTest::JoinItem},
        {"leave", &UndoWalkTest::LeaveItem},
        {"clear", &UndoWalkTest::ClearItems},
        {"number", &UndoWalkTest::Number},
        {"generate", &UndoWalkTest::Generate},
        {"combine", &UndoWalkTest::Combine},
        {"dissolve", &UndoWalkTest::Dissolve},
        {"inset", &UndoWalkTest::EditInset},
        {"lead", &UndoWalkTest::LeadThroughInset},
        {"template", &UndoWalkTest::EditTemplate},
        {"definition", &UndoWalkTest::ChangeTemplate},
        {"translate", &UndoWalkTest::Translate},
        {"language", &UndoWalkTest::SwitchLanguage},
        {"callout", &UndoWalkTest::EditCallout},
        {"remove", &UndoWalkTest::RemoveCallouts},
        {"free", &UndoWalkTest::AddFree},
        {"refer", &UndoWalkTest::Refer},
        {"symbol", &UndoWalkTest::AddSymbolPart},
        {"remove symbol", &UndoWalkTest::RemoveSymbolPart},
        {"hidden", &UndoWalkTest::DrawHidden},
        {"view", &UndoWalkTest::EditView}};

    static void Settle() {
        WaitForPool();
        Pump();
    }
    std::string Look() {
        Settle();
        return DumpScene(*m_scene, *m_engine, m_root.sbom);
    }

    /// One to three actions in a transaction, now and then given up.
    std::string Act(bool& isCommitted) {
        zrk::Transaction transaction(m_scene, "Act");
        std::string names;
        for (unsigned count = 1 + Below(3); count > 0; --count) {
            const auto& [name, action] = kActions[Below(std::size(kActions))];
            names += std::string(name) + ", ";
            (this->*action)(transaction.GetOperation());
            Settle();
        }
        isCommitted = !Chance(8);
        if (isCommitted) transaction.Commit();
        return names;
    }

    std::mt19937 m_random;
    std::vector<Part> m_parts;
    std::vector<TemplatePtr> m_templates;
    int m_symbols = 0;
};

TEST_P(UndoWalkTest, FindsEveryStateAgainByteForByte) {
    constexpr int kMoves = 300;
    std::vector<std::string> states{Look()};  // by the number of entries that lead to it
    std::vector<std::string> names{"start"};
    std::size_t now = 0;
    for (int move = 0; move < kMoves && !HasFailure(); ++move) {
        SCOPED_TRACE("seed " + std::to_string(GetParam()) + ", move " + std::to_string(move));
        const unsigned choice = Below(10);
        if (choice < 5) {
            bool isCommitted = false;
            const std::size_t before = m_scene->GetHistory().GetUndoCount();
            const std::string name = Act(isCommitted);
            const bool isEntered = m_scene->GetHistory().GetUndoCount() > before;
            EXPECT_LE(isEntered, isCommitted) << name;
            const std::string state = Look();
            if (!isEntered) {
                EXPECT_EQ(state, states[now]) << (isCommitted ? "left no entry: " : "given up: ") << name;
                continue;
            }
            states.resize(++now);
            names.resize(now);
            states.push_back(state);
            names.push_back(name);
        } else if (choice < 8) {
            EXPECT_EQ(m_scene->GetHistory().Undo(), now > 0);
            if (now > 0) --now;
            EXPECT_EQ(Look(), states[now]) << "undone: " << (now + 1 < names.size() ? names[now + 1] : "");
        } else {
            EXPECT_EQ(m_scene->GetHistory().Redo(), now + 1 < states.size());
            if (now + 1 < states.size()) ++now;
            EXPECT_EQ(Look(), states[now]) << "done again: " << names[now];
        }
    }
    while (m_scene->GetHistory().Undo()) {
    }
    EXPECT_EQ(Look(), states.front());
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoWalkTest, testing::Range(1U, 9U));

}  // namespace
}  // namespace zrcallouts
