#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "callouts/Callouts.h"
#include "dp/ZRTracer.h"
#include "du/LocalizableString.h"
#include "tests/callouts/EngineFixture.h"
#include "zrk/illustration/IsRunningIllustrate.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/KorvanApp.h"

namespace zrcallouts {
namespace {

class CalloutsLabels : public EngineFixture {
protected:
    CalloutsLabels()
        : m_a(AddPart("A", {-5, 0, 0})), m_b(AddPart("B", {0, 0, 0})), m_c(AddPart("C", {5, 0, 0})) {
        dp::ZRTracer::SetSink([this](int level, const std::string& component, const std::string& category,
                                     const std::string& line) {
            if (line.find("Empty Text") == std::string::npos) return;
            m_traces.push_back(std::to_string(level) + ' ' + component + ' ' + category + ' ' + line);
        });
    }
    ~CalloutsLabels() override { dp::ZRTracer::SetSink({}); }

    const Part m_a;
    const Part m_b;
    const Part m_c;
    const TemplatePtr m_numbered = MakeTemplate({ItemLabel()});
    const TemplatePtr m_empty = MakeTemplate({Reference("Part", "")});
    std::vector<std::string> m_traces;
};

TEST_F(CalloutsLabels, AnEmptyLabelIsTracedAndChangesNothing) {
    const auto callout = MakeCallout(m_empty, m_a);
    callout->SetText(du::Symbol("former"), false);
    m_engine->SetCalloutText(callout);
    EXPECT_EQ(Text(callout), "former");
    const std::vector<std::string> traced{
        "2 zrcallouts Callout Callouts::SetCalloutText() - Empty Text for callout!"};
    EXPECT_EQ(m_traces, traced);
    const CombinedPtr combined(new zrannotations::CombinedCallout({callout, nullptr}));
    combined->SetText(du::Symbol("former"), false);
    m_engine->SetCalloutText(combined);
    EXPECT_EQ(Text(combined), "former");
    EXPECT_EQ(m_traces.size(), 2U);
    m_engine->SetCalloutText(nullptr);
    m_engine->SetCalloutText(new zrannotations::Callout);
    EXPECT_EQ(m_traces.size(), 3U);
}

TEST_F(CalloutsLabels, ACombinedCalloutLinesUpItsMembersLabels) {
    const auto three = MakeCallout(m_numbered, m_a, AddItem({}, "3"));
    const auto none = MakeCallout(m_empty, m_b);
    none->SetText(du::Symbol("kept"), false);
    const auto seven = MakeCallout(m_numbered, m_c, AddItem({}, "7"));
    const CombinedPtr combined(new zrannotations::CombinedCallout({three, none, nullptr, seven}));
    m_engine->SetCalloutText(combined);
    EXPECT_EQ(Text(combined), "3, 7");
    EXPECT_EQ(Text(three), "3");
    EXPECT_EQ(Text(none), "kept");
    EXPECT_EQ(Text(seven), "7");
    EXPECT_TRUE(m_traces.empty());

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
        const CombinedPtr combined(new zrannotations::CombinedCallout(
            {nullptr, MakeCallout(MakeTemplate({Literal("a")}), m_b), single}));
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
    const auto app = zrkapp::illustration::KorvanApp::GetKorvanApp();
    for (const bool illustrate : {true, false}) {
        for (const bool batch : {true, false}) {
            zrk::illustration::SetRunningIllustrate(illustrate);
            app->SetBatchPublishing(batch);
            EXPECT_EQ(m_engine->RegenerateCalloutLabelOnAdd(), !(illustrate && batch));
        }
    }
    zrk::illustration::SetRunningIllustrate(true);
    app->SetBatchPublishing(true);
    EXPECT_EQ(Text(AddCallout(m_numbered, m_a, AddItem({m_a}))), "1") << "adding does not ask";
}

TEST_F(CalloutsLabels, TheLanguageChangesEnabledTextsAndThePredefinedOne) {
    const auto translated = [this](bool enabled) {
        const auto callout = AddCallout(MakeTemplate({Literal("a")}), m_a);
        callout->SetText(du::Symbol("generated"), false);
        callout->GetLocalizableString() = du::Symbol("Screw");
        callout->GetLocalizableString().SetTranslation("de", du::Symbol("Schraube"));
        callout->GetLocalizableString().SetEnabled(enabled);
        return callout;
    };
    const auto enabled = translated(true);
    const auto disabled = translated(false);
    const auto predefined = MakeCallout(m_numbered, m_a);
    m_engine->SetPredefinedText(predefined);
    EXPECT_EQ(Text(predefined), "Callout");
    m_engine->SetPredefinedText(nullptr);
    zrk::World::GetWorld()->SetLanguage("de");
    EXPECT_EQ(enabled->GetText(true).Text(), "Schraube");
    EXPECT_EQ(Text(enabled), "generated");
    EXPECT_EQ(disabled->GetText(true).Text(), "generated");
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
