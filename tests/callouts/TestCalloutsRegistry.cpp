#include <algorithm>
#include <set>
#include <utility>

#include "callouts/Callouts.h"
#include "tests/callouts/EngineFixture.h"
#include "zrk/object/MemoryPool.h"

namespace zrcallouts {
namespace {

class CalloutsRegistry : public ThreeParts {};

TEST_F(CalloutsRegistry, InsetsAreRecordedOnceTheyAreKnownAndStayKnown) {
    const InsetPtr inset(new zrannotations::Inset(m_view, {{200, 150, 0}, {300, 80, 0}, 60, 5.0F}));
    const auto callout = MakeCallout(m_literal, m_a);
    Connect(callout, m_b);
    callout->SetInsetAtPos(inset, 1);
    Show(callout);
    EXPECT_TRUE(m_engine->SnapshotInset(inset).empty());
    EXPECT_FALSE(inset->IsAttached(*callout));
    Show(inset);
    EXPECT_TRUE(m_engine->SnapshotInset(inset).empty());
    m_engine->AddToMap(callout);
    EXPECT_EQ(m_engine->SnapshotInset(inset), CalloutVec{callout});
    EXPECT_TRUE(inset->IsAttached(*callout));

    Remove(callout);
    EXPECT_TRUE(m_engine->SnapshotInset(inset).empty());
    Remove(inset);
    const auto later = MakeCallout(m_literal, m_b);
    later->SetInsetAtPos(inset, 0);
    Show(later);
    EXPECT_EQ(m_engine->SnapshotInset(inset), CalloutVec{later}) << "the inset lost its entry";
}

// Callouts keep the engine's item index, and the index keeps them.
TEST_F(CalloutsRegistry, AnEngineThatIsLetGoLetsItsCalloutsGo) {
    const std::size_t inUse = zrk::MemoryPool::GetBytesInUse();
    {
        const du::SmartPtr<Callouts> engine(new Callouts);
        const auto callout = MakeCallout(m_numbered, m_a, 1);
        engine->AddToSet(callout);
        EXPECT_GT(zrk::MemoryPool::GetBytesInUse(), inUse);
    }
    EXPECT_EQ(zrk::MemoryPool::GetBytesInUse(), inUse);
}

TEST_F(CalloutsRegistry, ExistsComparesTheWholeGeneratedText) {
    const auto callout = AddCallout(m_literal, m_a);
    const auto other = AddCallout(m_literal, m_a);
    callout->SetText(du::Symbol("12A"), false);
    callout->SetText(du::Symbol("localised"), true);
    other->SetText(du::Symbol("14"), false);
    const std::pair<const char*, bool> rows[] = {{"12A", true},  {"14", true},  {"12", false},
                                                 {"12a", false}, {"2A", false}, {"localised", false},
                                                 {"", false}};
    for (const auto& [text, exists] : rows) EXPECT_EQ(m_engine->Exists("A", text), exists) << text;
    EXPECT_FALSE(m_engine->Exists("B", "12A"));
    EXPECT_FALSE(m_engine->Exists("nowhere", ""));
}

TEST_F(CalloutsRegistry, QueriesByItemAppendInTheOrderAskedFor) {
    CalloutVec fives{AddCallout(m_numbered, m_a, 5), AddCallout(m_numbered, m_b, 5)};
    const auto combined = Combine(
        {MakeCallout(m_numbered, m_a, 6), MakeCallout(m_numbered, m_b, 5), MakeCallout(m_numbered, m_c, 5)});
    Show(combined);
    AddCallout(m_literal, m_c);
    fives.push_back(combined);
    std::sort(fives.begin(), fives.end());
    CalloutVec expected;
    for (const auto& callouts : {CalloutVec{nullptr}, fives, CalloutVec{combined}, fives})
        expected.insert(expected.end(), callouts.begin(), callouts.end());
    CalloutVec out{nullptr};
    m_engine->GetItemIdCallouts(std::vector<unsigned>{5, 7, 6, 5}, out);
    EXPECT_EQ(out, expected);
    std::set<unsigned> ids{1};
    m_engine->GetItemdIds(ids);
    EXPECT_EQ(ids, (std::set<unsigned>{1, 5, 6}));
}

TEST_F(CalloutsRegistry, ANewTemplateDecidesAboutTheItemId) {
    const auto assembly = AddAssembly("assembly");
    const auto unitemized = AddAssembly("unitemized");
    const auto unlisted = AddAssembly("unlisted");
    const auto listedId = AddItem({assembly});
    const auto unitemizedId = AddItem({unitemized});
    Items().SetItemized(unitemizedId, false);
    const auto freeOnAssembly = MakeFreeCallout(m_numbered);
    Connect(freeOnAssembly, m_a, &assembly);
    // An instance that is no service instance has no place in the item list.
    const CalloutPtr engineering(new zrannotations::Callout);
    ASSERT_TRUE(engineering->Initialize(m_numbered, m_a.shape, false, assembly.instance));
    const auto on = [this](const TemplatePtr& definition, std::optional<unsigned> id, const Part* above) {
        return MakeCallout(definition, m_a, id, above);
    };
    const struct {
        const char* name;
        CalloutPtr callout;
        bool changed;
        std::optional<unsigned> id;
    } rows[] = {
        {"part, literal", on(m_literal, 9, nullptr), true, std::nullopt},
        {"part, literal, had none", on(m_literal, std::nullopt, nullptr), true, std::nullopt},
        {"free, literal", MakeFreeCallout(m_literal, 9), false, 9U},
        {"free, on an assembly", freeOnAssembly, false, std::nullopt},
        {"assembly, literal", on(m_literal, 9, &assembly), false, 9U},
        {"part, numbered", on(m_numbered, 9, nullptr), false, 9U},
        {"free, numbered", MakeFreeCallout(m_numbered), false, std::nullopt},
        {"assembly, itemized", on(m_numbered, 9, &assembly), true, listedId},
        {"assembly, not itemized", on(m_numbered, 9, &unitemized), false, 9U},
        {"assembly, not listed", on(m_numbered, std::nullopt, &unlisted), true, unitemizedId + 1},
        {"engineering assembly", engineering, false, std::nullopt},
    };
    for (const auto& row : rows) {
        CalloutPtr callout = row.callout;
        EXPECT_EQ(m_engine->CheckForTypeUpdate(callout), row.changed) << row.name;
        EXPECT_EQ(ItemOf(callout), row.id) << row.name;
    }
    const auto added = Items().Capture(unitemizedId + 1);
    ASSERT_TRUE(added);
    EXPECT_FALSE(added->isManual);
    EXPECT_EQ(added->customLabel, "");
    EXPECT_EQ(added->instances, std::vector<SbomPtr>{unlisted.sbom});
}

}  // namespace
}  // namespace zrcallouts
