// An application with a project in it, for tests: it can be edited as authors do, closed and opened again.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/project/Project.h"
#include "tests/app/file/TemporaryFolder.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet::test {

class ProjectStage {
public:
    using CalloutPtr = Document::CalloutPtr;

    ProjectStage();

    /// Closes what is open and begins anew, with callouts for everything.
    void Begin(const Assembly& assembly, const Document::Settings& settings = {});
    /// Closes what is open and opens what it was, with that model.
    void Reopen(const Assembly& assembly);
    void Import(const std::filesystem::path& model);
    void Load(const std::filesystem::path& file, const std::filesystem::path& model = {});

    Project& Get() { return *m_project; }
    Document& Doc() { return m_project->Doc(); }
    /// The text of the file that would be saved.
    std::string Text() const;

    /// What a project holds that golden scenes cannot make, and every kind of object that callouts refer to.
    void EditAsNoCommandDoes();

    CalloutPtr CalloutOf(unsigned item);
    /// Makes one of the callouts at these places in the order of the list.
    void Combine(std::size_t first, std::size_t second);
    /// For each callout in turn, which of its leaders are drawn, dashed or both.
    std::vector<std::string> Looks();

private:
    void Show(const CalloutPtr& callout);
    void AddAnnotations();
    void ChangeCallouts();

    const TemporaryFolder m_folder;
    const zrkapp::illustration::HostSession m_session;
    std::unique_ptr<Project> m_project;
};

}  // namespace zrsheet::test
