#include "app/sheet/Hotspots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/document/Document.h"
#include "tests/app/document/AssemblyMaker.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet {
namespace {

using ::testing::ElementsAre;

std::vector<SheetHotspot> Spots(const Document& document) {
    const auto scene = document.Scene()->GetPickScene();
    std::vector<VisibleArea> areas(scene->GetParts().size());
    for (std::uint32_t i = 0; i < areas.size(); ++i) areas[i].placement = i;
    return HotspotsOf(document, *scene, areas);
}

std::vector<std::string> Ids(const Document& document) {
    std::vector<std::string> ids;
    for (const SheetHotspot& spot : Spots(document)) ids.push_back(spot.id);
    return ids;
}

// What links to a hotspot must find it in the next edition, when engineering has renamed the part and another
// is hidden.
TEST(Hotspots, KeepTheirIdsWhenPartsAreRenamedOrHidden) {
    const zrkapp::illustration::HostSession session(1);
    {
        const Document renamed(PinsAndPlate("Stift", "Platte <1>"), Document::Settings());
        EXPECT_THAT(Ids(renamed), ElementsAre("part-1-1", "part-2-1", "part-1-2"));
    }
    const Document document(PinsAndPlate(), Document::Settings());
    EXPECT_THAT(Ids(document), ElementsAre("part-1-1", "part-2-1", "part-1-2"));
    document.Scene()->SetVisible(document.FindShapes({"Pin"}).at(0), false);
    EXPECT_THAT(Ids(document), ElementsAre("part-2-1", "part-1-2"));
}

TEST(Hotspots, TellWhichItemAndWhichInstanceTheyAre) {
    const zrkapp::illustration::HostSession session(1);
    const Document document(PinsAndPlate(), Document::Settings());
    const VisibleArea area{1, {{{0, 0}, {4, 0}, {0, 4}}}};
    const SheetHotspot spot = HotspotsOf(document, *document.Scene()->GetPickScene(), {area}).at(0);
    EXPECT_EQ(spot.rings, area.rings);
    EXPECT_TRUE(spot.hasItem);
    EXPECT_EQ(spot.itemId, 2U);
    EXPECT_EQ(spot.label + " " + spot.name + " " + spot.instance, "2 Plate /Plate");
}

}  // namespace
}  // namespace zrsheet
