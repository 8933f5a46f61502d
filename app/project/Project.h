// An open illustration that can be saved.

#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/document/Document.h"
#include "app/project/ModelMatch.h"
#include "app/project/ModelRecord.h"
#include "app/project/ProjectData.h"

namespace zrsheet {

/// Needs a host session; one at a time. One thread.
class Project {
public:
    /// A new one, of the assembly just read from `model`. Throws UserError.
    Project(Assembly assembly, const std::filesystem::path& model, const Document::Settings& settings);
    /// A saved one with the assembly just read from `model`, which may have changed since: parts are found
    /// again, and labels tell what is present. Nothing is in the history. Throws UserError.
    Project(const ProjectData& saved, Assembly assembly, const std::filesystem::path& model);

    /// Reads a project and its model. `model`: where that is now; empty: where the project says. Throws
    /// UserError and ImportError.
    [[nodiscard]] static std::unique_ptr<Project> Open(const std::filesystem::path& file,
                                                       const std::filesystem::path& model = {});
    /// Throws UserError or FileError; what stood there is untouched then.
    void Save(const std::filesystem::path& file) const;
    /// As it stands now, with the model's absolute path.
    [[nodiscard]] ProjectData Capture() const;

    [[nodiscard]] Document& Doc() { return m_document; }
    [[nodiscard]] const Document& Doc() const { return m_document; }
    /// What had changed in the model when the project was opened.
    [[nodiscard]] const ModelChanges& Changes() const { return m_changes; }
    /// The paths of parts that the project refers to and the model has not.
    [[nodiscard]] std::vector<std::string> Orphans() const;

private:
    Document m_document;
    ModelRecord m_record;
    ModelChanges m_changes;
};

}  // namespace zrsheet
