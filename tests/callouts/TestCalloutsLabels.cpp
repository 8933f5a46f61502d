#include <string>
#include <vector>

#include "callouts/Callouts.h"
#include "tests/callouts/EngineFixture.h"
#include "tests/support/TraceLog.h"
#include "zrk/illustration/IsRunningIllustrate.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/KorvanApp.h"

namespace zrcallouts {
namespace {

class CalloutsLabels : public ThreeParts {
protected:
    const TemplatePtr m_empty = MakeTemplate({Reference("Part", "")});
    const zrtest::TraceLog m_traces;
};

TEST_F(CalloutsLabels, AnEmptyLabelIsTracedAndChangesNothing) {
    const auto single = MakeCallout(m_empty, m_a);
    for (const auto& callout : {single, CalloutPtr(Combine({single, nullptr}))}) {
        callout->SetText(du::Symbol("former"), false);
        m_engine->SetCalloutText(callout);
        EXPECT_EQ(Text(callout), "former");
    }
    m_engine->SetCalloutText(nullptr);
    m_engine->SetCalloutText(new zrannotations::Callout);
    const std::string trace = "2 zrcallouts Callout Callouts::SetCalloutText() - Empty Text for callout!";
    EXPECT_EQ(m_traces.m_lines, std::vector(3, trace));
}

TEST_F(CalloutsLabels, ACombinedCalloutLinesUpItsMembersLabels) {
    const auto three = MakeCallout(m_numbered, m_a, AddItem({}, "3"));
    const auto none = MakeCallout(m_empty, m_b);
    none->SetText(du::Symbol("kept"), false);
    const auto seven = MakeCallout(m_numbered, m_c, AddItem({}, "7"));
    const auto combined = Combine({three, none, nullptr, seven});
    m_engine->SetCalloutText(combined);
    EXPECT_EQ(Text(combined), "3, 7");
    EXPECT_EQ(Text(three) + Text(none) + Text(seven), "3kept7");
    EXPECT_TRUE(m_traces.m_lines.empty());
    seven->SetLegacyText(du::Symbol("old"));
    combined->SetText(du::Symbol("combined"), false);
    m_engine->SetCalloutText(combined);
    EXPECT_EQ(Text(combined), "3, combined") << "a legacy member stands for what the combined callout shows";
    EXPECT_EQ(Text(seven), "old");
}

TEST_F(CalloutsLabels, OnlyLabelsWhoseDataCanChangeAreRebuilt) {
    const struct {
        const char* name;
        std::vector<ContentPtr> contents;
        bool always;
        bool withItems;
    } rows[] = {
        {"item number", {ItemLabel()}, false, true},
        {"item number, value", {Reference("System", "zrITM", "Value")}, true, true},
        {"property", {Literal("a"), Reference("Part", "Mass")}, true, true},
        {"property that is missing", {Reference("Part", "")}, false, false},
        {"literal", {Literal("a")}, false, false},
        {"literal that reads System", {Literal("System")}, false, true},
        {"nothing", {}, false, false},
    };
    for (const auto& row : rows) {
        const auto single = MakeCallout(MakeTemplate(row.contents), m_a);
        const auto combined = Combine({nullptr, MakeCallout(MakeTemplate({Literal("a")}), m_b), single});
        for (const auto& callout : {single, CalloutPtr(combined)}) {
            EXPECT_EQ(m_engine->RegenerateCalloutLabel(callout, false), row.always) << row.name;
            EXPECT_EQ(m_engine->RegenerateCalloutLabel(callout, true), row.withItems) << row.name;
        }
    }
    EXPECT_FALSE(m_engine->RegenerateCalloutLabel(nullptr, true));
    // What was rebuilt into nothing counts as rebuilt.
    const auto empty = MakeCallout(MakeTemplate({Reference("System", "", "Value")}), m_a);
    EXPECT_TRUE(m_engine->RegenerateCalloutLabel(empty, false));
    EXPECT_EQ(Text(empty), "");
}

TEST_F(CalloutsLabels, LabelsComeWithTheCalloutButForBatchPublishing) {
    for (const bool illustrate : {false, true}) {
        for (const bool batch : {false, true}) {
            zrk::illustration::SetRunningIllustrate(illustrate);
            zrkapp::illustration::KorvanApp::GetKorvanApp()->SetBatchPublishing(batch);
            EXPECT_EQ(m_engine->RegenerateCalloutLabelOnAdd(), !(illustrate && batch));
        }
    }
    EXPECT_EQ(Text(AddCallout(m_numbered, m_a, AddItem({m_a}))), "1") << "adding does not ask";
}

TEST_F(CalloutsLabels, TheLanguageChangesEnabledTextsAndThePredefinedOne) {
    const auto predefined = MakeCallout(m_numbered, m_a);
    m_engine->SetPredefinedText(predefined);
    EXPECT_EQ(Text(predefined), "Callout");
    m_engine->SetPredefinedText(nullptr);
    const CalloutVec callouts{AddCallout(m_literal, m_a), AddCallout(m_literal, m_a)};
    for (const auto& callout : callouts) {
        callout->SetText(du::Symbol("generated"), false);
        Translate(callout, callout == callouts[0]);
    }
    zrk::World::GetWorld()->SetLanguage("de");
    EXPECT_EQ(callouts[0]->GetText(true).Text(), "Schraube");
    EXPECT_EQ(Text(callouts[0]), "generated");
    EXPECT_EQ(callouts[1]->GetText(true).Text(), "generated");
    m_engine->SetPredefinedText(predefined);
    EXPECT_NE(Text(predefined), "Callout");
    EXPECT_NE(Text(predefined), "");
}

TEST_F(CalloutsLabels, AChangedTemplateReachesTheCalloutsThatAreInAScene) {
    const auto id = AddItem({m_a}, "12");
    const auto callout = AddCallout(m_numbered, m_a, id);
    const auto sceneless = MakeCallout(m_numbered, m_b, id);
    m_engine->AddToSet(sceneless);
    sceneless->SetText(du::Symbol("stale"), false);
    m_view->SetDirty(false);
    m_numbered->SetTextContent({Literal("No. "), ItemLabel()});
    EXPECT_EQ(Text(callout), "No. 12");
    EXPECT_TRUE(m_view->IsDirty());
    m_numbered->SetTextContent({Literal("fixed")});
    EXPECT_EQ(Text(callout), "fixed");
    EXPECT_FALSE(callout->HasItemId()) << "the template asks for no number any more";
    EXPECT_TRUE(sceneless->HasItemId());
    EXPECT_EQ(Text(sceneless), "stale");
}

}  // namespace
}  // namespace zrcallouts
