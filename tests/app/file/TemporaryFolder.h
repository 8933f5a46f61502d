// A folder of its own for what a test writes.

#pragma once

#include <filesystem>
#include <string>

namespace zrsheet::test {

/// Gone with everything in it when the test ends.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& Path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }
    int CountFiles() const;

private:
    std::filesystem::path m_path;
};

std::string ReadFile(const std::filesystem::path& path);
void PutFile(const std::filesystem::path& path, const std::string& content);

}  // namespace zrsheet::test
