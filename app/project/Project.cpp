#include "app/project/Project.h"

#include <utility>

#include "app/import/OpenModel.h"
#include "app/project/ApplyProject.h"
#include "app/project/CaptureProject.h"
#include "app/project/ProjectFile.h"

namespace zrsheet {

Project::Project(Assembly assembly, const std::filesystem::path& model, const Document::Settings& settings)
    : m_document(std::move(assembly), settings), m_record(RecordModel(m_document.Model(), model)) {}

Project::Project(const ProjectData& saved, Assembly assembly, const std::filesystem::path& model)
    : m_document(std::move(assembly), Document::Settings()),
      m_record(RecordModel(m_document.Model(), model)) {
    ModelMatch match = MatchModel(saved, m_record.instances);
    ApplyProject(Rematched(saved, match), m_document, m_record);
    m_changes = std::move(match.changes);
    if (!m_changes.IsEmpty()) {
        for (const auto& callout : m_document.Callouts()) {
            if (!callout->IsCustomCallout()) m_document.Engine()->RegenerateCalloutLabel(callout, true);
        }
    }
    m_document.Settle();
}

std::unique_ptr<Project> Project::Open(const std::filesystem::path& file,
                                       const std::filesystem::path& model) {
    const ProjectData saved = LoadProject(file);
    const std::filesystem::path source = model.empty() ? FindModel(saved.model, file) : model;
    return std::make_unique<Project>(saved, OpenModel(source), source);
}

void Project::Save(const std::filesystem::path& file) const {
    ProjectData project = Capture();
    project.model.path = ModelPathFrom(file, project.model.path);
    SaveProject(project, file);
}

ProjectData Project::Capture() const { return CaptureProject(m_document, m_record); }

std::vector<std::string> Project::Orphans() const {
    std::vector<std::string> paths;
    for (const auto& instance : Capture().orphans) paths.push_back(instance.path);
    return paths;
}

}  // namespace zrsheet
