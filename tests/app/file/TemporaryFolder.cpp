#include "tests/app/file/TemporaryFolder.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace zrsheet::test {

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "zrsheet-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    m_path = name;
}

TemporaryFolder::~TemporaryFolder() { std::filesystem::remove_all(m_path); }

int TemporaryFolder::CountFiles() const {
    return static_cast<int>(std::distance(std::filesystem::directory_iterator(m_path), {}));
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void PutFile(const std::filesystem::path& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

}  // namespace zrsheet::test
