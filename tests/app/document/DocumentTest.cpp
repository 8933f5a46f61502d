#include "app/document/Document.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "app/document/UserError.h"
#include "tests/app/document/AssemblyMaker.h"
#include "tests/app/document/ModelFiles.h"
#include "zrk/scene/PickFlags.h"
#include "zrk/scene/PickScene.h"
#include "zrk/scene/VisibilityMap.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet {
namespace {

using CalloutPtr = Document::CalloutPtr;
using zrannotations::Callout;
using PartPtr = du::SmartPtr<zrk::ShapeInstance>;

constexpr int kWidth = 640;
constexpr int kHeight = 480;

/// As outputs write it down.
double Rounded(double pixel) { return std::round(pixel * 100.0) / 100.0; }

struct Way {
    const char* view;
    LeaderChoice leaders;
    bool isHierarchical;
};

Document::Settings SettingsOf(const Way& way) {
    Document::Settings settings;
    settings.leaders = way.leaders;
    settings.numbering.hierarchical = way.isHierarchical;
    return settings;
}

/// A model with its callouts, and questions to the view about where they lead.
class Illustration {
public:
    Illustration(const Assembly& assembly, const Way& way)
        : m_session(2), m_document(assembly, SettingsOf(way)) {
        m_document.Model().LookAt(ParseViewDirection(way.view), kWidth, kHeight, 60.0);
        m_document.CreateCallouts({}, {});
        m_document.Settle();
        m_callouts = m_document.Callouts();
    }

    const std::vector<CalloutPtr>& Callouts() const { return m_callouts; }
    const zrk::illustration::ItemsList& Items() const { return *m_document.Items(); }

    bool IsSeen(const zrk::ShapeInstance& part) const {
        return m_document.View()->GetVisibilityMap()->Find(part) != nullptr;
    }
    /// The parts that the item's instances are, themselves or with all below them.
    std::vector<PartPtr> PartsOf(unsigned item) const;
    /// Is it the leader's part, or a part of the assembly that the leader stands for?
    bool BelongsToEnd(const zrk::Object* met, const Callout& callout, unsigned leader) const;
    /// What the view meets at the leader's end; with `only`, as if that part were alone.
    const zrk::Object* MetAt(const Callout& callout, unsigned leader, const PartPtr& only) const;

private:
    void Collect(const zrk::illustration::SbomInstance& instance, std::vector<PartPtr>& parts) const;

