#include "app/import/reading/ReadModel.h"

#include "app/import/ImportError.h"
#include "app/import/cad/IgesReader.h"
#include "app/import/cad/StepReader.h"
#include "app/import/gltf/GltfReader.h"
#include "app/import/reading/ModelFormat.h"
#include "app/import/reading/ReadFile.h"
#include "app/import/stl/StlReader.h"

namespace zrsheet {
namespace {

ModelFormat FormatOfFile(const std::filesystem::path& file) {
    const std::string bytes = ReadFile(file);
    if (bytes.empty()) throw ImportError("the file is empty; export it again");
    return FormatOf(bytes);
}

}  // namespace

Assembly ReadModel(const std::filesystem::path& file) {
    switch (FormatOfFile(file)) {
        case ModelFormat::Gltf:
            return ReadGltf(file);
        case ModelFormat::Step:
            return ReadStep(file);
        case ModelFormat::Iges:
            return ReadIges(file);
        case ModelFormat::Stl:
            return ReadStl(file);
        case ModelFormat::Unknown:
            break;
    }
    throw ImportError(
        "the file is no glTF (.glb, .gltf), STEP (.stp, .step, .p21), IGES or STL model, or its beginning is "
        "damaged; export it as STEP or glTF");
}

}  // namespace zrsheet
