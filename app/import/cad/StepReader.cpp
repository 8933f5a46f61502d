#include "app/import/cad/StepReader.h"

#include <fmt/format.h>

#include <Interface_CheckIterator.hxx>
#include <STEPCAFControl_ExternFile.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TDocStd_Document.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/import/ImportError.h"
#include "app/import/Utf8Text.h"
#include "app/import/cad/CadKernel.h"
#include "app/import/cad/ShapeTree.h"
#include "app/import/cad/StepProperties.h"
#include "app/import/reading/ReaderProgress.h"

namespace zrsheet {
namespace {

using ExternalFiles = std::map<std::string, Handle(STEPCAFControl_ExternFile)>;

void Load(STEPCAFControl_Reader& reader, const std::filesystem::path& file) {
    reader.SetLayerMode(false);
    reader.SetPropsMode(false);
    reader.SetGDTMode(false);
    reader.SetViewMode(false);
    IFSelect_ReturnStatus status = IFSelect_RetVoid;
    // External files are looked for beside an absolute path only.
    const std::string path = std::filesystem::absolute(file).string();
    DoInCadKernel([&] { status = reader.ReadFile(path.c_str()); });
    if (status != IFSelect_RetDone) {
        throw ImportError("its STEP text is damaged or cut off; export the file again");
    }
}

ExternalFiles ExternalFilesOf(const STEPCAFControl_Reader& reader) {
    ExternalFiles files;
    for (NCollection_DataMap<TCollection_AsciiString, Handle(STEPCAFControl_ExternFile)>::Iterator each(
             reader.ExternFiles());
         each.More(); each.Next()) {
        files.emplace(each.Key().ToCString(), each.Value());
    }
    return files;
}

void TellExternalFiles(const ExternalFiles& files, const std::filesystem::path& folder, Assembly& assembly) {
    for (const auto& [name, file] : files) {
        assembly.externalFiles.push_back(OneLine(name));
        if (!std::filesystem::exists(folder / name)) {
            assembly.warnings.push_back(
                fmt::format("\"{}\" is not beside it; the parts in that file are missing", OneLine(name)));
        } else if (file->GetLoadStatus() != IFSelect_RetDone || !file->GetTransferStatus()) {
            assembly.warnings.push_back(
                fmt::format("\"{}\" is damaged; the parts in that file are missing", OneLine(name)));
        }
    }
}

bool IsOfExternalFile(const char* failure) {
    return std::string_view(failure).starts_with("Can not read external file");  // told by TellExternalFiles
}

void TellDamage(const std::string& file, const Handle(XSControl_WorkSession) & session, Assembly& assembly) {
    Interface_CheckIterator checks = session->TransferReader()->TransientProcess()->CheckList(false);
    int failed = 0;
    std::string first;
    for (checks.Start(); checks.More(); checks.Next()) {
        if (!checks.Value()->HasFailed() || IsOfExternalFile(checks.Value()->CFail(1))) continue;
        if (++failed == 1) first = fmt::format("#{}: {}", checks.Number(), checks.Value()->CFail(1));
    }
    if (failed == 0) return;
    assembly.warnings.push_back(fmt::format("{} entities of {} cannot be read and are left out, the first {}",
                                            failed, file, OneLine(first)));
}

bool HasDamage(const Handle(XSControl_WorkSession) & session) {
    Interface_CheckIterator checks = session->ModelCheckList();
    for (checks.Start(); checks.More(); checks.Next()) {
        if (checks.Value()->HasFailed()) return true;
    }
    return false;
}

// Good files have empty products too, axes and sketches among them.
void TellEmptyProducts(const std::vector<std::string>& names, Assembly& assembly) {
    if (names.empty()) return;
    assembly.warnings.push_back(fmt::format(
        "{} parts have no shape, and the file is damaged; the first is \"{}\"", names.size(), names.front()));
}

}  // namespace

Assembly ReadStep(const std::filesystem::path& file) {
    StartCadKernel();
    STEPCAFControl_Reader reader;
    TellReaderProgress("Reading the model", 0);
    Load(reader, file);
    TellReaderProgress("Building its surfaces", 30);
    Handle(TDocStd_Document) document = NewCadDocument();
    DoInCadKernel([&] { reader.Transfer(document); });
    const LabelProperties properties =
        StepPropertiesOf(reader, XCAFDoc_DocumentTool::ShapeTool(document->Main()));
    const ExternalFiles files = ExternalFilesOf(reader);
    Assembly assembly;
    TellExternalFiles(files, file.parent_path(), assembly);
    DoInCadKernel([&] {
        TellDamage("the file", reader.Reader().WS(), assembly);
        bool isDamaged = HasDamage(reader.Reader().WS());
        for (const auto& [name, external] : files) {
            if (external->GetWS().IsNull()) continue;
            TellDamage('"' + OneLine(name) + '"', external->GetWS(), assembly);
            isDamaged = isDamaged || HasDamage(external->GetWS());
        }
        const std::vector<std::string> empty = ReadShapes(document, properties, assembly);
        if (isDamaged) TellEmptyProducts(empty, assembly);
    });
    return assembly;
}

}  // namespace zrsheet
