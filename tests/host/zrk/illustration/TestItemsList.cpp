#include "zrk/illustration/ItemsList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

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
    bool RequiresBeginEnd() const override { return true; }
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
    std::string Take() { return std::exchange(m_log, {}); }

private:
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

    std::map<std::string, SbomPtr> m_parts;
    std::map<std::string, du::SmartPtr<zrk::ComponentNode>> m_components;
    du::SmartPtr<ItemsList> m_list{new ItemsList};
    const du::SmartPtr<ListLog> m_log{new ListLog};
};

TEST_F(ItemsListTest, NumbersBelowTheNextAssemblyThatIsListed) {
    m_list->SetNumbering({true, "", "."});
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

// Two rows of a parts list with one number would send the reader to the wrong part.
TEST_F(ItemsListTest, GivesANumberOnceUntilAllAreGivenAnew) {
    Add("a");
    const unsigned b = Add("b");
    const auto item = m_list->Capture(b);
    m_list->RemoveItem(b);
    const unsigned c = Add("c");
    EXPECT_EQ(Labels(), "1 3");
    m_list->Restore(b, *item);
    EXPECT_EQ(Labels(), "1 2 3");
    EXPECT_FALSE(m_list->SetNumber(c, 2));
    m_list->RemoveItem(b);
    EXPECT_TRUE(m_list->SetNumber(c, 2)) << "who asks for a free number gets it";
    m_list->Restore(b, *item);
    EXPECT_EQ(Labels(), "1 4 2");
    m_list->RemoveItem(b);
    m_list->Renumber({});
    Add("d");
    EXPECT_EQ(Labels(), "1 2 3");
    EXPECT_TRUE(m_list->SetNumber(c, 2)) << "its own";
    EXPECT_FALSE(m_list->SetNumber(c, 0) || m_list->SetNumber(77, 5));
    EXPECT_FALSE(m_list->SetNumber(Add("e", "X"), 5)) << "it has a label";
    EXPECT_TRUE(m_list->SetNumber(c, 9));
    Add("f");
    EXPECT_EQ(Labels(), "1 9 3 X! 10");
}

TEST_F(ItemsListTest, WritesNumbersAsTheNumberingSays) {
    using Numbering = zrk::illustration::Numbering;
    const struct {
        Numbering numbering;
        unsigned number;
        const char* above;
        const char* label;
    } rows[] = {{{.prefix = "P", .digits = 3}, 7, "", "P007"},
                {{.digits = 2}, 123, "", "123"},
                {{.alphabetic = true}, 26, "", "Z"},
                {{.alphabetic = true}, 27, "", "AA"},
                {{.alphabetic = true}, 702, "", "ZZ"},
                {{.alphabetic = true}, 703, "", "AAA"},
                {{.hierarchical = true, .prefix = "P", .separator = "-", .digits = 2}, 3, "P01", "P01-3"}};
    for (const auto& row : rows) EXPECT_EQ(row.numbering.Write(row.number, row.above), row.label);
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

}  // namespace
}  // namespace zrk::illustration
