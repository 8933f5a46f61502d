#include "app/check/CompletenessCheck.h"

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "app/document/CalloutIds.h"
#include "app/text/ProgramText.h"

namespace zrsheet {
namespace {

using CalloutPtr = Document::CalloutPtr;
using SbomPtr = Document::SbomPtr;
using zrk::illustration::SbomInstance;

class Check {
public:
    explicit Check(const Project& project) : m_document(project.Doc()), m_saved(project.Capture()) {
        for (const auto& orphan : m_saved.orphans) m_lost.insert(orphan.path);
        for (const auto& instance : m_document.Model().Instances())
            m_parts[instance->GetIdentifier().Text()] = instance;
    }

    std::vector<Finding> Run() {
        for (const ProjectItem& item : m_saved.items) CheckItem(item);
        CheckParts();
        const auto callouts = m_document.Callouts();
        const auto ids = CalloutIds(callouts);
        for (std::size_t i = 0; i < callouts.size(); ++i) CheckCallout(*callouts[i], ids[i]);
        return std::move(m_findings);
    }

private:
    void CheckItem(const ProjectItem& item) {
        std::string label;
        bool isCustom = false;
        m_document.Items()->GetLabel(item.id, label, isCustom);
        const std::string where = WhereIs(item, label);
        if (item.instances.empty()) {
            Report({FindingKind::ItemWithoutParts, where, item.id, "", ""});
        } else if (item.itemized && !HasCallout(item)) {
            Report({FindingKind::ItemWithoutCallout, where, item.id, "", ""});
        }
        for (const std::string& path : item.instances) {
            if (m_lost.contains(path))
                Report({FindingKind::ItemWithLostPart,
                        Text("where-part-of", {{"item", where}, {"part", path}}), item.id, "", path});
        }
        if (item.itemized && !m_labels.insert(label).second)
            Report({FindingKind::DuplicateLabel, where, item.id, "", ""});
    }

    std::string WhereIs(const ProjectItem& item, const std::string& label) const {
        const std::string id = std::to_string(item.id);
        const std::string name = NameOf(item);
        if (name.empty()) return Text("where-nameless-item", {{"label", label}, {"id", id}});
        return Text("where-item", {{"label", label}, {"id", id}, {"name", name}});
    }

    static std::string WhereLeads(const std::string& callout, const std::string& part) {
        return Text("where-leader", {{"callout", callout}, {"part", part}});
    }

    std::string NameOf(const ProjectItem& item) const {
        for (const std::string& path : item.instances) {
            const auto part = m_parts.find(path);
            if (part != m_parts.end()) return ProductModel::NameOf(*part->second);
        }
        return "";
    }

    /// One that knows no items will do if it leads to a part of the item.
    bool HasCallout(const ProjectItem& item) const {
        std::vector<CalloutPtr> callouts;
        m_document.Engine()->GetItemIdCallouts(item.id, callouts);
        if (!callouts.empty()) return true;
        for (const SbomPtr& instance : m_document.Items()->GetOrderedInstances(item.id)) {
            zrcallouts::Callouts::CalloutSet leading;
            m_document.Engine()->GetCalloutSetForSbomInstance(instance, leading);
            for (const CalloutPtr& callout : leading) {
                if (!callout->HasItemId()) return true;
            }
        }
        return false;
    }

    void CheckParts() {
        const auto isPart = [](const SbomPtr& instance) { return !instance->HasChildren(); };
        for (const SbomPtr& instance : m_document.Model().Instances()) {
            if (isPart(instance) && HasNumberedItem(instance)) OpenAbove(instance);
        }
        for (const SbomPtr& instance : m_document.Model().Instances()) {
            if (!isPart(instance) || HasItem(instance) || !IsInScene(instance) || IsStoodFor(instance))
                continue;
            const std::string path = instance->GetIdentifier().Text();
            Report({FindingKind::PartWithoutItem, path, 0, "", path});
        }
    }

    bool HasItem(const SbomPtr& instance) const {
        unsigned id = 0;
        return m_document.Items()->GetItemIdForInstance(instance, id);
    }

    bool HasNumberedItem(const SbomPtr& instance) const {
        unsigned id = 0;
        return m_document.Items()->GetItemIdForInstance(instance, id) && m_document.Items()->GetItemized(id);
    }

