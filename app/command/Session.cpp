#include "app/command/Session.h"

#include <utility>

#include "app/document/UserError.h"
#include "app/import/OpenModel.h"
#include "app/project/ProjectFile.h"
#include "app/sheet/Figure.h"
#include "app/text/ProgramText.h"
#include "du/Localizer.h"
#include "zrk/operation/History.h"
#include "zrk/world/World.h"

namespace zrsheet {

Session::Session(Surroundings surroundings)
    : m_surroundings(std::move(surroundings)), m_host(m_surroundings.threads) {
    du::Localizer::SetLanguage(m_surroundings.language);
    SetSpokenLanguage(m_surroundings.keepsLanguage ? m_surroundings.language : "");
}

Session::~Session() = default;

void Session::Progress(std::string_view stage, int percent) const {
    if (m_surroundings.progress) m_surroundings.progress(stage, percent);
}

void Session::Warn(const std::string& line) const {
    if (m_surroundings.warn) m_surroundings.warn(line);
}

bool Session::IsInterrupted() const { return m_surroundings.isInterrupted && m_surroundings.isInterrupted(); }

Document& Session::Doc() const {
    static_cast<void>(OpenedProject());
    return m_project->Doc();
}

const Project& Session::OpenedProject() const {
    if (!m_project) throw UserError("no illustration is open; begin with 'import MODEL' or 'open PROJECT'");
    return *m_project;
}

std::ostream& Session::Out() const {
    Progress({}, 100);
    return m_surroundings.out;
}

Assembly Session::ReadModel(const std::filesystem::path& model) const {
    Progress(Text("stage-model"), 0);
    Assembly assembly =
        OpenModel(model, [this](std::string_view stage, int percent) { Progress(stage, percent); });
    for (const std::string& warning : assembly.warnings) {
        if (!m_surroundings.warn) break;
        Progress({}, 100);
        m_surroundings.warn(model.string() + ": " + warning);
    }
    return assembly;
}

// One document at a time, for the host shows one model: what is open is closed as late as can be.
void Session::ImportModel(const std::filesystem::path& model, const Document::Settings& settings) {
    Assembly assembly = ReadModel(model);
    Close();
    m_project = std::make_unique<Project>(std::move(assembly), model, settings);
    Doc().SetLanguage(m_surroundings.language);
    FrameModel(Doc(), ViewDirection());
    Doc().Settle();
    MarkSaved({});
}

void Session::OpenProject(const std::filesystem::path& file, const std::filesystem::path& model) {
    Progress(Text("stage-project"), 0);
    const ProjectData saved = LoadProject(file);
    const std::filesystem::path found = model.empty() ? FindModel(saved.model, file) : model;
    Assembly assembly = ReadModel(found);
    Close();
    m_project = std::make_unique<Project>(saved, std::move(assembly), found);
    Doc().Settle();
    MarkSaved(file);
}

// Callouts let go of their parts on the task pool. Until that is over, what comes next would get other memory
// from run to run, and where callouts are equal their order goes by it.
void Session::Close() {
    if (m_project) {
        m_project.reset();
        zrk::World::GetWorld()->GetTaskPool()->WaitIdle();
    }
    m_selection.clear();
    m_file.clear();
}

void Session::MarkSaved(const std::filesystem::path& file) {
    m_file = file;
    m_savedEntries = Doc().Scene()->GetHistory().GetUndoCount();
}

bool Session::IsModified() const {
    return m_project && m_savedEntries != Doc().Scene()->GetHistory().GetUndoCount();
}

// A new entry takes the place of what had been undone; what was saved beyond it cannot be reached any more.
void Session::OnAction(std::size_t entriesBefore) {
    const bool isNew = Doc().Scene()->GetHistory().GetUndoCount() > entriesBefore;
    if (isNew && m_savedEntries && *m_savedEntries > entriesBefore) m_savedEntries.reset();
}

bool Session::MayClose() {
    if (!IsModified()) return true;
    if (!m_surroundings.ask) {
        throw UserError("there are unsaved changes; 'save FILE' first, or end the command with 'discard'");
    }
    const std::string name = m_file.empty() ? Doc().Model().Name() : m_file.string();
    const Answer answer = m_surroundings.ask(Text("ask-save", {{"name", name}}));
    if (answer == Answer::Save) Save(m_file);
    return answer != Answer::Cancel;
}

void Session::Save(const std::filesystem::path& file) {
    if (file.empty())
        throw UserError("the illustration has no file yet; give it one with 'save FILE.zrsheet'");
    OpenedProject().Save(file);
    MarkSaved(file);
}

void Session::ReportUnsaved(std::ostream& out) const {
    Out().flush();
    if (m_isQuitting || !IsModified()) return;
    out << "zrsheet: the changes were not saved; end with 'save FILE', or with 'quit discard' if they may go"
        << std::endl;
}

}  // namespace zrsheet
