#include "zritemlist/ItemList.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <tuple>
#include <vector>

#include "zrk/illustration/Illustration3dScene.h"

namespace zritemlist {
namespace {

using zrk::illustration::ItemsList;
using zrk::illustration::SbomInstance;
using SbomPtr = du::SmartPtr<SbomInstance>;
using OperationPtr = du::SmartPtr<zrk::Operation>;
using NodePtr = du::SmartPtr<zrk::ComponentNode>;

class ItemListTest : public ::testing::Test {
protected:
    ItemListTest() : m_list(ItemList::GetItemListForScene(m_scene)), m_items(m_list->GetZrkItemList()) {}
    ~ItemListTest() override { m_scene->Close(); }

    static NodePtr Node(const std::string& name) { return new zrk::ComponentNode(name, nullptr); }
    /// An instance of the component below `parent`; of no component when that is null.
    SbomPtr Add(const SbomPtr& parent, const std::string& id, const NodePtr& node) {
        const SbomPtr instance(new SbomInstance(du::Symbol(id), id));
        if (node) instance->SetEbomInstance(new zrk::Instance(du::Symbol("e-" + id), id, node, {}));
        parent->AddChild(instance);
        return instance;
    }
    OperationPtr NewOperation() const { return new zrk::Operation("Edit", m_scene, true); }
    /// The whole list: "label=instance,instance;" for each item.
    std::string Dump() const {
        std::string dump;
        for (const unsigned id : m_items->GetItemIds()) {
            std::string label;
            bool isCustom = false;
            m_list->GetItemLabel(id, label, isCustom);
            dump += label + (isCustom ? "!=" : "=");
            for (const auto& instance : m_items->GetOrderedInstances(id)) dump += instance->GetName() + ",";
            dump += ";";
        }
        return dump;
    }