    bool IsInScene(const SbomPtr& instance) const {
        Document::ShapePtr shape;
        m_document.Scene()->GetShapeInstance(instance->GetEbomInstance(), shape);
        return static_cast<bool>(shape);
    }

    void OpenAbove(const SbomPtr& part) {
        SbomPtr above;
        part->GetParent(above);
        while (above && m_opened.insert(above.get()).second) {
            const SbomPtr child = std::exchange(above, nullptr);
            child->GetParent(above);
        }
    }

    bool IsStoodFor(const SbomPtr& part) const {
        SbomPtr above;
        part->GetParent(above);
        while (above) {
            if (HasItem(above) && (above->IsWeld() || !m_opened.contains(above.get()))) return true;
            const SbomPtr child = std::exchange(above, nullptr);
            child->GetParent(above);
        }
        return false;
    }

    void CheckCallout(const zrannotations::Callout& callout, const std::string& id) {
        const bool isFree = callout.GetType() == zrannotations::CALLOUT_TYPE_FREE;
        if (LacksItem(callout) && !isFree) Report({FindingKind::CalloutWithoutItem, id, 0, id, ""});
        const bool leadsNowhere = CheckGoneParts(callout, id);
        const auto drawn = callout.GetDrawnLeaders();
        if (drawn.empty() && !leadsNowhere && !isFree)
            Report({FindingKind::CalloutWithoutLeader, id, 0, id, ""});
        if (m_document.Scene()->GetDrawWhenHidden()) return;  // then dashes tell nothing
        for (const unsigned position : drawn) {
            if (!callout.IsHiddenAsDashedAtPos(position)) continue;
            const std::string path = callout.GetShapeInstanceIdAtPos(position);
            Report({FindingKind::HiddenAnchor, WhereLeads(id, path), 0, id, path});
        }
    }

    bool LacksItem(const zrannotations::Callout& callout) const {
        const auto definition = callout.GetDefinition();
        return definition && definition->RequiresItemList() && !callout.HasItemId();
    }

    /// Whether any was found; each part is told once.
    bool CheckGoneParts(const zrannotations::Callout& callout, const std::string& id) {
        std::set<std::string> told;
        const unsigned leaders = callout.GetLeaderLineCount(true);
        for (unsigned i = 0; i < leaders; ++i) {
            const std::string path = callout.GetShapeInstanceIdAtPos(i);
            const auto part = m_parts.find(path);
            const bool isRemoved = part != m_parts.end() && !IsInScene(part->second);
            if ((!isRemoved && !m_lost.contains(path)) || !told.insert(path).second) continue;
            const auto kind = isRemoved ? FindingKind::LeaderToRemovedPart : FindingKind::LeaderToLostPart;
            Report({kind, WhereLeads(id, path), 0, id, path});
        }
        return !told.empty();
    }

    void Report(Finding finding) { m_findings.push_back(std::move(finding)); }

    const Document& m_document;
    const ProjectData m_saved;
    std::vector<Finding> m_findings;
    std::set<std::string> m_lost;
    std::unordered_map<std::string, SbomPtr> m_parts;  // assemblies too
    std::set<std::string> m_labels;                    // of the items so far
    std::unordered_set<const SbomInstance*> m_opened;  // assemblies with a part below that has an item
};

}  // namespace

std::vector<Finding> CheckCompleteness(const Project& project) { return Check(project).Run(); }

std::string FindingsJson(const std::vector<Finding>& findings) {
    using Json = nlohmann::ordered_json;
    Json document{{"schema", 1}, {"findings", Json::array()}};
    for (const Finding& finding : findings) {
        Json entry{{"kind", WordFor(finding.kind)},
                   {"where", finding.where},
                   {"problem", ProblemOf(finding.kind)},
                   {"remedy", RemedyFor(finding.kind)}};
        if (finding.item != 0) entry["item"] = finding.item;
        if (!finding.callout.empty()) entry["callout"] = finding.callout;
        if (!finding.part.empty()) entry["part"] = finding.part;
        document["findings"].push_back(std::move(entry));
    }
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace zrsheet
