#include "app/project/ProjectFile.h"

#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "app/document/UserError.h"
#include "app/file/AtomicFile.h"
#include "app/file/Digest.h"
#include "app/project/ProjectFault.h"
#include "app/project/ProjectReader.h"
#include "app/project/ProjectWriter.h"

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kMostBytes = std::uintmax_t{128} << 20;  // what is read takes tenfold memory
constexpr std::size_t kHeadBytes = 256;

std::ifstream OpenFile(const fs::path& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::exists(status)) throw UserError(file.string() + ": there is no such file; check its name");
    if (!fs::is_regular_file(status)) throw UserError(file.string() + ": this is no file; name a file");
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw UserError(file.string() + ": the file cannot be read; check its permissions");
    return stream;
}

std::string ReadHead(std::ifstream& stream, std::size_t bytes) {
    std::string head(bytes, '\0');
    stream.read(head.data(), static_cast<std::streamsize>(bytes));
    head.resize(static_cast<std::size_t>(stream.gcount()));
    return head;
}

/// What would be lost is a project that this program can write again, or nothing.
void CheckReplaceable(const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error) || fs::file_size(file, error) == 0) return;
    std::ifstream stream = OpenFile(file);
    const std::string head = ReadHead(stream, kHeadBytes);
    if (!ProjectVersionOf(head))
        throw UserError(file.string() + ": the file there is no zrsheet project; save under another name");
    CheckProjectVersion(head, file.string());
}

/// What could not be read again must not take the place of what can.
void CheckReadable(const std::string& text) {
    try {
        static_cast<void>(ParseProject(text));
    } catch (const ProjectFault& fault) {
        throw UserError(std::string("the project cannot be saved: ") + fault.what() +
                        "; undo the last change and save again");
    }
}

}  // namespace

void SaveProject(const ProjectData& project, const fs::path& file) {
    CheckReplaceable(file);
    const std::string text = WriteProject(project);
    CheckReadable(text);
    if (text.size() > kMostBytes) throw UserError(file.string() + ": the project is too large; split it");
    WriteFileAtomically(file, text);
}

ProjectData LoadProject(const fs::path& file) {
    std::ifstream stream = OpenFile(file);
    const std::uintmax_t size = fs::file_size(file);
    if (size > kMostBytes)
        throw UserError(file.string() + ": a project of more than 128 MiB is not read; split it");
    return ReadProject(ReadHead(stream, static_cast<std::size_t>(size)), file.string());
}

ProjectModel DescribeModel(const fs::path& model) {
    std::ifstream stream = OpenFile(model);
    ProjectModel described;
    Digest digest;
    std::vector<char> piece(std::size_t{1} << 20);
    while (stream) {
        stream.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        const auto count = static_cast<std::size_t>(stream.gcount());
        digest.Add(std::as_bytes(std::span(piece.data(), count)));
        described.size += count;
    }
    described.sha256 = digest.Hex();
    described.path = fs::canonical(model).generic_string();
    return described;
}

std::string ModelPathFrom(const fs::path& file, const std::string& model) {
    const fs::path folder = fs::weakly_canonical(fs::absolute(file)).parent_path();
    return fs::path(model).lexically_proximate(folder).generic_string();
}

fs::path FindModel(const ProjectModel& model, const fs::path& file) {
    const fs::path place = (file.parent_path() / model.path).lexically_normal();
    std::error_code error;
    if (fs::is_regular_file(place, error)) return place;
    throw UserError(file.string() + ": its model is not at " + fs::absolute(place).string() +
                    "; put it back or say where it is with --model FILE");
}

}  // namespace zrsheet
