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

#include "app/import/ImportError.h"
#include "app/import/Utf8Text.h"
#include "app/import/cad/CadKernel.h"
#include "app/import/cad/ShapeTree.h"
#include "app/import/cad/StepProperties.h"

namespace zrsheet {
namespace {

using ExternalFiles = std::map<std::string, Handle(STEPCAFControl_ExternFile)>;

void Load(STEPCAFControl_Reader& reader, const std::filesystem::path& file) {
    reader.SetLayerMode(false);
    reader.SetPropsMode(false);
    reader.SetGDTMode(false);
    reader.SetViewMode(false);
    IFSelect_ReturnStatus status = IFSelect_RetVoid;
    DoInCadKernel([&] { status = reader.ReadFile(file.c_str()); });
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

void TellDamage(const Handle(XSControl_WorkSession) & session, Assembly& assembly) {
    Interface_CheckIterator checks = session->TransferReader()->TransientProcess()->CheckList(false);
    int failed = 0;
    std::string first;
    for (checks.Start(); checks.More(); checks.Next()) {
        if (!checks.Value()->HasFailed()) continue;
        if (++failed == 1) first = fmt::format("#{}: {}", checks.Number(), checks.Value()->CFail(1));
    }
    if (failed == 0) return;
    assembly.warnings.push_back(fmt::format(
        "{} of its entities cannot be read and are left out, the first {}", failed, OneLine(first)));
}

}  // namespace

Assembly ReadStep(const std::filesystem::path& file) {
    StartCadKernel();
    STEPCAFControl_Reader reader;
    Load(reader, file);
    Handle(TDocStd_Document) document = NewCadDocument();
    DoInCadKernel([&] { reader.Transfer(document); });
    const LabelProperties properties =
        StepPropertiesOf(reader, XCAFDoc_DocumentTool::ShapeTool(document->Main()));
    const ExternalFiles files = ExternalFilesOf(reader);
    Assembly assembly;
    TellExternalFiles(files, file.parent_path(), assembly);
    TellDamage(reader.Reader().WS(), assembly);
    ReadShapes(document, properties, assembly);
    return assembly;
}

}  // namespace zrsheet
