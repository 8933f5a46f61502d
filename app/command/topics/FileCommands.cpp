#include "app/command/topics/FileCommands.h"

#include <filesystem>
#include <vector>

#include "app/command/Session.h"
#include "app/document/UserError.h"
#include "app/export/ExportSheet.h"
#include "app/export/ReportExporter.h"
#include "app/file/AtomicFile.h"
#include "app/sheet/SheetMaker.h"
#include "app/sheet/SheetQuality.h"
#include "app/text/ProgramText.h"

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

bool MayReplace(Session& session, bool discards) { return discards || session.MayClose(); }

void Import(Session& session, Arguments& arguments) {
    const fs::path model = arguments.Take("MODEL");
    Document::Settings settings;
    settings.numbering.hierarchical = arguments.TakeKeyword("hierarchical");
    const bool discards = arguments.TakeKeyword("discard");
    arguments.ExpectEnd();
    if (!MayReplace(session, discards)) return;
    session.ImportModel(model, settings);
    const ProductModel& product = session.Doc().Model();
    session.Out() << Text("imported", {{"name", product.Name()},
                                       {"instances", product.LeafCount()},
                                       {"parts", product.PartCount()}})
                  << "\n";
}

/// How the model differs from the one that was saved.
void ReportChanges(const ModelChanges& changes, std::ostream& out) {
    const auto tell = [&out](const char* id, const std::vector<std::string>& paths) {
        for (const std::string& path : paths) out << Text(id, {{"part", path}}) << "\n";
    };
    tell("model-missing", changes.missing);
    for (const auto& move : changes.moved)
        out << Text("model-moved", {{"to", move.to}, {"from", move.from}}) << "\n";
    tell("model-found", changes.found);
    tell("model-added", changes.added);
}

void Open(Session& session, Arguments& arguments) {
    const fs::path model = arguments.TakeOption("model").value_or("");
    const fs::path file = arguments.Take("PROJECT");
    const bool discards = arguments.TakeKeyword("discard");
    arguments.ExpectEnd();
    if (!MayReplace(session, discards)) return;
    session.OpenProject(file, model);
    ReportChanges(session.OpenedProject().Changes(), session.Out());
}

void Save(Session& session, Arguments& arguments) {
    const fs::path file = arguments.IsEmpty() ? session.File() : fs::path(arguments.Take("PROJECT"));
    arguments.ExpectEnd();
    session.Save(file);
}

void CheckExport(const std::string& file) {
    if (!CanExport(file)) {
        std::string known;
        for (const auto extension : ExportExtensions())
            known.append(known.empty() ? "" : ", ").append(extension);
        throw UserError("'" + file + "': its format is not known; use one of " + known);
    }
    CheckTarget(file);
}

Sheet Draw(Session& session) {
    session.Progress(Text("stage-picture"), 0);
    return DrawSheet(session.Doc(), session.Threads());
}

void Export(Session& session, Arguments& arguments) {
    const auto files = arguments.TakeSome("FILE");
    for (const std::string& file : files) CheckExport(file);
    const Sheet sheet = Draw(session);
    for (const std::string& notice : FaultNotices(sheet)) session.Warn(notice);
    std::vector<SheetFile> outputs;
    outputs.reserve(files.size());
    for (const std::string& file : files) outputs.push_back({sheet, file});
    ExportSheets(outputs);
}

void Report(Session& session, Arguments& arguments) {
    const fs::path file = arguments.Take("FILE");
    arguments.ExpectEnd();
    CheckTarget(file);
    ExportReport(Draw(session), file);
}

void Quit(Session& session, Arguments& arguments) {
    const bool discards = arguments.TakeKeyword("discard");
    arguments.ExpectEnd();
    if (MayReplace(session, discards)) session.Quit();
}

}  // namespace

CommandTopic FileCommands() {
    return {
        "Files",
        {{"import", "MODEL [hierarchical] [discard]", "begin an illustration of a model",
          "Reads a STEP (.stp, .step, .p21), glTF 2.0 (.glb, .gltf), IGES or STL file, lists its parts and "
          "looks "
          "at them from iso. 'hierarchical' "
          "numbers parts below their assemblies: 1, 1.1, 1.2. There are no callouts until 'create'.",
          "import pump.glb", Effect::Anything, "", Import},
         {"open", "PROJECT [model=MODEL] [discard]", "open a project",
          "Reads a .zrsheet file and its model, which may have moved: model=MODEL. What the model has lost "
          "since is kept and listed by 'list "
          "orphans'. With unsaved changes it asks, or in a script fails, unless told to 'discard' them.",
          "open pump.zrsheet", Effect::Anything, "", Open},
         {"save", "[PROJECT]", "save the project",
          "Without a file name, to the file that was opened or saved last. The file holds the old or the new "
          "state at every moment.",
          "save pump.zrsheet", Effect::Reads, "", Save},
         {"export", "FILE...", "write the sheet",
          "The extension chooses the format: .svg, .png, .html, .pdf, .json, .csv, .xlsx or .xml "
          "(docs/PARTS_DATA.md). "
          "A PDF is as large as the sheet; 'page' puts it on paper. All are written or none.",
          "export pump.svg pump.csv", Effect::Reads, "", Export},
         {"report", "FILE", "write where everything stands on the page, for programs",
          "A JSON file; places are page pixels.", "report pump.json", Effect::Reads, "", Report},
         {"quit", "[discard]", "end",
          "With unsaved changes it asks, or in a script fails, unless told to 'discard' them.", "quit",
          Effect::Anything, "", Quit}}};
}

}  // namespace zrsheet
