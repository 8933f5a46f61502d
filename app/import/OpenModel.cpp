#include "app/import/OpenModel.h"

#include <chrono>
#include <utility>

#include "app/import/process/ModelCache.h"

namespace zrsheet {
namespace {

constexpr std::chrono::milliseconds kWorthKeeping{500};

}  // namespace

Assembly OpenModel(const std::filesystem::path& file, const ImportProgress& progress) {
    const ModelCache cache(ModelCache::UserFolder(), ReaderProgram());
    if (auto known = cache.Find(file)) return std::move(*known);
    const auto start = std::chrono::steady_clock::now();
    Assembly assembly = ImportModel(file, {}, progress);
    if (std::chrono::steady_clock::now() - start >= kWorthKeeping) cache.Keep(file, assembly);
    return assembly;
}

}  // namespace zrsheet
