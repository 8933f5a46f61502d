#include "zrannotations/CombinedCallout.h"

#include "tests/host/zrannotations/PartsTest.h"
#include "zrk/annotation/AnnoSet.h"

namespace zrannotations {
namespace {

using CalloutPtr = du::SmartPtr<Callout>;
using CombinedPtr = du::SmartPtr<CombinedCallout>;

class CombinedCalloutTest : public PartsTest {
protected:
    CombinedCalloutTest() : m_members{Member("a", 3), Member("b", 5), Member("c", 8)} {}

    CalloutPtr Member(const std::string& id, unsigned item) {
        const CalloutPtr callout(new Callout);
        const auto part = AddPart(id, Square(10), At(10.0 * item, 0, 0));
        EXPECT_TRUE(callout->Initialize(Template("t", "text"), part, false, nullptr));
        callout->SetItemId(item);
        return callout;
    }

    const std::vector<CalloutPtr> m_members;
};

TEST_F(CombinedCalloutTest, LeadsWhereItsFirstMemberLeadsWithLeadersOfItsOwn) {
    m_members[0]->SetLabelPosition(dg::DPoint3D(0, 20, 0));
    const CombinedPtr combined(new CombinedCallout(m_members));
    EXPECT_TRUE(combined->IsInitialized());
    EXPECT_EQ(combined->GetShapeInstanceIdAtPos(0), "a");
    dg::DPoint3D world;
    ASSERT_TRUE(combined->GetMarkupLabelPosition(world));
    ExpectNear(world, 30, 20, 0);
    combined->SetHiddenAsDashedAtPos(true, 0);
    EXPECT_FALSE(m_members[0]->IsHiddenAsDashedAtPos(0));
    EXPECT_EQ(CombinedPtr(new CombinedCallout({nullptr, m_members[1]}))->GetLeaderLineCount(true), 0U);
}

TEST_F(CombinedCalloutTest, CarriesTheItemsOfAllMembers) {
    const CombinedPtr combined(new CombinedCallout({m_members[0], nullptr, m_members[1]}));
    unsigned id = 0;
    EXPECT_TRUE(combined->GetItemId(id));
    EXPECT_EQ(id, 3U);
    EXPECT_TRUE(combined->ReferencesItemId(5));
    EXPECT_FALSE(combined->ReferencesItemId(8));
    EXPECT_FALSE(combined->RemoveItemId(8));
    EXPECT_EQ(combined->GetCount(), 3U);
    EXPECT_EQ(combined->RemoveItemId(3), m_members[0]);
    EXPECT_EQ(combined->GetCount(), 2U);
    id = 99;
    EXPECT_FALSE(combined->GetItemId(id)) << "its first member is not known yet";
    EXPECT_EQ(id, 99U);
    EXPECT_TRUE(combined->HasItemId());
    m_members[1]->RemoveItemId();
    EXPECT_FALSE(combined->HasItemId());
}

TEST_F(CombinedCalloutTest, TakesItsOtherMembersAlongWhenItLeavesTheScene) {
    const CombinedPtr combined(new CombinedCallout(m_members));
    combined->ReattachChildren();
    combined->RemoveItemId(8);
    du::SmartPtr<zrk::AnnoSet> annoSet;
    m_scene->GetAnnoSet(annoSet);
    for (const auto& member : m_members) annoSet->AddAnnotationToSet(member, nullptr);
    annoSet->AddAnnotationToSet(combined, nullptr);
    annoSet->RemoveAnnotationWithDependencies(combined, nullptr);
    const std::vector<zrk::AnnoSet::AnnotationPtr> left{m_members[0], m_members[2]};
    EXPECT_EQ(annoSet->GetAnnotations(), left);
}

}  // namespace
}  // namespace zrannotations
