#include "app/project/ModelMatch.h"

#include <deque>
#include <set>
#include <utility>

namespace zrsheet {
namespace {

class Matcher {
public:
    Matcher(const ProjectData& project, const std::vector<ProjectInstance>& present) : m_project(project) {
        for (const auto& instance : project.instances) m_lost.push_back(&instance);
        for (const auto& instance : project.orphans) m_lost.push_back(&instance);
        for (const auto& instance : present) m_new.push_back(&instance);
    }

    ModelMatch Match() {
        Pair([](const ProjectInstance& instance) { return instance.path; });
        Pair([](const ProjectInstance& instance) { return std::pair(instance.name, instance.geometry); });
        Pair([](const ProjectInstance& instance) { return instance.name; });
        Pair([](const ProjectInstance& instance) { return instance.geometry; });
        TellChanges();
        return std::move(m_match);
    }

private:
    using Instances = std::vector<const ProjectInstance*>;

    /// Joins what has an equal key and no partner yet, in order.
    template <class KeyOf>
    void Pair(KeyOf keyOf) {
        using Key = decltype(keyOf(*m_new.front()));
        std::map<Key, std::deque<const ProjectInstance*>> candidates;
        for (const auto* instance : m_new) candidates[keyOf(*instance)].push_back(instance);
        candidates.erase(Key());  // nothing is known again by nothing
        Instances lost;
        for (const auto* instance : m_lost) {
            const auto equal = candidates.find(keyOf(*instance));
            if (equal == candidates.end() || equal->second.empty()) {
                lost.push_back(instance);
                continue;
            }
            m_match.present[instance->path] = equal->second.front()->path;
            m_found.insert(equal->second.front());
            equal->second.pop_front();
        }
        m_lost.swap(lost);
        std::erase_if(m_new, [this](const auto* instance) { return m_found.count(instance) != 0; });
    }

    void TellChanges() {
        for (const auto& instance : m_project.instances) {
            const auto found = m_match.present.find(instance.path);
            if (found != m_match.present.end() && found->second != instance.path)
                m_match.changes.moved.push_back({instance.path, found->second});
        }
        for (const auto& orphan : m_project.orphans) {
            const auto found = m_match.present.find(orphan.path);
            if (found != m_match.present.end()) m_match.changes.found.push_back(found->second);
        }
        for (const auto* instance : m_lost) m_match.changes.missing.push_back(instance->path);
        for (const auto* instance : m_new) m_match.changes.added.push_back(instance->path);
    }

    const ProjectData& m_project;
    Instances m_lost;  // not matched yet
    Instances m_new;
    std::set<const ProjectInstance*> m_found;
    ModelMatch m_match;
};

void Rename(std::string& path, const ModelMatch& match) {
    const auto found = match.present.find(path);
    if (found != match.present.end()) path = found->second;
}

void Rename(std::vector<ProjectCallout>& callouts, const ModelMatch& match) {
    for (auto& callout : callouts) {
        for (auto& leader : callout.leaders) {
            Rename(leader.target, match);
            Rename(leader.assembly, match);
        }
        Rename(callout.members, match);
    }
}

}  // namespace

ModelMatch MatchModel(const ProjectData& project, const std::vector<ProjectInstance>& present) {
    return Matcher(project, present).Match();
}

ProjectData Rematched(ProjectData project, const ModelMatch& match) {
    for (auto& item : project.items) {
        for (auto& path : item.instances) Rename(path, match);
    }
    for (auto& part : project.parts) Rename(part.path, match);
    Rename(project.callouts, match);
    Rename(project.savedCallouts, match);
    return project;
}

}  // namespace zrsheet
