#include "app/import/reading/ReadFile.h"

#include <fstream>
#include <system_error>

#include "app/import/ImportError.h"

namespace zrsheet {

std::string ReadFile(const std::filesystem::path& file) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status)) throw ImportError("there is no such file; check its name");
    if (!std::filesystem::is_regular_file(status))
        throw ImportError("this is no file; give the model's file");
    std::string bytes(std::filesystem::file_size(file), '\0');
    std::ifstream stream(file, std::ios::binary);
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
        throw ImportError("the file cannot be read; check its permissions");
    }
    return bytes;
}

}  // namespace zrsheet
