#include "app/project/ProjectCheck.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "app/project/ProjectFault.h"
#include "dg/DMat44.h"

namespace zrsheet {
namespace {

constexpr std::string_view kProduct = "/";

std::string At(const std::string& list, std::size_t index) {
    return list + "[" + std::to_string(index) + "]";
}

std::string Quoted(std::string_view name) { return "\"" + std::string(name) + "\""; }
std::string Quoted(unsigned id) { return std::to_string(id); }

/// Collects names or numbers that may be used once, and is asked for them later.
template <class T>
class Names {
public:
    void Add(const std::string& place, const T& name) {
        if (!m_known.insert(name).second) throw ProjectFault(place, Quoted(name) + " stands twice");
    }
    /// Requires: `what` is one word for what is named.
    void Expect(const std::string& place, const T& name, const char* what) const {
        if (!Contains(name))
            throw ProjectFault(place, "there is no " + std::string(what) + " " + Quoted(name));
    }
    bool Contains(const T& name) const { return m_known.count(name) != 0; }

private:
    std::set<T> m_known;
};

class Checker {
public:
    explicit Checker(const ProjectData& project) : m_project(project) {}

    void Check() {
        CheckCamera();
        CollectNames();
        m_templates.Expect("settings.labelTemplate", m_project.settings.labelTemplate, "template");
        CheckItems();
        CheckCallouts("callouts", m_project.callouts);
        CheckCallouts("savedCallouts", m_project.savedCallouts);
    }

private:
    void CheckCamera() const {
        const dg::DMat44 matrix(m_project.camera.worldToPixel);
        // The inverse of a matrix that has none is the identity.
        if (matrix.Invert() == dg::DMat44::IDENTITY && !(matrix == dg::DMat44::IDENTITY))
            throw ProjectFault("camera.worldToPixel", "the matrix has no inverse");
    }

    template <class List, class Member, class T>
    static void Collect(const std::string& list, const List& values, Member member, const char* name,
                        T& names) {
        for (std::size_t i = 0; i < values.size(); ++i)
            names.Add(At(list, i) + "." + name, values[i].*member);
    }

    void CollectNames() {
        Collect("instances", m_project.instances, &ProjectInstance::path, "path", m_paths);
        Collect("orphans", m_project.orphans, &ProjectInstance::path, "path", m_paths);
        Collect("templates", m_project.templates, &ProjectTemplate::name, "name", m_templates);
        Collect("symbols", m_project.symbols, &ProjectSymbol::name, "name", m_symbols);
        Collect("insets", m_project.insets, &ProjectInset::id, "id", m_insets);
        Names<std::string> parts;
        Collect("parts", m_project.parts, &ProjectPart::path, "path", parts);
        for (std::size_t i = 0; i < m_project.parts.size(); ++i)
            m_paths.Expect(At("parts", i) + ".path", m_project.parts[i].path, "part");
    }

    void CheckItems() {
        std::set<std::pair<unsigned, unsigned>> numbers;  // below their parents, where that counts
        const bool isHierarchical = m_project.numbering.hierarchical;
        Names<std::string> held;
        unsigned last = 0;
        for (std::size_t i = 0; i < m_project.items.size(); ++i) {
            const ProjectItem& item = m_project.items[i];
            const std::string place = At("items", i);
            if (item.id <= last) throw ProjectFault(place + ".id", "ids must ascend from item to item");
            last = item.id;
            m_parents.emplace(item.id, item.parent);
            if (item.number != 0 && !numbers.emplace(isHierarchical ? item.parent : 0, item.number).second)
                throw ProjectFault(place + ".number", "another item has it too");
            for (std::size_t k = 0; k < item.instances.size(); ++k) {
                const std::string instance = At(place + ".instances", k);
                m_paths.Expect(instance, item.instances[k], "part");
                held.Add(instance, item.instances[k]);
            }
        }
        CheckParents();
    }

    // A way that has been gone is cut off, so that each is gone once.
    void CheckParents() {
        std::map<unsigned, unsigned> parents = m_parents;
        for (std::size_t i = 0; i < m_project.items.size(); ++i) {
            std::set<unsigned> way;
            for (unsigned id = m_project.items[i].id; id != 0; id = std::exchange(parents[id], 0)) {
                if (!way.insert(id).second)
                    throw ProjectFault(At("items", i) + ".parent", "items are each other's parents");
            }
        }
    }

    void ExpectItem(const std::string& place, unsigned id) const {
        if (id != 0 && m_parents.count(id) == 0)
            throw ProjectFault(place, "there is no item " + std::to_string(id));
    }

    void CheckCallouts(const std::string& list, const std::vector<ProjectCallout>& callouts) const {
        for (std::size_t i = 0; i < callouts.size(); ++i) {
            CheckCallout(At(list, i), callouts[i]);
            const auto& members = callouts[i].members;
            for (std::size_t k = 0; k < members.size(); ++k) {
                const std::string place = At(At(list, i) + ".members", k);
                CheckCallout(place, members[k]);
                if (!members[k].members.empty())
                    throw ProjectFault(place + ".members", "a member of a combined callout has none itself");
            }
        }
    }

    void CheckCallout(const std::string& place, const ProjectCallout& callout) const {
        if (!callout.labelTemplate.empty())
            m_templates.Expect(place + ".labelTemplate", callout.labelTemplate, "template");
        ExpectItem(place + ".item", callout.item);
        for (std::size_t i = 0; i < callout.leaders.size(); ++i)
            CheckLeader(At(place + ".leaders", i), callout.leaders[i]);
    }

    void CheckLeader(const std::string& place, const ProjectLeader& leader) const {
        if (!leader.target.empty() && !m_symbols.Contains(leader.target))
            m_paths.Expect(place + ".target", leader.target, "part or symbol");
        if (!leader.symbol.empty()) m_symbols.Expect(place + ".symbol", leader.symbol, "symbol");
        if (!leader.assembly.empty() && leader.assembly != kProduct)
            m_paths.Expect(place + ".assembly", leader.assembly, "assembly");
        if (leader.inset != 0) m_insets.Expect(place + ".inset", leader.inset, "inset");
    }

    const ProjectData& m_project;
    Names<std::string> m_paths;
    Names<std::string> m_templates;
    Names<std::string> m_symbols;
    Names<unsigned> m_insets;
    std::map<unsigned, unsigned> m_parents;  // of items
};

}  // namespace

void CheckProject(const ProjectData& project) { Checker(project).Check(); }

}  // namespace zrsheet
