// Callouts for a selection: which parts share one, what they say, and that they come and go as one operation.

#include <gmock/gmock.h>

#include "tests/callouts/generator/GeneratorFixture.h"
#include "zrk/operation/Operation.h"

namespace zrcallouts {
namespace {

using testing::ElementsAre;

class SelectionRun : public GeneratorFixture {
protected:
    /// With `others` besides the parts: items without part, as when something else is selected, one of them
    /// null.
    std::vector<int> ProgressOf(const std::vector<Part>& parts, std::size_t others = 0) {
        Selection selection = Select(parts);
        for (const auto& other : Select(std::vector<Part>(others))) selection.push_back(other);
        if (others > 0) selection.back() = nullptr;
        const EventPtr event(new RecordingEvent);
        CalloutGenerator(m_engine).AddOnSelected(selection, event);
        return event->m_progress;
    }
    std::vector<Part> Row(int count, const NodePtr& node) {
        std::vector<Part> parts;
        for (int i = 0; i < count; ++i) {
            parts.push_back(
                AddPart(node->GetObjectName() + std::to_string(i), {4.0 * i - 8, 0, 0}, nullptr, node));
        }
        return parts;
    }
};

TEST_F(SelectionRun, ReportsProgressBeforeEachHundredthItemOfAllPasses) {
    UseTemplate({Literal("x")});
    const Part a = AddPart("a", {-4, 0, 0});
    const Part b = AddPart("b", {4, 0, 0});
    EXPECT_THAT(ProgressOf({a}, 249), ElementsAre(0, 40, 80)) << "items without part count too";
    EXPECT_THAT(ProgressOf({a, b}, 148), ElementsAre(0, 33, 67))
        << "300 items: the second pass goes on where the first ended";
    EXPECT_THAT(ProgressOf({a}), ElementsAre(100));
    EXPECT_THAT(ProgressOf({}), ElementsAre()) << "nothing selected, nothing done";
}

TEST_F(SelectionRun, LetsFurtherPartsLeadFromTheFirstCalloutWhenAsked) {
    UseTemplate({Literal("x")});
    const auto bolts = Row(3, MakeBox("bolt"));
    const struct {
        bool combine;
        bool drawOne;
        const char* shown;
        std::size_t drawnOnFirst;
    } rows[] = {{false, false, "bolt0=x;bolt1=x;bolt2=x;", 1},
                {true, false, "bolt0,bolt1,bolt2=x;", 3},
                {false, true, "bolt0,bolt1,bolt2=x;", 1},
                {true, true, "bolt0,bolt1,bolt2=x;", 1}};
    for (const auto& row : rows) {
        m_engine->SetCombineForSamePart(row.combine);
        m_engine->SetDrawOneForSamePart(row.drawOne);
        Create(bolts);
        EXPECT_EQ(Dump(), row.shown);
        EXPECT_EQ(Shown().front()->GetDrawnLeaders().size(), row.drawnOnFirst) << row.combine << row.drawOne;
        Undo();
    }
}

TEST_F(SelectionRun, NumbersPartsThatAreNotListedYet) {
    UseTemplate({ItemLabel()});
    const Part listed = AddPart("listed", {-8, 0, 0});
    const Part unlisted = AddPart("unlisted", {0, 0, 0});
    const Part aside = AddPart("aside", {8, 0, 0});
    AddItem({listed}, "A");
    Items().SetItemized(AddItem({aside}), false);
    StagedGenerator generator(m_engine);
    generator.InitializeSelected(Select({listed, unlisted, aside}), nullptr);
    EXPECT_EQ(generator.GetVariantsCount(), 2U);
    unsigned id = 0;
    ASSERT_TRUE(Items().GetItemIdForInstance(unlisted.sbom, id));
    EXPECT_FALSE(Items().Capture(id)->isManual);
    EXPECT_EQ(Items().Capture(id)->customLabel, "");
    Create({listed, unlisted, aside});
    EXPECT_EQ(Dump(), "listed=A;unlisted=2;") << "1 was given";
    EXPECT_TRUE(Shown().back()->ReferencesItemId(id));
}

TEST_F(SelectionRun, GroupsPartsByTheirPropertyValues) {
    const auto definition =
        UseTemplate({Literal("M"), Reference("Data", "Size"), Reference("Data", "Steel")});
    m_engine->SetCombineForSamePart(true);
    const auto addBolt = [this](const std::string& name, double x, const char* size, const char* steel) {
        const Part part = AddPart(name, {x, 0, 0});
        part.sbom->SetProperty(du::Symbol("Data"), du::Symbol("Size"), du::Symbol(size));
        if (steel != nullptr)
            part.sbom->SetProperty(du::Symbol("Data"), du::Symbol("Steel"), du::Symbol(steel));
        return part;
    };
    const std::vector<Part> parts{addBolt("a", -9, "6", "A2"), addBolt("b", -3, "8", "A2"),
                                  addBolt("c", 3, "6", "A2"), addBolt("d", 6, "6", "A4"),
                                  addBolt("e", 9, "6", nullptr)};
    Create(parts);
    EXPECT_EQ(Dump(), "a,c=M6A2;b=M8A2;d=M6A4;") << "a part that lacks a value gets none";
}

TEST_F(SelectionRun, TurnsToTheParentOfAPartThatIsNotItemized) {
    UseTemplate({ItemLabel()});
    const Part assembly = AddAssembly("assembly");
    const Part plate = AddPart("plate", {-4, 0, 0}, &assembly);
    const Part cap = AddPart("cap", {4, 0, 0}, &assembly);
    const unsigned above = AddItem({assembly}, "A");
    const unsigned item = AddItem({plate});
    AddItem({cap});
    Create({plate});
    EXPECT_EQ(Dump(), "plate=1;") << "itemized, it stands for itself";
    Undo();
    Items().SetItemized(item, false);
    Create({plate});
    ASSERT_EQ(Shown().size(), 1U + 1U) << "the parent, and below it the other part that is itemized";
    EXPECT_EQ(OfItem(above).size(), 1U);
    EXPECT_EQ(OfItem(above).front()->GetAssemblyInstanceAtPos(0),
              du::SmartPtr<zrk::BaseInstance>(assembly.sbom));
    EXPECT_EQ(OfItem(above).front()->GetType(), zrannotations::CALLOUT_TYPE_ASSEMBLY);
    Undo();
    Items().SetItemized(above, false);
    Create({plate});
    EXPECT_EQ(Dump(), "") << "neither is itemized";
}

TEST_F(SelectionRun, TurnsToTheTopWeldOfAMember) {
    UseTemplate({ItemLabel()});
    const Part weld = AddAssembly("weld", true);
    const Part inner = AddAssembly("inner", true, &weld);
    const Part plate = AddPart("plate", {-4, 0, 0}, &inner);
    AddPart("rib", {4, 0, 0}, &weld);
    const unsigned item = AddItem({weld});
    Create({plate});
    ASSERT_EQ(Dump(), "plate=1;");
    EXPECT_TRUE(Shown().front()->ReferencesItemId(item));
    EXPECT_EQ(Shown().front()->GetAssemblyInstanceAtPos(0), du::SmartPtr<zrk::BaseInstance>(weld.sbom));
}

TEST_F(SelectionRun, NamesAnAssemblyOnlyWhenSeveralPartsAreMeant) {
    UseTemplate({ItemLabel()});
    const Part single = AddPart("single", {-4, 0, 0});
    const Part lone = AddAssembly("lone");
    AddPart("only", {4, 0, 0}, &lone);
    AddItem({lone});
    Create({single, lone});
    for (const auto& callout : Shown()) {
        EXPECT_FALSE(callout->GetAssemblyInstanceAtPos(0)) << Describe(*callout);
        EXPECT_EQ(callout->GetType(), zrannotations::CALLOUT_TYPE_SHAPE);
    }
    EXPECT_EQ(Dump(), "only=1;single=2;");
}

TEST_F(SelectionRun, DoesAndRecordsNothingWithoutVariants) {
    const Part part = AddPart("a", {0, 0, 0});
    Create({part});
    EXPECT_EQ(Dump(), "") << "there is no template";
    UseTemplate({Reference("Data", "Size")});
    Create({part});
    EXPECT_EQ(Dump(), "") << "the part lacks the property";
    EXPECT_EQ(UndoCount(), 0U);
    StopEngine();
    CalloutGenerator(nullptr).AddOnSelected(Select({part}), nullptr);
}

TEST_F(SelectionRun, IsOneEntryOfTheHistory) {
    UseTemplate({ItemLabel(), Literal(" "), Reference("System", "zrQTY")});
    auto parts = Row(3, MakeBox("bolt"));
    Items().AddInstance(AddItem({AddPart("nut", {0, 4, 0})}), parts[2].sbom);
    Create(parts);
    EXPECT_EQ(Dump(), "bolt0=2 1;bolt1=3 1;bolt2=1 2;");
    EXPECT_EQ(UndoCount(), 1U);
    const std::string name = m_scene->GetHistory().GetUndoName();
    EXPECT_FALSE(name.empty());
    EXPECT_EQ(name.find("142"), std::string::npos) << "the name is a text, not a number: " << name;
    ASSERT_TRUE(Undo());
    EXPECT_EQ(Dump(), "");
    EXPECT_EQ(Items().GetItemIds().size(), 1U);
}

}  // namespace
}  // namespace zrcallouts
