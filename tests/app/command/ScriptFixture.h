// Runs commands in this process, in a folder of its own that holds "rig.gltf": the assembly "Frame" with the
// parts "Left Wedge" and "Right Wedge", and beside it the part "Pin".

#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

#include "app/command/ScriptRunner.h"
#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet {

class ScriptFixture : public testing::Test {
protected:
    ScriptFixture();
    ~ScriptFixture() override;

    /// Runs the lines as the script "s", from where the last run ended. Returns what was printed, complaints
    /// too.
    std::string Run(const std::string& script, bool keepsGoing = false);
    /// With the rig imported.
    std::string RunOnRig(const std::string& script, bool keepsGoing = false);
    /// Everything there is to see of the document.
    std::string Dump();
    void Write(const std::string& name, const std::string& content) const {
        test::PutFile(m_folder / name, content);
    }

    std::ostringstream m_out;
    std::unique_ptr<Session> m_session;

private:
    std::filesystem::path m_former;  // where the process was
    const test::TemporaryFolder m_folder;
};

}  // namespace zrsheet
