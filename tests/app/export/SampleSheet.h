// A small finished sheet, and a folder of its own for what a test writes.

#pragma once

#include <filesystem>
#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet::test {

/// Two callouts, one of them a capsule with a covered leader, two items, a table, a picture of one grey.
Sheet SampleSheet();

/// Gone with everything in it when the test ends.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }
    int CountFiles() const;

private:
    std::filesystem::path m_path;
};

std::string ReadFile(const std::filesystem::path& path);
void PutFile(const std::filesystem::path& path, const std::string& content);

}  // namespace zrsheet::test
