#include "zritemlist/ItemList.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace zritemlist
