#include <optional>
#include <string>
#include <utility>

#include "callouts/Callouts.h"
#include "du/LocalizableString.h"
#include "tests/callouts/EngineFixture.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrk/illustration/IsRunningIllustrate.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/IllMultiRootContainer.h"
#include "zrkapp/illustration/KorvanFileInfo.h"

namespace zrcallouts {
namespace {

class CalloutsAnnotations : public EngineFixture {
protected:
    CalloutsAnnotations() : m_a(AddPart("A", {-5, 0, 0})), m_b(AddPart("B", {0, 0, 0})) {}

    bool Remove(const du::SmartPtr<zrk::Annotation>& annotation) {
        return m_annoSet->RemoveAnnotationFromSet(annotation, nullptr);
    }

    const Part m_a;
    const Part m_b;
    const TemplatePtr m_numbered = MakeTemplate({ItemLabel()});
    const TemplatePtr m_literal = MakeTemplate({Literal("fixed")});
};

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
    EXPECT_FALSE(m_scene->GetHistory().Undo()) << "refusing left something to undo";
}

TEST_F(CalloutsAnnotations, OnlyTextsThatAreLocalisedAreShownInTheLanguage) {
    zrk::World::GetWorld()->SetLanguage("de");
    for (const bool isLocalised : {true, false}) {
        const auto callout = MakeFreeCallout(m_literal);
        callout->GetLocalizableString() = du::Symbol("Screw");
        callout->GetLocalizableString().SetTranslation("de", du::Symbol("Schraube"));
        callout->GetLocalizableString().SetEnabled(isLocalised);
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

    const CombinedPtr combined(
        new zrannotations::CombinedCallout({MakeCallout(m_literal, m_a), MakeCallout(m_literal, m_b)}));
    Show(combined);
    EXPECT_EQ(combined->GetDependents().size(), 1U);
    CalloutVec members = combined->GetCalloutVec();
    members.push_back(MakeCallout(m_literal, m_b));
    combined->SetCalloutVec(members);
    Show(combined);
    EXPECT_EQ(combined->GetDependents().size(), 2U);
}

TEST_F(CalloutsAnnotations, LabelsOfLiteralTextAloneAreLeftAsTheyWereSaved) {
    const auto combined = [this](const TemplatePtr& definition) {
        return CalloutPtr(
            new zrannotations::CombinedCallout({MakeCallout(definition, m_a), MakeCallout(definition, m_b)}));
    };
    const struct {
        const char* name;
        CalloutPtr callout;
        const char* text;
    } rows[] = {
        {"literal", MakeCallout(m_literal, m_a), "saved"},
        {"item tag", MakeCallout(MakeTemplate({Literal("new")}, "Item Tag", false), m_a), "new"},
        {"custom item tag", MakeCallout(MakeTemplate({Literal("new")}, "Item Tag", true), m_a), "saved"},
        {"other case", MakeCallout(MakeTemplate({Literal("new")}, "Item tag", false), m_a), "saved"},
        {"longer name", MakeCallout(MakeTemplate({Literal("new")}, "Item Tags", false), m_a), "saved"},
        {"with reference", MakeCallout(MakeTemplate({Literal("new"), Reference("System", "")}), m_a), "new"},
        {"combined", combined(MakeTemplate({Literal("new")})), "new, new"},
    };
    for (const auto& row : rows) {
        row.callout->SetText(du::Symbol("saved"), false);
        Show(row.callout);
        EXPECT_EQ(Text(row.callout), row.text) << row.name;
    }
}

TEST_F(CalloutsAnnotations, ACombinedCalloutDropsMembersWithoutLoadedPart) {
    const auto gone = MakeCallout(m_numbered, m_a, 1);
    gone->RemoveLeaderAtPos(0);
    const auto waiting = MakeCallout(m_numbered, m_a, 2);
    waiting->RemoveLeaderAtPos(0);
    ConnectWaiting(waiting, "late");
    const auto kept = MakeCallout(m_numbered, m_b, 3);
    const CombinedPtr combined(new zrannotations::CombinedCallout({gone, kept, waiting, nullptr}));
    ASSERT_EQ(combined->GetLeaderLineCount(true), 0U);
    Show(combined);
    EXPECT_EQ(combined->GetCalloutVec(), (CalloutVec{kept, nullptr}));
    EXPECT_TRUE(IsShown(combined));
    EXPECT_EQ(Filed(m_b), CalloutVec{combined})
        << "the leaders of the member that is first now were not taken over";

    const CombinedPtr empty(new zrannotations::CombinedCallout({gone}));
    Show(empty);
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
    const auto first = AddCallout(m_numbered, m_a, a);
    const auto second = AddCallout(m_numbered, m_a, a);
    const CombinedPtr combined(new zrannotations::CombinedCallout(
        {MakeCallout(m_numbered, m_a, a), MakeCallout(m_numbered, m_b, b)}));
    Show(combined);
    Remove(first);
    Remove(second);
    EXPECT_TRUE(Items().IsIndicated(a)) << "a member of the combined callout carries it still";
    const auto third = AddCallout(m_numbered, m_b, b);
    Remove(combined);
    EXPECT_FALSE(Items().IsIndicated(a)) << "the first member counts too";
    EXPECT_TRUE(Items().IsIndicated(b));
    m_engine->SetIndicated(third, false);
    EXPECT_TRUE(Items().IsIndicated(b)) << "a callout that is registered keeps its item indicated";
    Remove(third);
    EXPECT_FALSE(Items().IsIndicated(b));
    m_engine->SetIndicated(third, true);
    EXPECT_TRUE(Items().IsIndicated(b));
    m_engine->SetIndicated(third, false);
    EXPECT_FALSE(Items().IsIndicated(b));
    m_engine->SetIndicated(nullptr, true);
}

}  // namespace
}  // namespace zrcallouts