    zrkapp::illustration::HostSession m_session;
    Document m_document;
    std::vector<CalloutPtr> m_callouts;
};

void Illustration::Collect(const zrk::illustration::SbomInstance& instance,
                           std::vector<PartPtr>& parts) const {
    PartPtr part;
    m_document.Scene()->GetShapeInstance(instance.GetEbomInstance(), part);
    if (part) parts.push_back(part);
    for (const auto& child : instance.GetChildren()) Collect(*child, parts);
}

std::vector<PartPtr> Illustration::PartsOf(unsigned item) const {
    std::vector<PartPtr> parts;
    for (const auto& instance : Items().GetOrderedInstances(item)) Collect(*instance, parts);
    return parts;
}

bool Illustration::BelongsToEnd(const zrk::Object* met, const Callout& callout, unsigned leader) const {
    std::vector<PartPtr> parts{callout.GetShapeInstanceAtPos(leader)};
    const auto assembly =
        du::DynamicCast<zrk::illustration::SbomInstance>(callout.GetAssemblyInstanceAtPos(leader));
    if (assembly) Collect(*assembly, parts);
    return std::any_of(parts.begin(), parts.end(), [met](const PartPtr& part) { return part.get() == met; });
}

const zrk::Object* Illustration::MetAt(const Callout& callout, unsigned leader, const PartPtr& only) const {
    dg::DPoint3D anchor;
    dg::Location location;
    dg::Camera3D camera;
    callout.GetAnchorAtPos(leader, anchor);
    callout.GetInstanceLocationAtPos(location, leader);
    m_document.View()->GetCamera(camera);
    const dg::DPoint3D pixel = anchor * location * camera.GetWorldToPixel();
    const dg::Ray ray = camera.PixelRay(Rounded(pixel.x), Rounded(pixel.y));
    const auto scene = m_document.Scene()->GetPickScene();
    const auto met = only ? scene->PickOnly(*only, ray, zrk::PICK_ALL) : scene->Pick(ray, zrk::PICK_ALL);
    return met.empty() ? nullptr : met.front().GetObject().get();
}

/// Every item that takes part has a callout, and no item that does not.
void ExpectAllItemsCalledOut(const Illustration& illustration) {
    std::set<unsigned> calledOut;
    for (const auto& callout : illustration.Callouts()) {
        unsigned id = 0;
        ASSERT_TRUE(callout->GetItemId(id));
        calledOut.insert(id);
    }
    std::set<unsigned> itemized;
    for (const unsigned id : illustration.Items().GetItemIds()) {
        if (illustration.Items().GetItemized(id)) itemized.insert(id);
    }
    EXPECT_FALSE(itemized.empty());
    EXPECT_EQ(calledOut, itemized);
}

/// Leads to the item's part, ends on it, and says truly whether the end can be seen.
void ExpectLeaderOnPart(const Illustration& illustration, const Callout& callout, unsigned leader) {
    unsigned item = 0;
    callout.GetItemId(item);
    const PartPtr part = callout.GetShapeInstanceAtPos(leader);
    ASSERT_TRUE(part);
    const auto parts = illustration.PartsOf(item);
    EXPECT_NE(std::find(parts.begin(), parts.end(), part), parts.end()) << "a part of another item";
    EXPECT_EQ(illustration.MetAt(callout, leader, part), part.get()) << "the end lies off the part";
    if (!callout.IsHiddenAsDashedAtPos(leader)) {
        const zrk::Object* met = illustration.MetAt(callout, leader, nullptr);
        EXPECT_TRUE(illustration.BelongsToEnd(met, callout, leader)) << "the end is covered";
    }
}

/// A leader is dashed only where nothing of what it stands for can be seen. One that stands for an assembly
/// leads to one of its parts, before which others of them may lie; the first goes to the part seen best.
void ExpectSeenWherePossible(const Illustration& illustration, const Callout& callout, LeaderChoice choice) {
    const auto isSeen = [&](unsigned leader) {
        return illustration.IsSeen(*callout.GetShapeInstanceAtPos(leader));
    };
    unsigned item = 0;
    callout.GetItemId(item);
    const auto parts = illustration.PartsOf(item);
    bool isAnySeen =
        callout.GetLeaderLineCount(false) == 1 &&
        std::any_of(parts.begin(), parts.end(), [&](const auto& part) { return illustration.IsSeen(*part); });
    for (unsigned i = 0; i < callout.GetLeaderLineCount(false); ++i) isAnySeen = isAnySeen || isSeen(i);
    for (const unsigned leader : callout.GetDrawnLeaders()) {
        const bool isDashed = callout.IsHiddenAsDashedAtPos(leader);
        const bool canBeSeen = choice == LeaderChoice::One ? isAnySeen : isSeen(leader);
        if (canBeSeen || !callout.GetAssemblyInstanceAtPos(leader)) {
            EXPECT_EQ(isDashed, !canBeSeen) << callout.GetShapeInstanceIdAtPos(leader);
        }
    }
}

void ExpectSound(const Assembly& assembly, const Way& way) {
    SCOPED_TRACE(std::string(way.view) + (way.isHierarchical ? ", hierarchical" : ", flat"));
    const Illustration illustration(assembly, way);
    ExpectAllItemsCalledOut(illustration);
    std::size_t leaders = 0;
    std::size_t drawnLeaders = 0;
    for (const auto& callout : illustration.Callouts()) {
        SCOPED_TRACE("callout " + callout->GetMarkupText().Text());
        EXPECT_FALSE(callout->GetDrawnLeaders().empty());
        for (const unsigned leader : callout->GetDrawnLeaders()) {
            SCOPED_TRACE("leader to " + callout->GetShapeInstanceIdAtPos(leader));
            ExpectLeaderOnPart(illustration, *callout, leader);
        }
        ExpectSeenWherePossible(illustration, *callout, way.leaders);
        leaders += callout->GetLeaderLineCount(false);
        drawnLeaders += callout->GetDrawnLeaders().size();
    }
    const auto& items = illustration.Items();
    std::size_t instances = 0;
    for (const unsigned id : items.GetItemIds()) instances += items.GetOrderedInstances(id).size();
    EXPECT_EQ(leaders, instances);
    EXPECT_EQ(drawnLeaders, way.leaders == LeaderChoice::One ? items.GetItemIds().size() : instances);
}

const std::vector<Way> kWays{
    {"iso", LeaderChoice::One, false},          {"bottom", LeaderChoice::One, true},
    {"front", LeaderChoice::All, false},        {"0.3,-2,1", LeaderChoice::All, true},
    {"left", LeaderChoice::PerInstance, false}, {"iso", LeaderChoice::PerInstance, true},
};

TEST(Document, LeadsToEveryPartOfTheSample) {
    for (const Way& way : kWays) ExpectSound(SampleAssembly(), way);
}

// Each model goes one way, so that all ways are gone by one of them.
TEST(Document, LeadsToEveryPartOfModelsByOthers) {
    const auto files = ModelsByOthers();
    if (files.empty()) GTEST_SKIP() << "no folder of models; set ZR_MODELS";
    for (std::size_t i = 0; i < files.size(); ++i) {
        SCOPED_TRACE(files[i].filename());
        ExpectSound(ImportedModel(files[i]), kWays[i % kWays.size()]);
    }
}

/// A box around a core that nobody sees from anywhere, and two pins of which the first is inside too.
Assembly BoxWithCore() {
    AssemblyMaker maker;
    const int shell = maker.Box("Shell", 10, 10, 10);
    const int core = maker.Box("Core", 4, 4, 4);
    const int pin = maker.Box("Pin", 1, 1, 1);
    maker.Node("Shell", -1, shell);
    maker.Node("Core", -1, core, {3, 3, 3});
    maker.Node("Pin_1", -1, pin, {1, 1, 1});
    maker.Node("Pin_2", -1, pin, {4, 10, 4});
    return maker.Get();
}

TEST(Document, DashesOnlyWhatNobodyCanSee) {
    const Illustration one(BoxWithCore(), {"iso", LeaderChoice::One, false});
    std::map<std::string, bool> dashed;
    for (const auto& callout : one.Callouts()) {
        const unsigned drawn = callout->GetDrawnLeaders().at(0);
        dashed[callout->GetShapeInstanceIdAtPos(drawn)] = callout->IsHiddenAsDashedAtPos(drawn);
    }
    EXPECT_EQ(dashed, (std::map<std::string, bool>{{"/Shell", false}, {"/Core", true}, {"/Pin_2", false}}));
}

}  // namespace
}  // namespace zrsheet
