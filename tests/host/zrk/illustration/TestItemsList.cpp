#include "zrk/illustration/ItemsList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "zrk/illustration/ItemsListObserver.h"
#include "zrk/tree/ComponentNode.h"
#include "zrk/tree/Instance.h"

namespace zrk::illustration {
namespace {

using SbomPtr = ItemsList::SbomPtr;

std::string Names(const std::set<SbomPtr>& instances) {
    std::string names;
    for (const auto& instance : instances) names += instance->GetName();
    std::sort(names.begin(), names.end());
    return names;
}

/// Writes down what it hears.
class ListLog : public ItemsListObserver {
public:
    explicit ListLog(bool framed = true) : m_isFramed(framed) {}
    bool RequiresBeginEnd() const override { return m_isFramed; }
    void OnBeginUpdate() override { m_log += '('; }
    void OnEndUpdate() override { m_log += ')'; }
    void OnItemAdded(unsigned id) override { m_log += "+" + std::to_string(id); }
    void OnItemRemoved(unsigned id) override { m_log += "-" + std::to_string(id); }
    void OnItemContentChanged(unsigned id, const std::set<SbomPtr>& added,
                              const std::set<SbomPtr>& removed) override {
        m_log += "*" + std::to_string(id) + Names(added);
        if (!removed.empty()) m_log += "/" + Names(removed);
    }
    void OnListSettingsChanged() override { m_log += "settings"; }
    void OnListCleared() override { m_log += "cleared"; }
    int OnDestroy() override {
        m_log += '!';
        return 0;
    }
    std::string Take() { return std::exchange(m_log, {}); }

private:
    const bool m_isFramed;
    std::string m_log;
};

/// Parts by name; "A.b" is the part b below the assembly A. Parts of one letter in different case share no
/// component.
class ItemsListTest : public testing::Test {
protected:
    void SetUp() override { m_list->RegisterObserver(m_log); }

    SbomPtr Part(const std::string& path) {
        SbomPtr& part = m_parts[path];
        if (part) return part;
        const auto dot = path.rfind('.');
        const std::string name = path.substr(dot == std::string::npos ? 0 : dot + 1);
        part = new SbomInstance(du::Symbol(path), name);
        auto& component = m_components[name];
        if (!component) component = new zrk::ComponentNode(name, nullptr);
        part->SetEbomInstance(new zrk::Instance(du::Symbol("/" + path), name, component, {}));
        if (dot != std::string::npos) Part(path.substr(0, dot))->AddChild(part);
        return part;
    }
    unsigned Add(const std::string& path, const std::string& label = "", bool itemized = true) {
        return m_list->AddItem({Part(path)}, label, itemized, false);
    }
    /// All labels in list order.
    std::string Labels() const {
        std::string labels;
        for (const unsigned id : m_list->GetItemIds()) {
            std::string label;
            bool isCustom = false;
            EXPECT_TRUE(m_list->GetLabel(id, label, isCustom));
            labels += (labels.empty() ? "" : " ") + (label.empty() ? "-" : label) + (isCustom ? "!" : "");
        }
        return labels;
    }
    void SetHierarchical() { m_list->SetNumbering({true, "", "."}); }

