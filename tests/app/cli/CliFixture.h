// Runs zrsheet the way authors do, in a folder of its own.

#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet {

/// How a run ended and what it said.
struct CliResult {
    int exitCode = -1;  // -1: it did not exit by itself
    std::string out;
    std::string err;
};

class CliFixture : public testing::Test {
protected:
    /// A file of the folder.
    [[nodiscard]] std::string In(const std::string& name) const { return (m_folder / name).string(); }
    void Write(const std::string& name, const std::string& content) const {
        test::PutFile(m_folder / name, content);
    }
    [[nodiscard]] static std::string Read(const std::string& path) { return test::ReadFile(path); }
    /// The names of all that is in the folder, sorted.
    [[nodiscard]] std::vector<std::string> Files() const;

    /// The project's sample assembly as bytes.
    [[nodiscard]] static const std::string& SampleBytes();
    /// A model of one tetrahedron, whose sheet is made in no time.
    [[nodiscard]] static std::string SmallModel();

    /// Runs the program in the folder with these arguments and waits. `input` is a file for its standard
    /// input. `prepare` is called in the new process, in the folder, before the program takes it over.
    [[nodiscard]] CliResult Run(const std::vector<std::string>& arguments,
                                const std::string& input = "/dev/null", void (*prepare)() = nullptr) const;
    /// The same for another program.
    [[nodiscard]] CliResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                                       const std::string& input = "/dev/null",
                                       void (*prepare)() = nullptr) const;
    /// The same for a model that is to fail: exit code 2, one line that names the culprit, nothing new in the
    /// folder.
    void ExpectRefused(const std::vector<std::string>& arguments, const std::string& culprit,
                       void (*prepare)() = nullptr) const;

private:
    const test::TemporaryFolder m_folder;
};

}  // namespace zrsheet
