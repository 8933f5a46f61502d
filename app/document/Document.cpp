#include "app/document/Document.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "app/document/CalloutIds.h"
#include "app/document/CalloutUpdate.h"
#include "app/document/InstancePattern.h"
#include "app/document/UserError.h"
#include "callouts/generator/CalloutGenerator.h"
#include "du/Localizer.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/object/Checked.h"
#include "zrk/operation/CallStep.h"
#include "zrk/world/ComponentLibrary.h"
#include "zrk/world/Kernel.h"
#include "zrk/world/World.h"

namespace zrsheet {
namespace {

using zrk::illustration::SbomInstanceSelectionItem;

constexpr const char* kComponent = "zrcallouts";
constexpr const char* kTagProperty = "Tag";

std::string Quoted(const Document::Patterns& patterns) {
    std::string text;
    for (const auto& pattern : patterns) text += " '" + pattern + "'";
    return text;
}

/// Passes the task's progress on to the author.
class ProgressEvent : public zrk::AsyncEvent {
public:
    explicit ProgressEvent(const ProgressSink& sink) : m_sink(sink) {}

    void OnProgress(unsigned char percent) override {
        if (m_sink && !m_sink(percent)) Cancel();
    }

private:
    const ProgressSink& m_sink;
};

du::SmartPtr<du::RefCounted> MadeByComponent() {
    du::SmartPtr<du::RefCounted> made;
    try {
        if (!zrk::ComponentLibrary(kComponent).Create("create", "callouts", "calloutengine", made))
            return nullptr;
    } catch (const std::runtime_error& error) {
        throw UserError(std::string(error.what()) + "; install zrsheet again");
    }
    // It knows the words, but there is no memory.
    if (!made) throw std::bad_alloc();
    return made;
}

du::SmartPtr<zrcallouts::Callouts> LoadedEngine() {
    const auto engine = du::DynamicCast<zrcallouts::Callouts>(MadeByComponent());
    if (!engine) throw UserError("the component zrcallouts makes no engine; install zrsheet again");
    return engine;
}

}  // namespace

Document::Document(Assembly assembly, const Settings& settings)
    : m_model(std::move(assembly)), m_page(settings.width, settings.height) {
    m_templates.Define({kFirstTemplate, settings.labelTemplate, {}});
    m_itemList = zritemlist::ItemList::GetItemListForScene(Scene());
    Items()->SetNumbering(settings.numbering);
    ListParts();
    m_engine = LoadedEngine();
    m_engine->Initialize(Scene());
    m_engine->SetTemplate(m_templates.Get(kFirstTemplate)->definition);
    m_templates.SetLanguage(*m_engine, Language());
    ApplyLeaders(settings.leaders);
}

Document::~Document() = default;

void Document::ListParts() {
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

void Document::Record(std::function<void()> undo, std::function<void()> redo) const {
    const auto operation = Scene()->GetHistory().GetOpenOperation();
    if (operation) operation->AddStep(zrk::Checked(new zrk::CallStep(std::move(undo), std::move(redo))));
}

void Document::SetPage(int width, int height) {
    const std::pair after(width, height);
    const std::pair before = std::exchange(m_page, after);
    Record([this, before] { m_page = before; }, [this, after] { m_page = after; });
}

void Document::SetStyle(const zrannotations::CalloutStyle& style) {
    const auto before = std::exchange(m_style, style);
    Record([this, before] { m_style = before; }, [this, style] { m_style = style; });
}

void Document::SetPicture(const PictureChoice& picture) {
    const auto before = std::exchange(m_picture, picture);
    Record([this, before] { m_picture = before; }, [this, picture] { m_picture = picture; });
}

void Document::SetLayout(const LayoutChoice& layout) {
    const auto before = std::exchange(m_layout, layout);
    Record([this, before] { m_layout = before; }, [this, layout] { m_layout = layout; });
}

void Document::SetPaper(const PaperChoice& paper) {
    const auto before = std::exchange(m_paper, paper);
    Record([this, before] { m_paper = before; }, [this, paper] { m_paper = paper; });
}

LeaderChoice Document::Leaders() const {
    if (m_engine->GetDrawOneForSamePart()) return LeaderChoice::One;
    return m_engine->GetCombineForSamePart() ? LeaderChoice::All : LeaderChoice::PerInstance;
}

void Document::ApplyLeaders(LeaderChoice choice) {
    m_engine->SetCombineForSamePart(choice == LeaderChoice::All);
    m_engine->SetDrawOneForSamePart(choice == LeaderChoice::One);
}

void Document::SetLeaders(LeaderChoice choice) {
    const LeaderChoice before = Leaders();
    ApplyLeaders(choice);
    Record([this, before] { ApplyLeaders(before); }, [this, choice] { ApplyLeaders(choice); });
}

std::string Document::Language() const { return du::Localizer::GetLanguage(); }

void Document::ApplyLanguage(const std::string& language) {
    if (!zrk::World::GetWorld()->SetLanguage(language)) {
        throw UserError("language '" + language + "': no texts; there are en, de, fr, es and ja");
    }
    m_templates.SetLanguage(*m_engine, language);
}

void Document::SetLanguage(const std::string& language) {
    const std::string before = Language();
    ApplyLanguage(language);
    Record([this, before] { ApplyLanguage(before); }, [this, language] { ApplyLanguage(language); });
}

void Document::DefineTemplate(const NamedTemplate& named) {
    const std::string& name = named.name;
    const auto before = m_templates.Get(name);
    m_templates.Define(named);
    const auto after = m_templates.Get(name);
    Record([this, name, before] { m_templates.Put(name, before); },
           [this, name, after] { m_templates.Put(name, after); });
}

void Document::RemoveTemplate(const std::string& name) {
    const auto before = m_templates.Get(name);
    if (!before) throw UserError("template '" + name + "': there is none of that name");
    if (name == CurrentTemplate()) {
        throw UserError("template '" + name + "': it is in use for new callouts; use another one first");
    }
    m_templates.Put(name, std::nullopt);
    Record([this, name, before] { m_templates.Put(name, before); },
           [this, name] { m_templates.Put(name, std::nullopt); });
}

std::string Document::CurrentTemplate() const { return m_engine->GetTemplate()->GetId(); }

TemplateLibrary::Entry Document::DefinedTemplate(const std::string& name) {
    if (const auto entry = m_templates.Get(name)) return *entry;
    for (const NamedTemplate& ready : ReadTemplates(ReadyTemplates())) {
        if (ready.name == name) DefineTemplate(ready);
    }
    if (const auto entry = m_templates.Get(name)) return *entry;
    throw UserError("there is no template '" + name + "'; 'template define' makes one");
}

void Document::UseTemplate(const std::string& name) {
    const auto entry = DefinedTemplate(name);
    const auto before = m_engine->GetTemplate();
    m_engine->SetTemplate(entry.definition);
    Record([this, before] { m_engine->SetTemplate(before); },
           [this, after = entry.definition] { m_engine->SetTemplate(after); });
}

std::vector<Document::SbomPtr> Document::FindInstances(const Patterns& patterns) const {
    std::vector<SbomPtr> found;
    for (const auto& instance : m_model.Instances()) {
        if (IsSelected(instance->GetIdentifier().Text(), patterns)) found.push_back(instance);
    }
    return found;
}

std::vector<Document::ShapePtr> Document::FindShapes(const Patterns& patterns) const {
    std::vector<ShapePtr> found;
    for (const auto& instance : FindInstances(patterns)) {
        ShapePtr shape;
        Scene()->GetShapeInstance(instance->GetEbomInstance(), shape);
        if (shape) found.push_back(shape);
    }
    return found;
}

std::vector<Document::CalloutPtr> Document::FindCallouts(const std::string& name) const {
    auto callouts = Callouts();
    const auto ids = CalloutIds(callouts);
    const auto id = std::find(ids.begin(), ids.end(), name);
    if (id != ids.end()) return {callouts[static_cast<std::size_t>(id - ids.begin())]};
    std::erase_if(callouts, [&name](const CalloutPtr& callout) {
        return !MatchesGlob(callout->GetMarkupText().Text(), name);
    });
    return callouts;
}

std::vector<du::SmartPtr<zrannotations::Inset>> Document::Insets() const {
    du::SmartPtr<zrk::AnnoSet> annoSet;
    Scene()->GetAnnoSet(annoSet);
    std::vector<du::SmartPtr<zrannotations::Inset>> insets;
    for (const auto& annotation : annoSet->GetAnnotations()) {
        if (const auto inset = du::DynamicCast<zrannotations::Inset>(annotation)) insets.push_back(inset);
    }
    return insets;
}

std::vector<Document::CalloutPtr> Document::Callouts() const {
    du::SmartPtr<zrk::AnnoSet> annoSet;
    Scene()->GetAnnoSet(annoSet);
    std::vector<std::pair<unsigned, CalloutPtr>> keyed;
    for (const auto& annotation : annoSet->GetAnnotations()) {
        const auto callout = du::DynamicCast<zrannotations::Callout>(annotation);
        if (!callout) continue;
        unsigned id = 0;
        keyed.emplace_back(callout->GetItemId(id) ? Items()->GetIndex(id) : ~0U, callout);
    }
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<CalloutPtr> callouts;
    callouts.reserve(keyed.size());
    for (auto& [index, callout] : keyed) callouts.push_back(std::move(callout));
    return callouts;
}

void Document::SetPlacedByHand(const CalloutPtr& callout, bool isPlaced) {
    if (IsPlacedByHand(callout) == isPlaced) return;
    const auto set = [this, callout](bool is) {
        if (is) {
            m_placedByHand.insert(callout);
        } else {
            m_placedByHand.erase(callout);
        }
    };
    set(isPlaced);
    Record([set, isPlaced] { set(!isPlaced); }, [set, isPlaced] { set(isPlaced); });
}

void Document::CreateCallouts(const Patterns& patterns, const ProgressSink& progress) {
    std::vector<SbomPtr> listed = FindInstances(patterns);
    std::erase_if(listed, [this](const SbomPtr& instance) {
        unsigned id = 0;
        return !Items()->GetItemIdForInstance(instance, id);
    });
    if (listed.empty()) {
        throw UserError("select" + Quoted(patterns) +
                        ": no part matches; patterns are names or paths such as 'Bolt*' or '/Pump/*'");
    }
    zrcallouts::CalloutGenerator::Selection selection;
    for (const auto& instance : CalloutUpdate(*this).Missing(listed))
        selection.emplace_back(new SbomInstanceSelectionItem(instance));
    const du::SmartPtr<zrk::AsyncEvent> event(new ProgressEvent(progress));
    zrcallouts::CalloutGenerator::CreateCallouts(m_engine, std::move(selection), event);
    zrk::World::GetWorld()->GetTaskPool()->WaitIdle();
    if (event->IsCancelled()) throw Interrupted();
}

// A check that meets nothing leaves a leader as it was. The same view is to give the same leaders whatever
// was seen before, so all are taken for visible first.
void Document::TakeLeadersForVisible() const {
    for (const CalloutPtr& callout : Callouts()) {
        const unsigned leaders = callout->GetLeaderLineCount(false);
        for (unsigned i = 0; i < leaders; ++i) {
            callout->SetHiddenAsDashedAtPos(false, i);
            callout->SetDimAtPos(false, i, callout->GetDimColorAtPos(i));
        }
    }
}

// The first round of answers moves the leaders' ends onto the surfaces; what covers them is asked then. The
// view's timer sees only that the camera changed.
void Document::Settle() {
    const auto kernel = zrk::Kernel::GetKernel();
    zrk::World::GetWorld()->GetTaskPool()->WaitIdle();
    kernel->DispatchEvents();
    const Look look = CurrentLook();
    const bool hasCameraChanged = !(look.camera == m_checked.camera);
    const bool hasOtherChanged =
        look.revision != m_checked.revision || look.drawsHidden != m_checked.drawsHidden;
    m_checked = look;
    m_engine->OnWindowSize();  // what insets show
    if ((hasCameraChanged || hasOtherChanged) && !look.drawsHidden) TakeLeadersForVisible();
    if (hasOtherChanged) m_engine->OnDrawWhenHidden(View());
    kernel->DispatchEvents();
    View()->OnTimer();
    kernel->DispatchEvents();
}

Document::Look Document::CurrentLook() const {
    Look look;
    look.revision = Scene()->GetRevision();
    look.drawsHidden = Scene()->GetDrawWhenHidden();
    View()->GetCamera(look.camera);
    return look;
}

bool Document::Undo() {
    const bool isDone = Scene()->GetHistory().Undo();
    Settle();
    return isDone;
}

bool Document::Redo() {
    const bool isDone = Scene()->GetHistory().Redo();
    Settle();
    return isDone;
}

}  // namespace zrsheet
