// The stages that every way of creating callouts shares, one by one.

#include <gmock/gmock.h>

#include "tests/callouts/generator/GeneratorFixture.h"
#include "tests/support/TraceLog.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/operation/Operation.h"

namespace zrcallouts {
namespace {

using testing::ElementsAre;
using zrannotations::Callout;

class CreationStages : public GeneratorFixture {
protected:
    std::string Create(const CalloutVec& callouts, OperationPtr& operation) {
        CalloutGenerator(m_engine).AddCallouts(callouts, operation);
        return Dump();
    }

    const Part m_part = AddPart("a", {0, 0, 0});
};

TEST_F(CreationStages, WalkTheKeysOfTheTemplatesCategory) {
    const struct {
        TemplatePtr definition;
        bool isInitialised;  // what InitCategoryIterators answers
    } rows[] = {{MakeTemplate({Literal("x")}), true},
                {MakeTemplate({Reference("Data", "Size")}), true},
                {MakeTemplate({ItemLabel()}), false},
                {MakeTemplate({ItemLabel(), Reference("Data", "Size")}), false}};
    m_part.sbom->SetProperty(du::Symbol("Data"), du::Symbol("Size"), du::Symbol("6"));
    for (const auto& row : rows) {
        m_engine->SetTemplate(row.definition);
        StagedGenerator generator(m_engine);
        generator.InitializeSelected(Select({m_part}), nullptr);
        EXPECT_EQ(generator.GetVariantsCount(), 1U);
        for (int walk = 0; walk < 2; ++walk) {
            EXPECT_FALSE(generator.CompletedCategoryIterators());
            EXPECT_TRUE(generator.NextCategory()) << "the step onto the end is one";
            EXPECT_TRUE(generator.CompletedCategoryIterators());
            EXPECT_FALSE(generator.NextCategory());
            EXPECT_EQ(generator.InitCategoryIterators(), row.isInitialised);
        }
    }
    m_engine->SetTemplate(nullptr);
    StagedGenerator idle(m_engine);
    idle.InitializeSelected(Select({m_part}), nullptr);
    EXPECT_FALSE(idle.InitCategoryIterators());
    EXPECT_FALSE(idle.NextCategory());
    EXPECT_TRUE(idle.CompletedCategoryIterators());
    EXPECT_EQ(idle.GetVariantsCount(), 0U);
}

TEST_F(CreationStages, RegisterACalloutGivenTwiceTwiceButKeepItOnce) {
    const auto callout = MakeCallout(MakeTemplate({Literal("x")}), m_part);
    StagedGenerator generator(m_engine);
    generator.FinalizeCallouts({callout, callout});
    EXPECT_EQ(generator.GetCreatedCallouts().size(), 1U);
    EXPECT_EQ(Pump(), 2U) << "its anchor is asked for each time";
    EXPECT_EQ(Filed(m_part).size(), 1U);
    EXPECT_EQ(Text(callout), "x");
}

TEST_F(CreationStages, ShowWhatIsInitialisedAndCountTheRest) {
    class Watcher : public zrk::SceneObserver {
    public:
        void OnAnnotationAdded(const du::SmartPtr<zrk::Annotation>& annotation) override {
            m_viewIds.push_back(annotation->GetViewId());
        }
        std::vector<unsigned> m_viewIds;
    };
    const du::SmartPtr<Watcher> watcher(new Watcher);
    m_scene->RegisterObserver(watcher);
    const zrtest::TraceLog traces;
    const auto definition = MakeTemplate({Literal("x")});
    const auto first = MakeCallout(definition, m_part);
    const auto second = MakeCallout(definition, m_part);
    const CalloutPtr unready(new Callout);
    m_view->SetDirty(false);
    StagedGenerator generator(m_engine);
    generator.ShowCallouts(CalloutVec{nullptr, unready}, nullptr);
    EXPECT_FALSE(m_view->IsDirty());
    EXPECT_TRUE(traces.m_lines.empty());
    generator.ShowCallouts(CalloutVec{nullptr, first, unready, second}, nullptr);
    EXPECT_THAT(traces.m_lines,
                ElementsAre("3 zrcallouts CalloutGenerator AddAnnotationToSet for callout 1",
                            "3 zrcallouts CalloutGenerator AddAnnotationToSet for callout 3"));
    EXPECT_THAT(watcher->m_viewIds, ElementsAre(1U, 1U))
        << "the view is known when the callout enters the set";
    EXPECT_TRUE(m_view->IsDirty());
    EXPECT_EQ(Shown(), (CalloutVec{first, second}));
    EXPECT_EQ(first->GetViewId(), m_view->GetViewId());
}

TEST_F(CreationStages, NumberCalloutsMadeElsewhere) {
    const auto definition = MakeTemplate({ItemLabel()});
    const Part listed = AddPart("listed", {8, 0, 0});
    const Part aside = AddPart("aside", {-8, 0, 0});
    const Part assembly = AddAssembly("assembly");
    const Part below = AddPart("below", {0, 8, 0}, &assembly);
    AddItem({assembly}, "ASM");
    AddItem({listed}, "L");
    Items().SetItemized(AddItem({aside}), false);
    OperationPtr operation;
    const CalloutVec callouts{nullptr, MakeCallout(definition, m_part), MakeCallout(definition, listed),
                              MakeCallout(definition, aside),
                              MakeCallout(definition, below, std::nullopt, &assembly)};
    EXPECT_EQ(Create(callouts, operation), "a=2;below=ASM;listed=L;") << "1 was given";
    ASSERT_TRUE(operation);
    EXPECT_EQ(UndoCount(), 1U);
    Undo();
    EXPECT_EQ(Dump(), "");
    unsigned id = 0;
    EXPECT_FALSE(Items().GetItemIdForInstance(m_part.sbom, id)) << "the new item is a step of the operation";
}

TEST_F(CreationStages, LeaveTheOperationEmptyWhenNoCalloutIsKept) {
    const auto definition = MakeTemplate({ItemLabel()});
    Items().SetItemized(AddItem({m_part}), false);
    OperationPtr operation;
    EXPECT_EQ(Create({nullptr, MakeCallout(definition, m_part)}, operation), "");
    EXPECT_FALSE(operation);
    EXPECT_EQ(UndoCount(), 0U);
}

TEST_F(CreationStages, TieCalloutsOnSymbolsToTheFirstAnnotationOfTheSymbol) {
    const auto definition = MakeTemplate({Literal("x")});
    const Part arrow = AddSymbol("arrow", {8, 0, 0});
    const Part stray = AddSymbol("stray", {-8, 0, 0});
    const du::SmartPtr<zrk::Annotation> first(new zrannotations::SymbolAnnotation(arrow.instance));
    Show(first);
    Show(new zrannotations::SymbolAnnotation(arrow.instance));
    const CalloutVec callouts{MakeCallout(definition, arrow), MakeCallout(definition, stray),
                              MakeCallout(definition, m_part)};
    for (const auto& callout : callouts) callout->SetSymbolIdAtPos(77, 0);
    OperationPtr operation;
    Create(callouts, operation);
    EXPECT_EQ(callouts[0]->GetSymbolIdAtPos(0), first->Id());
    EXPECT_EQ(callouts[1]->GetSymbolIdAtPos(0), 0U);
    EXPECT_EQ(callouts[2]->GetSymbolIdAtPos(0), 77U) << "a part is no symbol";
}

TEST_F(CreationStages, PrepareCalloutsThatTheUserPlacesHimself) {
    m_engine->SetTemplate(MakeTemplate({Literal("x")}));
    OperationPtr operation;
    CalloutGenerator generator(m_engine);
    generator.CreateManuallyOnSelected(Select({m_part}), operation);
    ASSERT_TRUE(operation);
    ASSERT_EQ(generator.GetCreatedCallouts().size(), 1U);
    const CalloutPtr callout = *generator.GetCreatedCallouts().begin();
    unsigned id = 0;
    ASSERT_TRUE(Items().GetItemIdForInstance(m_part.sbom, id))
        << "it is numbered whatever the template shows";
    EXPECT_TRUE(Items().Capture(id)->isManual);
    EXPECT_TRUE(callout->ReferencesItemId(id));
    EXPECT_EQ(Text(callout), "");
    EXPECT_TRUE(Filed(m_part).empty());
    EXPECT_TRUE(OfItem(id).empty());
    EXPECT_TRUE(Shown().empty());
    EXPECT_EQ(UndoCount(), 0U);
    EXPECT_EQ(Pump(), 1U) << "its anchor is looked for";
    EXPECT_TRUE(callout->IsAnchorPointCalculated());

    generator.ShowCreatedCallouts(operation);
    zrk::RecordOperation(operation);
    EXPECT_EQ(Shown(), CalloutVec{callout});
    EXPECT_EQ(Filed(m_part), CalloutVec{callout});
    Undo();
    EXPECT_TRUE(Shown().empty());
    EXPECT_FALSE(Items().GetItemIdForInstance(m_part.sbom, id)) << "one undo takes the item back too";
}

}  // namespace
}  // namespace zrcallouts
