#include "app/import/cad/IgesReader.h"

#include <IGESCAFControl_Reader.hxx>
#include <TDocStd_Document.hxx>

#include "app/import/ImportError.h"
#include "app/import/cad/CadKernel.h"
#include "app/import/cad/ShapeTree.h"

namespace zrsheet {

Assembly ReadIges(const std::filesystem::path& file) {
    StartCadKernel();
    IGESCAFControl_Reader reader;
    IFSelect_ReturnStatus status = IFSelect_RetVoid;
    Handle(TDocStd_Document) document = NewCadDocument();
    DoInCadKernel([&] {
        status = reader.ReadFile(file.c_str());
        if (status == IFSelect_RetDone) reader.Transfer(document);
    });
    if (status != IFSelect_RetDone) throw ImportError("its IGES text is damaged; export the file again");
    Assembly assembly;
    ReadShapes(document, {}, assembly);
    return assembly;
}

}  // namespace zrsheet
