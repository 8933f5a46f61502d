// Keeps what was read of models, so that the second opening of a large one is fast.

#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "app/import/Assembly.h"

namespace zrsheet {

/// A folder of files, one for each model, known by the model's name and content and by the program that read
/// it. What it keeps of models whose external files have changed since, or what is damaged, is not found.
/// Holds `mostBytes` at most: what was found or kept longest ago goes first. Any number of processes may use
/// one folder. A cache that cannot be written keeps nothing and says nothing.
class ModelCache {
public:
    static constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 30;

    /// An empty folder: no cache. It is made when something is kept. `reader` is the program that reads
    /// models.
    ModelCache(std::filesystem::path folder, const std::filesystem::path& reader,
               std::uint64_t mostBytes = kMostBytes);

    /// $XDG_CACHE_HOME/zrsheet, else ~/.cache/zrsheet; empty if the user has no home.
    [[nodiscard]] static std::filesystem::path UserFolder();

    /// Reads the model and all that it refers to, for their checksums.
    [[nodiscard]] std::optional<Assembly> Find(const std::filesystem::path& model) const;
    void Keep(const std::filesystem::path& model, const Assembly& assembly) const;

private:
    std::filesystem::path PlaceOf(const std::filesystem::path& model) const;
    void MakeRoom(std::uint64_t bytes) const;

    std::filesystem::path m_folder;
    std::string m_reader;  // what tells this program that reads from others
    std::uint64_t m_mostBytes;
};

}  // namespace zrsheet
