// Scripts: whatever they say, each command is done or refused in one line, what results can be saved and
// opened, and undo leads back to where it began.

#include <gtest/gtest.h>

#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "app/command/CommandTable.h"
#include "app/command/Interpreter.h"
#include "app/command/ScriptReader.h"
#include "app/document/UserError.h"
#include "app/import/process/ImportModel.h"
#include "app/import/process/ModelCache.h"
#include "app/project/ProjectReader.h"
#include "app/project/ProjectWriter.h"
#include "tests/app/document/AssemblyMaker.h"
#include "tests/app/file/TemporaryFolder.h"
#include "tests/fuzz/FuzzTarget.h"
#include "zrk/operation/History.h"

namespace zrsheet {
namespace {

constexpr const char* kModel = "rig.gltf";

Assembly Rig() {
    AssemblyMaker maker("rig");
    const int wedge = maker.Box("Wedge", 1, 1, 1);
    const int pin = maker.Box("Pin", 1, 3, 1);
    const int frame = maker.Node("Frame", -1, -1);
    maker.Node("Left Wedge", frame, wedge);
    maker.Node("Right Wedge", frame, wedge, {3, 0, 0});
    maker.Node("Pin", -1, pin, {0, 3, 0});
    return maker.Get();
}

/// A folder to be in, and the model in it, which is known already: its reader is not started for every input.
class Workshop {
public:
    Workshop() {
        std::filesystem::current_path(m_folder / "");
        setenv("XDG_CACHE_HOME", (m_folder / "cache").c_str(), 1);
        test::PutFile(m_folder / kModel, "the rig");
        ModelCache(ModelCache::UserFolder(), ReaderProgram()).Keep(m_folder / kModel, Rig());
    }
    ~Workshop() { std::filesystem::current_path("/"); }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

private:
    const test::TemporaryFolder m_folder;
};

/// Pictures take long and have tests of their own; files belong into the folder.
bool IsWanted(const std::vector<Word>& words) {
    const std::string_view name = CommandTable::Get().Resolve(words).name;
    if (name == "export" || name == "report") return false;
    const bool isOfFiles =
        name == "import" || name == "open" || name == "save" || name.starts_with("template");
    return !isOfFiles || std::none_of(words.begin(), words.end(), [](const Word& word) {
        return word.text.find('/') != std::string::npos;
    });
}

void Run(Session& session, const std::string& script) {
    std::istringstream lines(script);
    ScriptReader reader(lines);
    Interpreter interpreter(CommandTable::Get(), session);
    std::vector<Word> words;
    while (!session.IsQuitting()) {
        try {
            if (!reader.Next(words)) break;
            if (IsWanted(words)) interpreter.Execute(words);
        } catch (const UserError& error) {
            EXPECT_EQ(std::string_view(error.what()).find('\n'), std::string_view::npos) << error.what();
        }
    }
}

/// What a saved file would hold; it must be one that can be opened.
std::string Saved(const Session& session) {
    session.Doc().Settle();
    const ProjectData project = session.OpenedProject().Capture();
    std::string text = WriteProject(project);
    EXPECT_TRUE(ReadProject(text, "saved") == project);
    return text;
}

void ExpectThereAndBack(Session& session, const std::string& before) {
    zrk::History& history = session.Doc().Scene()->GetHistory();
    const std::string after = Saved(session);
    std::size_t undone = 0;
    while (history.Undo()) ++undone;
    EXPECT_TRUE(before.empty() || Saved(session) == before)
        << "undone to the start: " << Saved(session) << before;
    for (; undone > 0; --undone) EXPECT_TRUE(history.Redo());
    EXPECT_EQ(Saved(session), after) << "all done again";
}

}  // namespace
}  // namespace zrsheet

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const zrsheet::Workshop workshop;
    const std::string script(reinterpret_cast<const char*>(data), size);
    std::ostringstream out;
    zrsheet::Session session({out, {}, {}, 1});
    zrsheet::Document::Settings settings;
    settings.width = 160;  // rays are cast for every pixel, again whenever something moves
    settings.height = 100;
    session.ImportModel(zrsheet::kModel, settings);
    const bool isReplaced =
        script.find("import") != std::string::npos || script.find("open") != std::string::npos;
    const std::string before = isReplaced ? "" : zrsheet::Saved(session);
    zrsheet::Run(session, script);
    zrsheet::ExpectThereAndBack(session, before);
    return 0;
}
