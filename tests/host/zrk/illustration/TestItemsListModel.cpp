// Random edits of a parts list, each compared with a model that looks everything up the slow way.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "zrk/illustration/ItemsList.h"
#include "zrk/tree/ComponentNode.h"
#include "zrk/tree/Instance.h"

namespace zrk::illustration {
namespace {

using SbomPtr = ItemsList::SbomPtr;

class ItemsListModel {
public:
    struct Row {
        std::vector<SbomPtr> instances;
        std::string custom;
        bool isItemized = true;
        unsigned parent = 0;
    };
    std::map<unsigned, Row> m_rows;

    unsigned HolderOf(const SbomPtr& instance) const {
        for (const auto& [id, row] : m_rows) {
            if (std::count(row.instances.begin(), row.instances.end(), instance) > 0) return id;
        }
        return 0;
    }
    unsigned HolderOf(const du::SmartPtr<zrk::ComponentNode>& component) const {
        for (const auto& [id, row] : m_rows) {
            for (const auto& instance : row.instances) {
                if (instance->GetComponentNode() == component) return id;
            }
        }
        return 0;
    }
    unsigned ParentOf(const SbomPtr& instance) const {
        SbomPtr above = instance;
        while (above) {
            SbomPtr next;
            above->GetParent(next);
            above = next;
            const auto row = above ? m_rows.find(HolderOf(above)) : m_rows.end();
            if (row != m_rows.end() && (row->second.isItemized || !row->second.custom.empty()))
                return row->first;
        }
        return 0;
    }
    unsigned IndexOf(unsigned id) const {
        unsigned index = 0;
        for (const auto& [other, row] : m_rows) index += other < id ? 1 : 0;
        return index;
    }
    std::vector<unsigned> HierarchyOf(unsigned id) const {
        const auto row = m_rows.find(id);
        if (row == m_rows.end()) return {};
        auto index = HierarchyOf(row->second.parent);
        index.push_back(IndexOf(id));
        return index;
    }
};

class ItemsListModelTest : public testing::TestWithParam<unsigned> {
protected:
    static constexpr std::size_t kParts = 60;

    void SetUp() override {
        std::vector<du::SmartPtr<zrk::ComponentNode>> components;
        for (int i = 0; i < 12; ++i) components.emplace_back(new zrk::ComponentNode("c", nullptr));
        for (std::size_t i = 0; i < kParts; ++i) {
            const std::string name = std::to_string(i);
            m_parts.emplace_back(new SbomInstance(du::Symbol(name), name));
            m_parts[i]->SetEbomInstance(new zrk::Instance(du::Symbol(name), name, components[Pick(12)], {}));
            if (i > 0) m_parts[Pick(i)]->AddChild(m_parts[i]);
        }
        m_list->SetNumbering({GetParam() % 2 == 1, "", "."});
    }
    std::size_t Pick(std::size_t count) { return m_random() % count; }
    unsigned PickId() {
        return m_list->GetItemIds().empty() ? 1 : m_list->GetItemIds()[Pick(m_list->GetItemIds().size())];
    }

    void Add() {
        std::vector<SbomPtr> wanted{m_parts[Pick(kParts)], m_parts[Pick(kParts)]};
        const std::string label = Pick(4) == 0 ? "L" : "";
        ItemsListModel::Row row{{}, label, Pick(5) != 0, 0};
        for (const auto& part : wanted) {
            const bool isTwice = std::count(row.instances.begin(), row.instances.end(), part) > 0;
            if (m_model.HolderOf(part) == 0 && !isTwice) row.instances.push_back(part);
        }
        if (!row.instances.empty()) row.parent = m_model.ParentOf(row.instances.front());
        m_model.m_rows[m_list->AddItem(wanted, label, row.isItemized, false)] = row;
    }
    void Remove() {
        const unsigned id = PickId();
        const auto item = m_list->Capture(id);
        if (!item) return;
        m_removed.emplace_back(id, *item, m_model.m_rows.at(id));
        m_list->RemoveItem(id);
        m_model.m_rows.erase(id);
    }
    void Restore() {
        if (m_removed.empty()) return;
        auto [id, item, row] = m_removed.back();
        m_removed.pop_back();
        std::erase_if(row.instances, [this](const SbomPtr& part) { return m_model.HolderOf(part) != 0; });
        m_list->Restore(id, item);
        m_model.m_rows[id] = row;
    }
    void Edit() {
        const unsigned id = PickId();
        const auto entry = m_model.m_rows.find(id);
        if (entry == m_model.m_rows.end()) return;
        auto& row = entry->second;
        const SbomPtr part = m_parts[Pick(kParts)];
        const std::size_t choice = Pick(4);
        if (choice == 0) m_list->SetLabel(id, row.custom = Pick(2) == 0 ? "M" : "");
        if (choice == 1) m_list->SetItemized(id, row.isItemized = Pick(2) == 0);
        if (choice == 2) {
            if (m_model.HolderOf(part) == 0) row.instances.push_back(part);
            m_list->AddInstance(id, part);
        }
        if (choice == 3) {
            m_list->RemoveInstance(id, part);
            std::erase(row.instances, part);
        }
    }
    void Compare() {
        std::set<std::string> numbers;
        ASSERT_EQ(m_list->GetItemIds().size(), m_model.m_rows.size());
        for (const auto& [id, row] : m_model.m_rows) {
            ASSERT_EQ(m_list->GetIndex(id), m_model.IndexOf(id));
            ASSERT_EQ(m_list->GetHierarchyIndex(id), m_model.HierarchyOf(id));
            ASSERT_EQ(m_list->GetOrderedInstances(id), row.instances);
            std::string label;
            bool isCustom = false;
            ASSERT_TRUE(m_list->GetLabel(id, label, isCustom));
            ASSERT_EQ(isCustom, !row.custom.empty());
            ASSERT_EQ(label.empty(), row.custom.empty() && !row.isItemized);
            ASSERT_TRUE(!isCustom || label == row.custom);
            const bool isNumber = !isCustom && !label.empty() && GetParam() % 2 == 0;
            ASSERT_TRUE(!isNumber || numbers.insert(label).second) << label << " is given twice";
        }
        for (const auto& part : m_parts) {
            unsigned id = 0;
            m_list->GetItemIdForInstance(part, id);
            ASSERT_EQ(id, m_model.HolderOf(part));
            ASSERT_EQ(part->CarriesItem(), id != 0);
            id = 0;
            m_list->GetItemIdForComponent(part->GetComponentNode(), id);
            ASSERT_EQ(id, m_model.HolderOf(part->GetComponentNode()));
        }
    }

    std::mt19937 m_random{GetParam()};
    std::vector<SbomPtr> m_parts;
    const du::SmartPtr<ItemsList> m_list{new ItemsList};
    ItemsListModel m_model;
    std::vector<std::tuple<unsigned, ItemsList::Item, ItemsListModel::Row>> m_removed;
};

TEST_P(ItemsListModelTest, AgreesWithTheModelAfterEveryEdit) {
    for (int step = 0; step < 400; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        const std::size_t choice = Pick(6);
        if (choice < 2) Add();
        if (choice == 2) Remove();
        if (choice == 3) Restore();
        if (choice > 3) Edit();
        Compare();
        if (HasFatalFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ItemsListModelTest, testing::Values(1U, 2U, 3U, 4U));

}  // namespace
}  // namespace zrk::illustration
