#include "app/sheet/Illustrator.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

#include "app/document/InstancePattern.h"
#include "app/document/LabelTemplate.h"
#include "app/document/UserError.h"
#include "callouts/generator/CalloutGenerator.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/world/ComponentLibrary.h"
#include "zrk/world/Kernel.h"
#include "zrk/world/World.h"

namespace zrsheet {
namespace {

using zrk::illustration::SbomInstanceSelectionItem;

constexpr const char* kComponent = "zrcallouts";
constexpr const char* kTagProperty = "Tag";

std::string Quoted(const std::vector<std::string>& patterns) {
    std::string text;
    for (const auto& pattern : patterns) text += " '" + pattern + "'";
    return text;
}

/// Passes the task's progress on to the author.
class ProgressEvent : public zrk::AsyncEvent {
public:
    explicit ProgressEvent(const ProgressSink& sink) : m_sink(sink) {}

    void OnProgress(unsigned char percent) override {
        if (m_sink) m_sink(percent);
    }

private:
    const ProgressSink& m_sink;
};

}  // namespace

Illustrator::Illustrator(ProductModel& model, const SheetOptions& options)
    : m_model(model), m_options(options) {
    m_itemList = zritemlist::ItemList::GetItemListForScene(m_model.Scene());
    ListParts();
    LoadEngine();
}

Illustrator::~Illustrator() { zrannotations::ClearCalloutTemplates(); }

void Illustrator::ListParts() {
    zrk::illustration::ItemsList::Numbering numbering;
    numbering.hierarchical = m_options.isHierarchical;
    Items()->SetNumbering(numbering);
    m_itemList->GenerateFromStructure(m_model.Root(), nullptr);
    for (const unsigned id : Items()->GetItemIds()) {
        const auto instances = Items()->GetOrderedInstances(id);
        du::Symbol tag;
        if (instances.front()->FindProperty(du::Symbol::EMPTY, du::Symbol(kTagProperty), du::Symbol::EMPTY,
                                            tag)) {
            Items()->SetTag(id, tag.Text());
        }
    }
}

void Illustrator::LoadEngine() {
    const auto definition = ParseLabelTemplate(m_options.labelTemplate);
    zrannotations::AddCalloutTemplate(definition);
    du::SmartPtr<du::RefCounted> made;
    try {
        zrk::ComponentLibrary(kComponent).Create("create", "callouts", "calloutengine", made);
    } catch (const std::runtime_error& error) {
        throw UserError(std::string(error.what()) + "; install zrsheet again");
    }
    m_engine = du::DynamicCast<zrcallouts::Callouts>(made);
    if (!m_engine) throw UserError("the component zrcallouts makes no engine; install zrsheet again");
    m_engine->Initialize(m_model.Scene());
    m_engine->SetTemplate(definition);
    m_engine->SetCombineForSamePart(m_options.leaders == LeaderChoice::All);
    m_engine->SetDrawOneForSamePart(m_options.leaders == LeaderChoice::One);
}

void Illustrator::CreateCallouts(const ProgressSink& progress) {
    zrcallouts::CalloutGenerator::Selection selection;
    for (const auto& instance : m_model.Instances()) {
        unsigned id = 0;
        const bool isListed = Items()->GetItemIdForInstance(instance, id);
        if (!isListed || !IsSelected(instance->GetIdentifier().Text(), m_options.selection)) continue;
        selection.emplace_back(new SbomInstanceSelectionItem(instance));
    }
    if (selection.empty()) {
        throw UserError("select" + Quoted(m_options.selection) +
                        ": no part matches; patterns are names or paths such as 'Bolt*' or '/Pump/*'");
    }
    const du::SmartPtr<zrk::AsyncEvent> event(new ProgressEvent(progress));
    zrcallouts::CalloutGenerator::CreateCallouts(m_engine, std::move(selection), event);
    zrk::World::GetWorld()->GetTaskPool()->WaitIdle();
}

// The first round of answers moves the leaders' ends onto the surfaces; the view's timer then asks what
// covers them.
void Illustrator::AnswerPicks() {
    const auto kernel = zrk::Kernel::GetKernel();
    kernel->DispatchEvents();
    m_model.View()->OnTimer();
    kernel->DispatchEvents();
}

std::vector<Illustrator::CalloutPtr> Illustrator::Callouts() const {
    du::SmartPtr<zrk::AnnoSet> annoSet;
    m_model.Scene()->GetAnnoSet(annoSet);
    std::vector<CalloutPtr> callouts;
    for (const auto& annotation : annoSet->GetAnnotations()) {
        if (const auto callout = du::DynamicCast<zrannotations::Callout>(annotation))
            callouts.push_back(callout);
    }
    const auto indexOf = [this](const CalloutPtr& callout) {
        unsigned id = 0;
        return callout->GetItemId(id) ? Items()->GetIndex(id) : ~0U;
    };
    std::vector<std::pair<unsigned, CalloutPtr>> keyed;
    keyed.reserve(callouts.size());
    for (const auto& callout : callouts) keyed.emplace_back(indexOf(callout), callout);
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::transform(keyed.begin(), keyed.end(), callouts.begin(),
                   [](const auto& entry) { return entry.second; });
    return callouts;
}

}  // namespace zrsheet
