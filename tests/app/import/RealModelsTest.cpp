#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "app/import/ImportModel.h"

namespace zrsheet {
namespace {

std::filesystem::path ModelsFolder() {
    const char* const given = std::getenv("ZR_MODELS");
    return given != nullptr ? given : ZR_MODELS;
}

// Assemblies that others made with other programs: packed and not, nested and flat, shared and copied.
TEST(RealModels, AreAllImported) {
    const std::filesystem::path folder = ModelsFolder() / "glb";
    if (!std::filesystem::is_directory(folder))
        GTEST_SKIP() << "no models at " << folder << ", set ZR_MODELS";
    std::size_t models = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".glb") continue;
        const Assembly assembly = ImportModel(entry.path());
        const auto instances =
            std::ranges::count_if(assembly.nodes, [](const auto& node) { return node.part >= 0; });
        EXPECT_GT(instances, 10) << entry.path();
        EXPECT_LT(assembly.parts.size(), 40U) << entry.path();  // repeated bodies are recognised
        ++models;
    }
    EXPECT_GT(models, 0U);
}

}  // namespace
}  // namespace zrsheet
