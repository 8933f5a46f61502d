// What a script or an author at the shell works with: the open illustration, its file, and what is selected.

#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "app/project/Project.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet {

/// One at a time in a process, for it runs the host. One thread.
class Session {
public:
    enum class Answer { Save, Discard, Cancel };

    /// What the session reaches the world through; all but the stream may be empty.
    struct Surroundings {
        std::ostream& out;                                                  // what commands print
        std::function<void(std::string_view stage, int percent)> progress;  // an empty stage: it is over
        std::function<Answer(const std::string& question)> ask;             // empty: nobody is there to ask
        unsigned threads = 1;
        std::function<void(const std::string& line)> warn =
            {};                                    // of what a model lacks or a sheet has no room for
        std::function<bool()> isInterrupted = {};  // whether the author gives up the command; any thread
        std::string language = "en";  // of illustrations that are begun, and spoken until one is open
        bool keepsLanguage = false;   // speaks it whatever is open, until 'language' chooses another
    };

    /// The surroundings' stream outlives this.
    explicit Session(Surroundings surroundings);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    /// Wipes what shows the progress.
    [[nodiscard]] std::ostream& Out() const;
    void Progress(std::string_view stage, int percent) const;
    /// A line about what is not as it should be.
    void Warn(const std::string& line) const;
    /// Whether the command that runs is to give up.
    [[nodiscard]] bool IsInterrupted() const;
    [[nodiscard]] unsigned Threads() const { return m_surroundings.threads; }

    [[nodiscard]] bool HasDocument() const { return m_project != nullptr; }
    /// Throw UserError when none is open.
    [[nodiscard]] Document& Doc() const;
    [[nodiscard]] const Project& OpenedProject() const;
    /// Both close what is open once the file is read. Throw UserError or ImportError.
    void ImportModel(const std::filesystem::path& model, const Document::Settings& settings);
    /// `model`: where its model is now; empty: where the project says.
    void OpenProject(const std::filesystem::path& file, const std::filesystem::path& model = {});

    /// Empty: never saved.
    [[nodiscard]] const std::filesystem::path& File() const { return m_file; }
    /// Throws UserError when `file` is empty or cannot be written.
    void Save(const std::filesystem::path& file);
    /// Undo and redo lead back to what was saved, too.
    [[nodiscard]] bool IsModified() const;
    /// To be told after an action that made a new entry in the history, which had `entriesBefore`.
    void OnAction(std::size_t entriesBefore);
    /// Whether an action may let go of the document: nothing is unsaved, or the author, asked, agrees. Throws
    /// UserError when nobody is there to ask.
    [[nodiscard]] bool MayClose();

    /// Patterns that `create` falls back on; empty: everything.
    [[nodiscard]] const std::vector<std::string>& Selection() const { return m_selection; }
    void Select(std::vector<std::string> patterns) { m_selection = std::move(patterns); }

    /// One line to `out` if there are unsaved changes that nobody said to discard.
    void ReportUnsaved(std::ostream& out) const;
    [[nodiscard]] bool IsQuitting() const { return m_isQuitting; }
    /// The author agrees that what is unsaved is lost.
    void Quit() { m_isQuitting = true; }

private:
    [[nodiscard]] Assembly ReadModel(const std::filesystem::path& model) const;

    void Close();
    void MarkSaved(const std::filesystem::path& file);

    const Surroundings m_surroundings;
    const zrkapp::illustration::HostSession m_host;
    std::unique_ptr<Project> m_project;
    std::filesystem::path m_file;
    std::optional<std::size_t>
        m_savedEntries;  // length of the history when it was saved; empty: not reachable
    std::vector<std::string> m_selection;
    bool m_isQuitting = false;
};

}  // namespace zrsheet