    std::map<std::string, SbomPtr> m_parts;
    std::map<std::string, du::SmartPtr<zrk::ComponentNode>> m_components;
    du::SmartPtr<ItemsList> m_list{new ItemsList};
    const du::SmartPtr<ListLog> m_log{new ListLog};
};

TEST_F(ItemsListTest, CountsThroughAndNeverRenumbersWhatStays) {
    const unsigned a = Add("a");
    const unsigned b = Add("b");
    const unsigned c = Add("c");
    EXPECT_EQ(Labels(), "1 2 3");
    m_list->RemoveItem(b);
    Add("d");
    EXPECT_EQ(Labels(), "1 3 4");
    m_list->SetLabel(a, "X7");
    m_list->SetLabel(c, "X7");  // the user may label twice alike
    EXPECT_EQ(Labels(), "X7! X7! 4");
    m_list->SetLabel(c, "");
    EXPECT_EQ(Labels(), "X7! 5 4");
    m_list->SetNumbering({false, "P-", "/"});
    EXPECT_EQ(Labels(), "X7! P-1 P-2");
    Add("e", "", false);
    Add("f");
    EXPECT_EQ(Labels(), "X7! P-1 P-2 - P-3");
}

TEST_F(ItemsListTest, TakesItemsOutOfNumberingAndIn) {
    Add("a");
    const unsigned b = Add("b");
    const unsigned c = Add("c", "C", false);
    Add("d");
    m_list->SetItemized(b, false);
    EXPECT_FALSE(m_list->GetItemized(b));
    EXPECT_EQ(Labels(), "1 - C! 3");
    m_list->SetItemized(b, true);
    m_list->SetItemized(c, true);
    EXPECT_EQ(Labels(), "1 4 C! 3");
    m_list->SetItemized(b, false);
    Add("e");  // the number 4 is free again
    EXPECT_EQ(Labels(), "1 - C! 3 4");
}

TEST_F(ItemsListTest, NumbersBelowTheNextAssemblyThatIsListed) {
    SetHierarchical();
    Add("A");
    Add("A.b");
    const unsigned sub = Add("A.S");
    Add("A.S.c");
    Add("A.T.d");  // T has no item, so d counts among the parts of A
    Add("e");
    EXPECT_EQ(Labels(), "1 1.1 1.2 1.2.1 1.3 2");
    m_list->SetLabel(sub, "sub");
    EXPECT_EQ(Labels(), "1 1.1 sub! sub.1 1.3 2");
    m_list->SetNumbering({true, "#", "-"});
    EXPECT_EQ(Labels(), "#1 #1-1 sub! sub-1 #1-2 #2");
    m_list->SetNumbering({false, "", "-"});
    EXPECT_EQ(Labels(), "1 2 sub! 3 4 5");
}

// Looking for the item above must not end at the item itself, nor go round for ever.
TEST_F(ItemsListTest, NumbersAnItemThatHoldsAnAssemblyWithAPartOfIt) {
    SetHierarchical();
    Add("R");
    const unsigned id = m_list->AddItem({Part("R.A.b"), Part("R.A")}, "", true, false);
    EXPECT_EQ(Labels(), "1 1.1");
    EXPECT_EQ(m_list->GetHierarchyIndex(id), (std::vector<unsigned>{0, 1}));
}

TEST_F(ItemsListTest, BringsARemovedItemBackAsItWas) {
    Add("a");
    const unsigned b = Add("b");
    Add("c");
    m_list->SetTag(b, "tag");
    const auto item = m_list->Capture(b);
    ASSERT_TRUE(item);
    m_list->RemoveItem(b);
    EXPECT_FALSE(m_list->Capture(b));
    EXPECT_FALSE(Part("b")->CarriesItem());
    m_log->Take();
    m_list->Restore(b, *item);
    m_list->Restore(b, *item);  // it is there already
    EXPECT_EQ(m_log->Take(), "(+2)");
    EXPECT_EQ(Labels(), "1 2 3");
    EXPECT_EQ(m_list->GetItemTag(b), "tag");
    EXPECT_EQ(m_list->GetIndex(b), 1U);
    EXPECT_TRUE(Part("b")->CarriesItem());
    EXPECT_EQ(Add("d"), 4U);  // ids are never used again
    EXPECT_EQ(Labels(), "1 2 3 4");
}

// Two rows of a parts list with one number would send the reader to the wrong part.
TEST_F(ItemsListTest, NeverGivesOneNumberToTwoItems) {
    Add("a");
    const unsigned b = Add("b");
    const auto item = m_list->Capture(b);
    m_list->RemoveItem(b);
    Add("c");  // takes the number 2 that is free now
    m_list->Restore(b, *item);
    EXPECT_EQ(Labels(), "1 3 2");
    m_list->RemoveItem(b);
    Add("d");
    EXPECT_EQ(Labels(), "1 2 3");
}

TEST_F(ItemsListTest, HoldsEachInstanceInOneItemOnly) {
    const unsigned both = m_list->AddItem({Part("a"), nullptr, Part("b"), Part("a")}, "", true, false);
    const unsigned rest = m_list->AddItem({Part("b"), Part("c")}, "", true, false);
    m_list->AddInstance(rest, Part("a"));
    m_list->AddInstance(rest, nullptr);
    m_list->AddInstance(99, Part("z"));
    m_list->RemoveInstance(rest, Part("a"));
    m_list->RemoveInstance(rest, nullptr);
    EXPECT_EQ(m_log->Take(), "(+1)(+2)");  // nothing happened that is worth a word
    EXPECT_EQ(m_list->GetQuantity(both), 2);
    EXPECT_EQ(m_list->GetOrderedInstances(rest), (std::vector<SbomPtr>{Part("c")}));
    m_list->RemoveInstance(both, Part("a"));
    m_list->AddInstance(rest, Part("a"));
    EXPECT_EQ(m_list->GetOrderedInstances(rest), (std::vector<SbomPtr>{Part("c"), Part("a")}));
    unsigned id = 0;
    EXPECT_TRUE(m_list->GetItemIdForInstance(Part("a"), id));
    EXPECT_EQ(id, rest);
    EXPECT_FALSE(m_list->GetItemIdForInstance(nullptr, id));
    EXPECT_EQ(m_log->Take(), "(*1/a)(*2a)");
}

TEST_F(ItemsListTest, FindsTheFirstItemOfAComponent) {
    const unsigned first = Add("A.x");
    const unsigned second = Add("B.x");
    m_list->AddInstance(second, Part("C.x"));
    const auto find = [&] {
        unsigned id = 0;
        return m_list->GetItemIdForComponent(m_components["x"], id) ? id : 0;
    };
    EXPECT_EQ(find(), first);
    m_list->RemoveItem(first);
    EXPECT_EQ(find(), second);
    m_list->RemoveInstance(second, Part("B.x"));
    EXPECT_EQ(find(), second);  // one more instance is left
    m_list->RemoveInstance(second, Part("C.x"));
    EXPECT_EQ(find(), 0U);
    unsigned id = 0;
    EXPECT_FALSE(m_list->GetItemIdForComponent(nullptr, id));
}

TEST_F(ItemsListTest, AnswersForUnknownItemsWithNothing) {
    std::string label = "untouched";
    bool isCustom = true;
    EXPECT_FALSE(m_list->GetLabel(7, label, isCustom));
    EXPECT_EQ(label, "untouched");
    EXPECT_FALSE(m_list->GetItemized(7));
    EXPECT_EQ(m_list->GetQuantity(7), 0);
    EXPECT_EQ(m_list->GetItemTag(7), "");
    EXPECT_TRUE(m_list->GetOrderedInstances(7).empty());
    EXPECT_TRUE(m_list->GetHierarchyIndex(7).empty());
    EXPECT_FALSE(m_list->RemoveItem(7));
    m_list->SetLabel(7, "x");
    m_list->SetTag(7, "x");
    m_list->SetIndicated(7, true);
    EXPECT_FALSE(m_list->IsIndicated(7));
    EXPECT_EQ(m_log->Take(), "");
}

TEST_F(ItemsListTest, TellsOfChangesOnlyAndOncePerGroup) {
    const unsigned a = Add("a");
    const unsigned b = Add("b");
    m_list->SetIndicated(a, true);
    m_list->SetTag(a, "");
    m_list->SetItemized(a, true);
    EXPECT_EQ(m_log->Take(), "(+1)(+2)");
    {
        const zrk::Observable::UpdateGroup group{du::SmartPtr<zrk::Observable>(m_list)};
        m_list->SetTag(b, "t");
        m_list->SetLabel(b, "l");
        m_list->RemoveItem(a);
        EXPECT_EQ(m_log->Take(), "");
        EXPECT_EQ(Labels(), "l!");  // done already, only not told
    }
    EXPECT_EQ(m_log->Take(), "(*2-1)");
    EXPECT_FALSE(m_list->IsIndicated(a));
    m_list->SetNumbering({});
    EXPECT_EQ(m_log->Take(), "(settings)(*2)");
}

// Equal events are told once, but what came and went must not get lost on the way.
TEST_F(ItemsListTest, AddsUpWhatCameAndWentInAGroup) {
    const unsigned id = m_list->AddItem({Part("a"), Part("b")}, "", true, false);
    m_log->Take();
    {
        const zrk::Observable::UpdateGroup group{du::SmartPtr<zrk::Observable>(m_list)};
        m_list->AddInstance(id, Part("c"));
        m_list->AddInstance(id, Part("d"));
        m_list->RemoveInstance(id, Part("a"));
        m_list->RemoveInstance(id, Part("c"));  // came and went
        m_list->RemoveInstance(id, Part("b"));
        m_list->AddInstance(id, Part("b"));  // went and came
        m_list->SetTag(id, "t");
    }
    EXPECT_EQ(m_log->Take(), "(*1d/a)");
    m_list->SetTag(id, "u");
    EXPECT_EQ(m_log->Take(), "(*1)");
}

TEST_F(ItemsListTest, ClearsEverythingButTheCountOfIds) {
    Add("a");
    Add("b");
    m_log->Take();
    m_list->Clear();
    EXPECT_EQ(m_log->Take(), "(cleared)");
    EXPECT_FALSE(Part("a")->CarriesItem());
    EXPECT_EQ(Add("b"), 3U);
    EXPECT_EQ(Labels(), "1");
    EXPECT_EQ(m_list->GetIndex(3), 0U);
    unsigned id = 0;
    EXPECT_FALSE(m_list->GetItemIdForInstance(Part("a"), id));
    EXPECT_FALSE(m_list->GetItemIdForComponent(m_components["a"], id));
}

TEST_F(ItemsListTest, SaysGoodbyeToThoseWhoStay) {
    const du::SmartPtr<ListLog> gone(new ListLog);
    const du::SmartPtr<ListLog> unframed(new ListLog(false));
    m_list->RegisterObserver(gone);
    m_list->RegisterObserver(unframed);
    m_list->UnregisterObserver(gone);
    Add("a");
    m_list = nullptr;
    EXPECT_EQ(m_log->Take(), "(+1)!");
    EXPECT_EQ(unframed->Take(), "+1!");
    EXPECT_EQ(gone->Take(), "");
}

}  // namespace
}  // namespace zrk::illustration