    const du::SmartPtr<zrk::ShapeScene> m_scene{new zrk::illustration::Illustration3dScene};
    const SbomPtr m_root{new SbomInstance(du::Symbol("root"), "root")};
    const du::SmartPtr<ItemList> m_list;
    const du::SmartPtr<ItemsList> m_items;
};

TEST_F(ItemListTest, MakesTheOperationOfADeletionThatHasNone) {
    const unsigned id = m_list->AddInstance(Add(m_root, "nut", Node("Nut")), nullptr, false, "");
    OperationPtr operation;
    m_list->DeleteItem(77, operation);
    EXPECT_FALSE(operation) << "there was nothing to delete";
    m_list->DeleteItem(id, operation);
    ASSERT_TRUE(operation);
    EXPECT_EQ(operation->GetScene(), du::SmartPtr<zrk::Scene>(m_scene));
    EXPECT_EQ(Dump(), "");
}

TEST_F(ItemListTest, FindsTheFirstItemOfAnEqualPart) {
    const NodePtr bolt = Node("Bolt");
    const auto listed = m_list->AddInstance(Add(m_root, "bolt1", bolt), nullptr, false, "");
    m_list->AddInstance(Add(m_root, "bolt2", bolt), nullptr, false, "");
    unsigned id = 99;
    EXPECT_TRUE(m_list->GetMatchingItem(Add(m_root, "bolt3", bolt), id));
    EXPECT_EQ(id, listed);
    m_items->RemoveItem(listed);
    EXPECT_TRUE(m_list->GetMatchingItem(Add(m_root, "bolt4", bolt), id));
    EXPECT_EQ(id, listed + 1);
    id = 99;
    for (const auto& other : {Add(m_root, "nut", Node("Nut")), Add(m_root, "group", nullptr), SbomPtr()}) {
        EXPECT_FALSE(m_list->GetMatchingItem(other, id));
    }
    EXPECT_EQ(id, 99U);
}

/// root: bolt1, arm(bolt2, nut1), arm2(nut2, bolt3), grouped bolt4; arm and arm2 are equal.
class StructureTest : public ItemListTest {
protected:
    StructureTest() {
        Add(m_root, "bolt1", m_bolt);
        const auto arm = Add(m_root, "arm", m_arm);
        Add(arm, "bolt2", m_bolt);
        Add(arm, "nut1", m_nut);
        const auto arm2 = Add(m_root, "arm2", m_arm);
        Add(arm2, "nut2", m_nut);
        Add(arm2, "bolt3", m_bolt);
        Add(m_root, "bolt4", m_bolt);
    }
    const NodePtr m_bolt = Node("Bolt");
    const NodePtr m_nut = Node("Nut");
    const NodePtr m_arm = Node("Arm");
};

TEST_F(StructureTest, ListsPartsOnceOrBelowTheirAssemblies) {
    const auto weld = Add(m_root, "weld", Node("Frame"));
    weld->SetWeld(true);
    Add(weld, "plate", Node("Plate"));  // a weld is listed as one part
    const std::pair<bool, const char*> rows[] = {
        {false, "1=bolt1,bolt2,bolt3,bolt4,;2=nut1,nut2,;3=weld,;"},
        {true, "1=bolt1,bolt4,;2=arm,arm2,;2.1=bolt2,bolt3,;2.2=nut1,nut2,;3=weld,;"}};
    for (const auto& [isHierarchical, all] : rows) {
        m_items->SetNumbering({isHierarchical, "", "."});
        const auto operation = NewOperation();
        m_list->GenerateFromStructure(m_root, operation);
        EXPECT_EQ(Dump(), all);
        operation->Undo();
        EXPECT_EQ(Dump(), "");
        operation->Redo();
        EXPECT_EQ(Dump(), all);
        m_items->Clear();
    }
}

class ItemEditTest : public ItemListTest {
protected:
    unsigned AddItem(const std::vector<SbomPtr>& instances, const std::string& label = "") {
        return m_list->AddItem(instances, label, true, false, nullptr);
    }
    /// All of the list.
    auto State() const {
        std::map<unsigned, ItemsList::Item> state;
        for (const unsigned id : m_items->GetItemIds()) state.emplace(id, *m_items->Capture(id));
        std::vector<unsigned> places;
        for (const auto& [id, item] : state) places.push_back(m_items->GetIndex(id));
        return std::tuple(state, places, m_items->CaptureNumbers());
    }
};

// As steps of the caller's operation; random walks of the engine's tests undo the same in transactions.
TEST_F(ItemEditTest, CanUndoEveryEdit) {
    const auto bolt = Add(m_root, "bolt", Node("Bolt"));
    const auto nut = Add(m_root, "nut", Node("Nut"));
    const auto cap = Add(m_root, "cap", Node("Cap"));
    const unsigned first = AddItem({bolt, nut});
    const unsigned second = AddItem({cap});
    const unsigned last = m_list->AddItem({}, "X", true, true, nullptr);
    const std::vector<SbomPtr> joining{nut, m_root, bolt};
    const std::vector<SbomPtr> leaving{bolt, cap};
    const zrk::illustration::Numbering prefixed{true, "P", "-"};
    const struct {
        const char* name;
        std::function<void(const OperationPtr&)> edit;
    } rows[] = {
        {"add", [&](const auto& to) { m_list->AddItem({m_root}, "", true, false, to); }},
        {"add instance", [&](const auto& to) { m_list->AddInstance(m_root, to, true, "Y"); }},
        {"delete", [&](OperationPtr to) { m_list->DeleteItem(first, to); }},
        {"label", [&](const auto& to) { m_list->SetLabel(first, "A", to); }},
        {"automatic label", [&](const auto& to) { m_list->SetLabel(last, "", to); }},
        {"tag", [&](const auto& to) { m_list->SetTag(second, "spare", to); }},
        {"itemized", [&](const auto& to) { m_list->SetItemized(second, false, to); }},
        {"number", [&](const auto& to) { m_list->SetNumber(second, 7, to); }},
        {"join", [&](const auto& to) { m_list->JoinItem(second, joining, to); }},
        {"leave", [&](const auto& to) { m_list->LeaveItem(first, leaving, to); }},
        {"numbering", [&](const auto& to) { m_list->SetNumbering(prefixed, to); }},
        {"clear", [&](const auto& to) { m_list->Clear(to); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto before = State();
        const OperationPtr operation = NewOperation();
        row.edit(operation);
        const auto after = State();
        EXPECT_FALSE(after == before);
        operation->Undo();
        EXPECT_TRUE(State() == before);
        operation->Redo();
        EXPECT_TRUE(State() == after);
        operation->Undo();
    }
    unsigned holder = 0;
    EXPECT_TRUE(m_items->GetItemIdForInstance(bolt, holder));
    EXPECT_EQ(holder, first);
}

TEST_F(ItemEditTest, GivesNoNumberTwiceBelowOneParent) {
    const unsigned first = AddItem({});
    const unsigned second = AddItem({});
    const unsigned custom = AddItem({}, "X");
    const struct {
        unsigned id;
        unsigned number;
        bool isSet;
    } rows[] = {{first, 2, false},  {first, 9, true},   {first, 9, true}, {second, 1, true},
                {second, 9, false}, {custom, 5, false}, {77, 5, false},   {second, 0, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(m_list->SetNumber(row.id, row.number, nullptr), row.isSet) << row.id << " " << row.number;
    }
    EXPECT_EQ(Dump(), "9=;1=;X!=;");
    AddItem({});
    EXPECT_EQ(Dump(), "9=;1=;X!=;10=;");
    m_list->SetNumbering({}, nullptr);
    EXPECT_EQ(Dump(), "1=;2=;X!=;3=;") << "the gaps stay open";
}

}  // namespace
}  // namespace zritemlist
