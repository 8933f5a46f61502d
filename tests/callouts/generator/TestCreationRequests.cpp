// Callouts for items, for 3-D symbols and for copy steps.

#include "tests/callouts/generator/GeneratorFixture.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/operation/Operation.h"

namespace zrcallouts {
namespace {

class CreationRequests : public GeneratorFixture {
protected:
    void CreateFor(const std::vector<unsigned>& items, const std::string& templateId,
                   const OperationPtr& operation = nullptr) {
        CalloutGenerator(m_engine).AddOnItemIds(items, templateId, operation);
    }

    const Part m_a = AddPart("a", {-8, 0, 0});
    const Part m_b = AddPart("b", {0, 0, 0});
    const Part m_weld = AddAssembly("weld", true);
    const Part m_member = AddPart("member", {8, 0, 0}, &m_weld);
};

TEST_F(CreationRequests, CallOutTheInstancesOfEachItemInTheOrderOfTheIds) {
    UseTemplate({Literal("#"), ItemLabel()});
    const unsigned first = AddItem({m_b});
    const unsigned second = AddItem({m_a, m_member});
    CreateFor({second, first, second}, "no such template");
    EXPECT_EQ(Dump(), "a=#2;b=#1;") << "the member goes with its weld";
    EXPECT_EQ(UndoCount(), 1U);
    CreateFor({second}, "no such template");
    EXPECT_EQ(UndoCount(), 1U) << "all are there";
    Undo();
    EXPECT_EQ(Dump(), "");
    const OperationPtr operation = MakeOperation();
    CreateFor({first}, "", operation);
    EXPECT_EQ(UndoCount(), 0U) << "whoever brings an operation records it";
    operation->Undo();
    EXPECT_EQ(Dump(), "");
}

TEST_F(CreationRequests, SwitchTheTemplateOfCalloutsThatAreThere) {
    UseTemplate({Literal("old "), ItemLabel()});
    const unsigned item = AddItem({m_a});
    CreateFor({item}, "");
    const std::size_t entries = UndoCount();
    const auto definition = MakeTemplate({Literal("new "), ItemLabel()});
    CreateFor({item}, "no such template");
    EXPECT_EQ(Dump(), "a=old 1;");
    CreateFor({item}, definition->GetId());
    EXPECT_EQ(Dump(), "a=new 1;");
    EXPECT_EQ(Shown().front()->GetDefinition().get(), definition.get());
    EXPECT_EQ(m_engine->GetTemplate().get(), definition.get());
    EXPECT_EQ(UndoCount(), entries);
}

TEST_F(CreationRequests, CallOutSymbolsTogetherWithThoseOfTheSameShape) {
    UseTemplate({Literal("!")});
    const NodePtr arrow = MakeBox("arrow");
    const Part left = AddSymbol("left", {-8, 8, 0}, arrow);
    const Part right = AddSymbol("right", {8, 8, 0}, arrow);
    const Part other = AddSymbol("other", {0, 8, 0});
    const du::SmartPtr<zrannotations::SymbolAnnotation> annotation(
        new zrannotations::SymbolAnnotation(right.instance));
    Show(annotation);
    const std::vector<du::SmartPtr<zrk::Instance>> symbols{left.instance, other.instance, nullptr,
                                                           right.instance};
    const struct {
        bool combine;
        bool drawOne;
        const char* shown;
        std::size_t drawn;  // leaders of the first callout
    } rows[] = {{false, false, "/left=!;/other=!;/right=!;", 1},
                {true, false, "/left,/right=!;/other=!;", 2},
                {false, true, "/left,/right=!;/other=!;", 1}};
    for (const auto& row : rows) {
        m_engine->SetCombineForSamePart(row.combine);
        m_engine->SetDrawOneForSamePart(row.drawOne);
        CalloutGenerator(m_engine).AddOnSymbols(symbols);
        EXPECT_EQ(Dump(), row.shown);
        const auto first = Shown().front();
        EXPECT_EQ(first->GetSymbolIdAtPos(0), 0U);
        EXPECT_EQ(first->GetSymbolIdAtPos(1), row.combine || row.drawOne ? annotation->Id() : 0U);
        EXPECT_EQ(first->GetDrawnLeaders().size(), row.drawn);
        EXPECT_TRUE(Undo());
        EXPECT_EQ(Dump(), "");
    }
    CalloutGenerator(m_engine).AddOnSymbols({m_weld.instance});
    EXPECT_EQ(UndoCount(), 0U) << "nothing to lead to";
}

TEST_F(CreationRequests, OfCopiesOnlyListTheirParts) {
    UseTemplate({ItemLabel()});
    CalloutPtr callout = MakeCallout(m_engine->GetTemplate(), m_a);
    const std::string before = Describe(*callout);
    const OperationPtr operation = MakeOperation();
    CalloutGenerator generator(m_engine);
    generator.AddOnCopySteps(Select({m_a, m_b}), callout, operation);
    EXPECT_EQ(Describe(*callout), before);
    EXPECT_EQ(Dump(), "");
    EXPECT_TRUE(generator.GetCreatedCallouts().empty());
    EXPECT_EQ(Items().GetItemIds().size(), 2U);
    operation->Undo();
    EXPECT_TRUE(Items().GetItemIds().empty());
}

TEST_F(CreationRequests, TakeCalloutsOfItemsAwayAgain) {
    UseTemplate({ItemLabel()});
    OperationPtr operation = MakeOperation();
    CalloutGenerator generator(m_engine);
    const unsigned item = generator.AddToItemList(m_a.sbom, true, "A1", operation);
    CreateFor({item, generator.AddToItemList(m_b.sbom, false, "", operation)}, "");
    EXPECT_EQ(Dump(), "a=A1;b=1;");
    m_view->SetDirty(false);
    generator.RemoveFromItemIds({}, operation);
    EXPECT_FALSE(m_view->IsDirty());
    generator.RemoveFromItemIds({item}, operation);
    EXPECT_TRUE(m_view->IsDirty());
    EXPECT_EQ(Dump(), "b=1;");
    EXPECT_TRUE(Items().GetItemized(item)) << "the item stays";
}

}  // namespace
}  // namespace zrcallouts
