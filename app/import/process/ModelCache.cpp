#include "app/import/process/ModelCache.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "app/file/AtomicFile.h"
#include "app/file/Digest.h"
#include "app/file/FileError.h"
#include "app/import/ImportError.h"
#include "app/import/process/AssemblyStream.h"

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kExtension = ".zrmodel";
constexpr std::size_t kDigits = 64;  // of a checksum

std::optional<std::string> Content(const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error)) return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    std::string bytes(fs::file_size(file, error), '\0');
    if (error || !stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) return std::nullopt;
    return bytes;
}

std::string ChecksumOf(std::string_view bytes) {
    Digest digest;
    digest.Add(std::as_bytes(std::span(bytes)));
    return digest.Hex();
}

/// Which content the files had that a model refers to.
std::string ChecksumOf(const std::vector<std::string>& files, const fs::path& folder) {
    std::string all;
    for (const std::string& file : files) {
        const auto content = Content(folder / file);
        all += content ? ChecksumOf(*content) : "missing";
        all += ' ' + file + '\n';
    }
    return ChecksumOf(all);
}

}  // namespace

ModelCache::ModelCache(fs::path folder, const fs::path& reader, std::uint64_t mostBytes)
    : m_folder(std::move(folder)), m_mostBytes(mostBytes) {
    std::error_code error;
    const auto size = fs::file_size(reader, error);
    const auto time = fs::last_write_time(reader, error).time_since_epoch().count();
    if (error) m_folder.clear();
    m_reader = fmt::format("{} {}", size, time);
}

fs::path ModelCache::UserFolder() {
    const char* cache = std::getenv("XDG_CACHE_HOME");
    if (cache != nullptr && fs::path(cache).is_absolute()) return fs::path(cache) / "zrsheet";
    const char* home = std::getenv("HOME");
    return home != nullptr && *home != '\0' ? fs::path(home) / ".cache" / "zrsheet" : fs::path();
}

// The file's name is in it because assemblies and parts are called after it.
fs::path ModelCache::PlaceOf(const fs::path& model) const {
    const auto content = m_folder.empty() ? std::nullopt : Content(model);
    if (!content) return {};
    const std::string key =
        fmt::format("{}\n{}\n{}", m_reader, model.filename().string(), ChecksumOf(*content));
    return m_folder / ChecksumOf(key).append(kExtension);
}

// A kept file: its checksum, that of the external files, the assembly.
std::optional<Assembly> ModelCache::Find(const fs::path& model) const {
    const fs::path place = PlaceOf(model);
    const auto kept = place.empty() ? std::nullopt : Content(place);
    if (!kept || kept->size() < 2 * kDigits) return std::nullopt;
    const std::string_view bytes(*kept);
    if (ChecksumOf(bytes.substr(kDigits)) != bytes.substr(0, kDigits)) return std::nullopt;
    try {
        Assembly assembly = ReadAssembly(bytes.substr(2 * kDigits));
        const std::string external = ChecksumOf(assembly.externalFiles, model.parent_path());
        if (external != bytes.substr(kDigits, kDigits)) return std::nullopt;
        std::error_code error;
        fs::last_write_time(place, fs::file_time_type::clock::now(), error);
        return assembly;
    } catch (const ImportError&) {
        return std::nullopt;
    }
}

void ModelCache::Keep(const fs::path& model, const Assembly& assembly) const {
    const fs::path place = PlaceOf(model);
    if (place.empty()) return;
    const std::string content =
        ChecksumOf(assembly.externalFiles, model.parent_path()) + WriteAssembly(assembly);
    if (content.size() + kDigits > m_mostBytes) return;
    std::error_code error;
    fs::create_directories(m_folder, error);
    MakeRoom(content.size() + kDigits);
    try {
        WriteFileAtomically(place, ChecksumOf(content) + content);
    } catch (const FileError&) {
        return;  // a full disk, or a folder that others own: the model is read again the next time
    }
}

void ModelCache::MakeRoom(std::uint64_t bytes) const {
    struct Kept {
        fs::file_time_type used;
        fs::path file;
        std::uint64_t size;
    };
    std::error_code error;
    std::vector<Kept> all;
    for (const auto& entry : fs::directory_iterator(m_folder, error)) {
        if (entry.path().extension() == kExtension)
            all.push_back({entry.last_write_time(error), entry.path(), entry.file_size(error)});
    }
    std::sort(all.begin(), all.end(), [](const Kept& a, const Kept& b) { return a.used > b.used; });
    for (const Kept& kept : all) {
        bytes += kept.size;
        if (bytes > m_mostBytes) fs::remove(kept.file, error);
    }
}

}  // namespace zrsheet
