#include "app/document/ItemEdits.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>

#include "app/document/Document.h"
#include "tests/app/document/AssemblyMaker.h"
#include "zrk/operation/Transaction.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet {
namespace {

/// Three bolts, which are one item, and a plate.
Assembly BoltedPlate() {
    AssemblyMaker maker;
    const int bolt = maker.Box("bolt", 1, 1, 1);
    const int plate = maker.Box("plate", 9, 9, 1);
    for (int i = 0; i < 3; ++i) {
        maker.Node("Bolt" + std::to_string(i), -1, bolt, {3.0 * i, 0, 5});
    }
    maker.Node("Plate", -1, plate);
    return maker.Get();
}

class ItemEditsTest : public testing::Test {
protected:
    ItemEditsTest() : m_document(BoltedPlate(), Settings()) {
        m_document.CreateCallouts({}, {});
        m_document.Settle();
    }

    static Document::Settings Settings() {
        Document::Settings settings;
        settings.leaders = LeaderChoice::All;
        settings.labelTemplate = "{item}x{quantity}";
        return settings;
    }
    /// "text: part part; " for each callout.
    std::string Callouts() const {
        std::multiset<std::string> lines;
        for (const auto& callout : m_document.Callouts()) {
            std::set<std::string> parts;
            for (unsigned i = 0; i < callout->GetLeaderLineCount(false); ++i) {
                du::SmartPtr<zrk::Instance> instance;
                callout->GetShapeInstanceAtPos(i)->GetInstance(instance);
                parts.insert(instance->GetName());
            }
            std::string line = callout->GetText(false).Text() + ":";
            for (const auto& part : parts) line += " " + part;
            lines.insert(line);
        }
        std::string text;
        for (const auto& line : lines) text += line + "; ";
        return text;
    }
    unsigned ItemOf(const std::string& pattern) const {
        unsigned id = 0;
        m_document.Items()->GetItemIdForInstance(m_document.FindInstances({pattern}).front(), id);
        return id;
    }

    const zrkapp::illustration::HostSession m_session{2};
    Document m_document;
};

TEST_F(ItemEditsTest, LetCalloutsFollowAndComeBack) {
    ItemEdits edits(m_document.ItemList(), *m_document.Engine());
    const unsigned bolts = ItemOf("Bolt0");
    const unsigned plate = ItemOf("Plate");
    const auto oneBolt = m_document.FindInstances({"Bolt1"});
    const std::string all = "1x3: Bolt0 Bolt1 Bolt2; 2x1: Plate; ";
    const struct {
        const char* name;
        std::function<void()> edit;
        const char* callouts;
    } rows[] = {{"delete", [&] { edits.Delete(bolts); }, "2x1: Plate; "},
                {"clear", [&] { edits.Clear(); }, ""},
                {"leave", [&] { edits.Leave(bolts, oneBolt); }, "1x2: Bolt0 Bolt2; 2x1: Plate; "},
                {"join", [&] { edits.Join(plate, oneBolt); }, "1x2: Bolt0 Bolt2; 2x2: Bolt1 Plate; "},
                {"the last instance leaves", [&] { edits.Leave(plate, m_document.FindInstances({"Plate"})); },
                 "1x3: Bolt0 Bolt1 Bolt2; "}};
    ASSERT_EQ(Callouts(), all);
    for (const auto& row : rows) {
        zrk::Transaction action(m_document.Scene(), row.name);
        row.edit();
        action.Commit();
        EXPECT_EQ(Callouts(), row.callouts) << row.name;
        m_document.Undo();
        EXPECT_EQ(Callouts(), all) << row.name;
        m_document.Redo();
        EXPECT_EQ(Callouts(), row.callouts) << row.name;
        m_document.Undo();
        for (const unsigned id : {bolts, plate}) EXPECT_TRUE(m_document.Items()->IsIndicated(id)) << row.name;
    }
}

}  // namespace
}  // namespace zrsheet
