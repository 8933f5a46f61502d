#include "app/project/Project.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "app/document/UserError.h"
#include "tests/app/document/AssemblyMaker.h"
#include "tests/app/document/ModelFiles.h"
#include "tests/app/project/ProjectStage.h"

namespace zrsheet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// An assembly by others, else the sample.
const Assembly& RealModel() {
    for (const auto& file : ModelsByOthers()) {
        if (file.filename() == "as1-oc-214.glb") return ImportedModel(file);
    }
    std::puts("as1-oc-214.glb is not there: the sample stands in for it");
    return SampleAssembly();
}

TEST(Project, ComesBackAsItWasWithNothingToUndo) {
    ProjectStage stage;
    for (const bool isHierarchical : {false, true}) {
        Document::Settings settings;
        settings.numbering.hierarchical = isHierarchical;
        stage.Begin(RealModel(), settings);
        stage.EditAsNoCommandDoes();
        const std::string text = stage.Text();
        const auto looks = stage.Looks();
        stage.Reopen(RealModel());
        EXPECT_EQ(stage.Text(), text);
        EXPECT_EQ(stage.Looks(), looks);
        EXPECT_TRUE(stage.Get().Changes().IsEmpty());
        EXPECT_THAT(stage.Get().Orphans(), IsEmpty());
        EXPECT_EQ(stage.Doc().Scene()->GetHistory().GetUndoCount(), 0U);
    }
}

// What was loaded must be known to the engine, not only look like it.
TEST(Project, StaysInStepAfterLoading) {
    ProjectStage stage;
    stage.Begin(RealModel());
    stage.Doc().Items()->AddItem({}, "", true, true);
    stage.Reopen(RealModel());
    auto& document = stage.Doc();
    const unsigned first = document.Items()->GetItemIds().front();
    const auto callout = stage.CalloutOf(first);
    ASSERT_TRUE(callout);
    document.Scene()->SetVisible(callout->GetShapeInstanceAtPos(0), false);
    EXPECT_TRUE(callout->IsHiddenAtPos(0));
    document.DefineTemplate({Document::kFirstTemplate, "No. {item}", {}});
    EXPECT_EQ(callout->GetMarkupText().Text(), "No. 1");
    document.Items()->RemoveItem(first);
    EXPECT_FALSE(stage.CalloutOf(first));
    const unsigned last = document.Items()->GetItemIds().back();
    EXPECT_GT(document.Items()->AddItem({}, "", true, true), last);
}

/// A pump of a body and a head of two equal screws, a cover and a seal.
Assembly Pump() {
    AssemblyMaker maker("pump");
    const int body = maker.Box("Body", 4, 4, 4);
    const int screw = maker.Box("Screw", 1, 1, 2);
    const int cover = maker.Box("Cover", 4, 4, 1);
    maker.Node("Body", -1, body);
    const int head = maker.Node("Head", -1, -1);
    maker.Node("Left Screw", head, screw, {0, 0, 4});
    maker.Node("Right Screw", head, screw, {3, 0, 4});
    maker.Node("Cover", head, cover, {0, 2, 4});
    maker.Node("Seal", head, maker.Box("Seal", 5, 5, 0.5F), {0, 0, -1});
    return maker.Get();
}

/// The pump without the node of that name, which has no children.
Assembly Without(Assembly assembly, std::size_t node) {
    assembly.nodes.erase(assembly.nodes.begin() + static_cast<std::ptrdiff_t>(node));
    return assembly;
}

constexpr std::size_t kBodyNode = 0;
constexpr std::size_t kLeftScrewNode = 2;
constexpr std::size_t kCoverNode = 4;

const ProjectItem& ItemWith(const ProjectData& project, const std::string& path) {
    return *std::find_if(project.items.begin(), project.items.end(), [&path](const ProjectItem& item) {
        return std::count(item.instances.begin(), item.instances.end(), path) != 0;
    });
}

/// Leaders that have waited for their part stand behind the others from then on.
ProjectData LeadersSorted(ProjectData project) {
    for (auto& callout : project.callouts) {
        std::sort(callout.leaders.begin(), callout.leaders.end(),
                  [](const auto& a, const auto& b) { return a.target < b.target; });
    }
    return project;
}

