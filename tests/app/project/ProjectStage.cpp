#include "tests/app/project/ProjectStage.h"

#include "app/document/SymbolShapes.h"
#include "app/document/ViewDirection.h"
#include "app/import/process/ImportModel.h"
#include "app/project/ProjectReader.h"
#include "app/project/ProjectWriter.h"
#include "zrannotations/CombinedCallout.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/annotation/AnnoSet.h"

namespace zrsheet::test {
namespace {

using zrannotations::Callout;

du::SmartPtr<zrk::AnnoSet> AnnoSetOf(const Document& document) {
    du::SmartPtr<zrk::AnnoSet> annoSet;
    document.Scene()->GetAnnoSet(annoSet);
    return annoSet;
}

}  // namespace

ProjectStage::ProjectStage() : m_session(2) { PutFile(m_folder / "model.glb", "a model"); }

void ProjectStage::Begin(const Assembly& assembly, const Document::Settings& settings) {
    m_project.reset();
    m_project = std::make_unique<Project>(assembly, m_folder / "model.glb", settings);
    Doc().Model().LookAt(ParseViewDirection("iso"), 640, 480, 60.0);
    Doc().CreateCallouts({}, {});
    Doc().Settle();
}

void ProjectStage::Reopen(const Assembly& assembly) {
    const ProjectData saved = ReadProject(Text(), "a.zrsheet");
    m_project.reset();
    m_project = std::make_unique<Project>(saved, assembly, m_folder / "model.glb");
}

void ProjectStage::Import(const std::filesystem::path& model) {
    m_project.reset();
    m_project = std::make_unique<Project>(ImportModel(model), model, Document::Settings());
}

void ProjectStage::Load(const std::filesystem::path& file, const std::filesystem::path& model) {
    m_project.reset();
    m_project = Project::Open(file, model);
}

std::string ProjectStage::Text() const { return WriteProject(m_project->Capture()); }

ProjectStage::CalloutPtr ProjectStage::CalloutOf(unsigned item) {
    for (const auto& callout : Doc().Callouts()) {
        if (callout->ReferencesItemId(item)) return callout;
    }
    return nullptr;
}

void ProjectStage::Combine(std::size_t first, std::size_t second) {
    const auto callouts = Doc().Callouts();
    zrannotations::CombinedCallout::Combine({callouts[first], callouts[second]}, nullptr);
}

void ProjectStage::Show(const CalloutPtr& callout) { AnnoSetOf(Doc())->AddAnnotationToSet(callout, nullptr); }

std::vector<std::string> ProjectStage::Looks() {
    std::vector<std::string> looks;
    for (const auto& callout : Doc().Callouts()) {
        std::string look = callout->GetMarkupText().Text() + ":";
        for (const unsigned leader : callout->GetDrawnLeaders())
            look += callout->IsHiddenAsDashedAtPos(leader) ? " dashed" : " solid";
        looks.push_back(look);
    }
    return looks;
}

void ProjectStage::EditAsNoCommandDoes() {
    Doc().View()->SetBackgroundColors({0.1F, 0.2F, 0.3F, 1}, {1, 1, 0, 1}, {0, 0, 0, 1});
    Doc().Scene()->SetPhantom(Doc().FindShapes({}).front(), true);
    AddAnnotations();
    ChangeCallouts();
    Doc().Settle();
}

void ProjectStage::AddAnnotations() {
    const auto annoSet = AnnoSetOf(Doc());
    const du::SmartPtr<zrk::Instance> arrow(new zrk::Instance(
        du::SmartPtr<zrk::ComponentInstance>(new zrk::ComponentInstance(du::Symbol("symbol-1"))), "arrow",
        SymbolComponent("arrow"), dg::Location::IDENTITY));
    const du::SmartPtr<zrk::Annotation> annotation(new zrannotations::SymbolAnnotation(arrow));
    annoSet->AddAnnotationToSet(annotation, nullptr);
    const auto shape = Doc().Scene()->CreateShapeInstance(arrow);
    const CalloutPtr onArrow(new Callout);
    onArrow->Initialize(Doc().Engine()->GetTemplate(), shape, true, nullptr);
    onArrow->SetSymbolIdAtPos(annotation->Id(), 0);
    Show(onArrow);
    Doc().Scene()->SetVisible(shape, false);
    const CalloutPtr note(new Callout);
    note->InitializeFree(Doc().Engine()->GetTemplate(), {1, 2, 3});
    note->SetCustomCallout(true);
    note->SetText(du::Symbol("Grease"), false);
    note->GetLocalizableString() = du::Symbol("Grease");
    note->GetLocalizableString().SetTranslation("de", du::Symbol("Fetten"));
    Show(note);
    const du::SmartPtr<zrannotations::Inset> inset(
        new zrannotations::Inset(Doc().View(), {{320, 240, 0}, {80, 80, 0}, 60, 2.5F}));
    annoSet->AddAnnotationToSet(inset, nullptr);
}

void ProjectStage::ChangeCallouts() {
    auto callouts = Doc().Callouts();
    callouts[0]->SetLabelPosition({0.5, 0.25, 0.125});
    callouts[0]->SetText(du::Symbol("not what is generated"), false);
    callouts[1]->SetItemId(12345);
    callouts[1]->SetLabelScreenSpaceMode(Doc().View());
    callouts[2]->LeadThrough(Doc().Insets().front(), 0);
    AnnoSetOf(Doc())->RemoveAnnotationFromSet(callouts[5], nullptr);
    AnnoSetOf(Doc())->AddReferencedAnnotation(callouts[5]);
    Combine(3, 4);
}

}  // namespace zrsheet::test
