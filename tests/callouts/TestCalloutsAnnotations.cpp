#include <optional>
#include <utility>

#include "callouts/Callouts.h"
#include "tests/callouts/EngineFixture.h"
#include "zrk/world/World.h"

namespace zrcallouts {
namespace {

class CalloutsAnnotations : public ThreeParts {};

TEST_F(CalloutsAnnotations, OnlyFreeCalloutsMayEnterWithoutLeader) {
    const auto assembly = AddAssembly("assembly");
    const auto leaderless = [&](std::optional<unsigned> id, const Part* above) {
        const auto callout = MakeCallout(m_numbered, m_a, id, above);
        callout->RemoveLeaderAtPos(0);
        return callout;
    };
    const auto waiting = leaderless(std::nullopt, nullptr);
    ConnectWaiting(waiting, "late");
    const auto id = AddItem({m_a});
    const struct {
        const char* name;
        CalloutPtr callout;
        bool stays;
    } rows[] = {{"on a part", leaderless(id, nullptr), false},
                {"on an assembly", leaderless(std::nullopt, &assembly), false},
                {"on a part that is not loaded", waiting, true},
                {"free", MakeFreeCallout(m_numbered), true}};
    for (const auto& row : rows) {
        Show(row.callout);
        EXPECT_EQ(IsShown(row.callout), row.stays) << row.name;
    }
    EXPECT_TRUE(OfItem(id).empty());
    EXPECT_TRUE(Items().IsIndicated(id)) << "a refused callout indicates its item even so";
    m_engine->OnRemoveAnnotation(rows[0].callout);
    EXPECT_FALSE(Items().IsIndicated(id)) << "until it is told to be gone, though it was never registered";
    EXPECT_FALSE(Undo()) << "refusing left something to undo";
}

TEST_F(CalloutsAnnotations, OnlyTextsThatAreLocalisedAreShownInTheLanguage) {
    zrk::World::GetWorld()->SetLanguage("de");
    for (const bool isLocalised : {true, false}) {
        const auto callout = MakeFreeCallout(m_literal);
        Translate(callout, isLocalised);
        Show(callout);
        EXPECT_EQ(callout->GetText(true).Text(), isLocalised ? "Schraube" : "");
    }
}

TEST_F(CalloutsAnnotations, AddingAgainOnlyIndicatesAndReattaches) {
    const auto id = AddItem({m_a});
    const auto callout = AddCallout(m_numbered, m_a, id);
    EXPECT_EQ(Text(callout), "1");
    EXPECT_TRUE(Items().IsIndicated(id));
    callout->SetText(du::Symbol("kept"), false);
    Items().SetIndicated(id, false);
    Show(callout);
    EXPECT_EQ(Text(callout), "kept");
    EXPECT_TRUE(Items().IsIndicated(id));
    EXPECT_EQ(OfItem(id), CalloutVec{callout});
    CalloutVec members{MakeCallout(m_literal, m_a), MakeCallout(m_literal, m_b)};
    const auto combined = Combine(members);
    for (const std::size_t dependents : {1U, 2U}) {
        Show(combined);
        EXPECT_EQ(combined->GetDependents().size(), dependents);
        members.push_back(MakeCallout(m_literal, m_b));
        combined->SetCalloutVec(members);
    }
}

// A saved view may show a callout by itself that is a member of a combined one.
TEST_F(CalloutsAnnotations, WhatIsInTheSceneTwiceStaysFiledUntilBothHaveGone) {
    const unsigned id = AddItem({m_b});
    for (const bool isMemberFirst : {true, false}) {
        SCOPED_TRACE(isMemberFirst ? "the member goes first" : "the combined callout goes first");
        const auto member = MakeCallout(m_numbered, m_b, id);
        const CalloutPtr combined = Combine({MakeCallout(m_literal, m_a), member});
        Show(member);
        Show(combined);
        Remove(isMemberFirst ? member : combined);
        EXPECT_EQ(Filed(m_b), CalloutVec{member});
        EXPECT_EQ(OfItem(id), CalloutVec{isMemberFirst ? combined : member});
        EXPECT_TRUE(Items().IsIndicated(id));
        Remove(isMemberFirst ? combined : member);
        EXPECT_TRUE(Filed(m_b).empty());
        EXPECT_TRUE(OfItem(id).empty());
        EXPECT_FALSE(Items().IsIndicated(id));
    }
}

TEST_F(CalloutsAnnotations, LabelsOfLiteralTextAloneAreLeftAsTheyWereSaved) {
    const auto fresh = MakeTemplate({Literal("new")});
    const auto named = [](const char* name, bool isCustom) {
        return MakeTemplate({Literal("new")}, name, isCustom);
    };
    const struct {
        const char* name;
        CalloutPtr callout;
        const char* text;
    } rows[] = {
        {"literal", MakeCallout(m_literal, m_a), "saved"},
        {"item tag", MakeCallout(named("Item Tag", false), m_a), "new"},
        {"custom item tag", MakeCallout(named("Item Tag", true), m_a), "saved"},
        {"other case", MakeCallout(named("Item tag", false), m_a), "saved"},
        {"longer name", MakeCallout(named("Item Tags", false), m_a), "saved"},
        {"with reference", MakeCallout(MakeTemplate({Literal("new"), Reference("System", "")}), m_a), "new"},
        {"combined", Combine({MakeCallout(fresh, m_a), MakeCallout(fresh, m_b)}), "new, new"},
    };
    for (const auto& row : rows) {
        row.callout->SetText(du::Symbol("saved"), false);
        Show(row.callout);
        EXPECT_EQ(Text(row.callout), row.text) << row.name;
    }
}

TEST_F(CalloutsAnnotations, ACombinedCalloutDropsMembersWithoutLoadedPart) {
    const auto gone = MakeCallout(m_numbered, m_a, 1);
    const auto waiting = MakeCallout(m_numbered, m_a, 2);
    for (const auto& member : {gone, waiting}) member->RemoveLeaderAtPos(0);
    ConnectWaiting(waiting, "late");
    const auto kept = MakeCallout(m_numbered, m_b, 3);
    const auto combined = Combine({gone, kept, waiting, nullptr});
    ASSERT_EQ(combined->GetLeaderLineCount(true), 0U);
    const auto empty = Combine({gone});
    for (const auto& each : {combined, empty}) Show(each);
    EXPECT_EQ(combined->GetCalloutVec(), (CalloutVec{kept, nullptr}));
    EXPECT_TRUE(IsShown(combined));
    EXPECT_EQ(Filed(m_b), CalloutVec{combined})
        << "the leaders of the member that is first now were not taken over";
    EXPECT_FALSE(IsShown(empty));
}

TEST_F(CalloutsAnnotations, ARemovedInsetIsWatchedNoMoreUnlessItWasAddedTwice) {
    for (const bool twice : {false, true}) {
        const auto inset = AddInset(150, 150);
        const auto callout = MakeCallout(m_literal, m_a);
        callout->SetInsetAtPos(inset, 0);
        Show(callout);
        if (twice) Show(inset);
        inset->SetRadius(0.01);
        callout->SetAnchor({0.9, 0.9, 1}, 0);
        inset->SetRadius(0.02);
        ASSERT_TRUE(callout->IsHiddenAtPos(0));
        Remove(inset);
        inset->SetRadius(100);
        EXPECT_EQ(callout->IsHiddenAtPos(0), !twice) << "the second observer is in no list and stays";
    }
}

TEST_F(CalloutsAnnotations, AnItemIsIndicatedAsLongAsACalloutCarriesIt) {
    const auto a = AddItem({m_a});
    const auto b = AddItem({m_b});
    const auto indicated = [&] { return std::pair(Items().IsIndicated(a), Items().IsIndicated(b)); };
    const CalloutVec alone{AddCallout(m_numbered, m_a, a), AddCallout(m_numbered, m_a, a)};
    const auto combined = Combine({MakeCallout(m_numbered, m_a, a), MakeCallout(m_numbered, m_b, b)});
    Show(combined);
    for (const auto& callout : alone) Remove(callout);
    EXPECT_EQ(indicated(), std::pair(true, true)) << "a member of the combined callout carries it still";
    const auto last = AddCallout(m_numbered, m_b, b);
    Remove(combined);
    EXPECT_EQ(indicated(), std::pair(false, true)) << "the first member counts too";
    m_engine->SetIndicated(last, false);
    EXPECT_EQ(indicated(), std::pair(false, true)) << "one that is registered keeps its item indicated";
    Remove(last);
    EXPECT_EQ(indicated(), std::pair(false, false));
    for (const bool isIndicated : {true, false}) {
        m_engine->SetIndicated(last, isIndicated);
        EXPECT_EQ(indicated(), std::pair(false, isIndicated));
    }
    m_engine->SetIndicated(nullptr, true);
}

}  // namespace
}  // namespace zrcallouts
