#include "tests/app/document/ModelFiles.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>

#include "app/import/process/ImportModel.h"
#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

Assembly ImportSample() {
    const test::TemporaryFolder folder;
    const fs::path file = folder / "sample.glb";
    if (std::system((ZR_SAMPLE " " + file.string()).c_str()) != 0) throw std::runtime_error("no sample");
    return ImportModel(file);
}

}  // namespace

const Assembly& SampleAssembly() {
    static const Assembly kSample = ImportSample();
    return kSample;
}

std::vector<fs::path> ModelsByOthers() {
    const char* const given = std::getenv("ZR_MODELS");
    const fs::path folder = fs::path(given != nullptr ? given : ZR_MODELS) / "glb";
    std::vector<fs::path> files;
    if (!fs::is_directory(folder)) return files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".glb") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

const Assembly& ImportedModel(const fs::path& file) {
    static std::map<fs::path, Assembly> models;
    const auto known = models.find(file);
    return known != models.end() ? known->second : models.emplace(file, ImportModel(file)).first->second;
}

}  // namespace zrsheet