TEST(Project, KeepsWhatTheModelHasLostUntilItIsThereAgain) {
    ProjectStage stage;
    Document::Settings settings;
    settings.labelTemplate = "{item} {quantity}x";
    settings.leaders = LeaderChoice::All;
    stage.Begin(Pump(), settings);
    stage.Doc().Scene()->SetVisible(stage.Doc().FindShapes({"Cover"}).front(), false);
    const ProjectData whole = LeadersSorted(stage.Get().Capture());
    const ProjectItem screws = ItemWith(whole, "/Head/Left Screw");
    const auto looks = stage.Looks();

    Assembly less = Without(Without(Pump(), kCoverNode), kLeftScrewNode);
    stage.Reopen(less);
    EXPECT_THAT(stage.Get().Changes().missing, ElementsAre("/Head/Left Screw", "/Head/Cover"));
    EXPECT_THAT(stage.Get().Orphans(), ElementsAre("/Head/Left Screw", "/Head/Cover"));
    EXPECT_EQ(stage.Doc().Items()->GetQuantity(screws.id), 1);
    EXPECT_EQ(stage.CalloutOf(screws.id)->GetMarkupText().Text(), "2 1x");
    EXPECT_TRUE(stage.CalloutOf(screws.id)->GetShapeInstanceAtPos(0)) << "leaders that wait stand last";

    stage.Reopen(less);
    EXPECT_THAT(stage.Get().Changes().missing, ElementsAre("/Head/Left Screw", "/Head/Cover"));

    stage.Reopen(Pump());
    EXPECT_THAT(stage.Get().Changes().found, ElementsAre("/Head/Left Screw", "/Head/Cover"));
    EXPECT_THAT(stage.Get().Changes().missing, IsEmpty());
    EXPECT_THAT(stage.Get().Orphans(), IsEmpty());
    EXPECT_EQ(stage.Looks(), looks);
    EXPECT_EQ(LeadersSorted(stage.Get().Capture()), whole);
}

TEST(Project, GoesWithItsFilesWhereverTheyAre) {
    ProjectStage stage;
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "old");
    const std::string writeSample = ZR_SAMPLE " " + (folder / "old/model.glb").string();
    ASSERT_EQ(std::system(writeSample.c_str()), 0);
    stage.Import(folder / "old/model.glb");
    stage.Get().Save(folder / "old/a.zrsheet");
    const std::string saved = ReadFile(folder / "old/a.zrsheet");
    std::filesystem::rename(folder / "old", folder / "new");
    stage.Load(folder / "new/a.zrsheet");
    stage.Get().Save(folder / "new/b.zrsheet");
    EXPECT_EQ(ReadFile(folder / "new/b.zrsheet"), saved);
    std::filesystem::rename(folder / "new/model.glb", folder / "elsewhere.glb");
    EXPECT_THROW(stage.Load(folder / "new/a.zrsheet"), UserError);
    stage.Load(folder / "new/a.zrsheet", folder / "elsewhere.glb");
    EXPECT_EQ(stage.Get().Capture().model.path, (folder / "elsewhere.glb").string());
}

TEST(Project, FollowsPartsThatWereRenamedOrMoved) {
    ProjectStage stage;
    stage.Begin(Pump());
    stage.Combine(0, 2);
    const auto looks = stage.Looks();
    Assembly changed = Pump();
    changed.nodes[kBodyNode].name = "Casing";
    changed.nodes[kCoverNode].parent = -1;
    changed.nodes.push_back({"Plug", -1, kIdentityMatrix, 1, {}});
    stage.Reopen(changed);
    const ModelChanges& changes = stage.Get().Changes();
    EXPECT_THAT(changes.missing, IsEmpty());
    EXPECT_THAT(stage.Get().Orphans(), IsEmpty());
    EXPECT_THAT(changes.added, ElementsAre("/Plug"));
    EXPECT_THAT(changes.moved, ElementsAre(ModelChanges::Move{"/Body", "/Casing"},
                                           ModelChanges::Move{"/Head/Cover", "/Cover"}));
    EXPECT_EQ(stage.Looks(), looks);
    EXPECT_EQ(stage.Doc().Items()->GetItemIds().size(), 4U) << "new parts are not listed by themselves";
    EXPECT_EQ(ItemWith(stage.Get().Capture(), "/Casing").number, 1U);
}

}  // namespace
}  // namespace zrsheet::test
