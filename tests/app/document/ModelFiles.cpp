#include "tests/app/document/ModelFiles.h"

#include <stdlib.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>

#include "app/import/process/ImportModel.h"

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

Assembly ImportSample() {
    std::string pattern = (fs::temp_directory_path() / "zrsheetXXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    const fs::path file = fs::path(pattern) / "sample.glb";
    if (std::system((ZR_SAMPLE " " + file.string()).c_str()) != 0) throw std::runtime_error("no sample");
    Assembly assembly = ImportModel(file);
    fs::remove_all(pattern);
    return assembly;
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
