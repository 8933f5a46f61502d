#include "tests/app/cli/CliFixture.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

constexpr int kNotStarted = 127;

void SendTo(int stream, const fs::path& file) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (descriptor < 0 || dup2(descriptor, stream) < 0) _exit(kNotStarted);
}

}  // namespace

std::vector<std::string> CliFixture::Files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(m_folder.Path())) {
        names.push_back(fs::relative(entry.path(), m_folder.Path()).string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

const std::string& CliFixture::SampleBytes() {
    static const std::string kBytes = [] {
        const test::TemporaryFolder folder;
        const fs::path file = folder / "sample.glb";
        if (std::system((ZR_SAMPLE " " + file.string()).c_str()) != 0) throw std::runtime_error("no sample");
        return test::ReadFile(file);
    }();
    return kBytes;
}

// Four corners and twelve 16-bit indices, as base64.
std::string CliFixture::SmallModel() {
    return R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}],
        "nodes": [{"mesh": 0, "name": "Wedge"}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "indices": 1}]}],
        "accessors": [{"bufferView": 0, "componentType": 5126, "count": 4, "type": "VEC3"},
                      {"bufferView": 1, "componentType": 5123, "count": 12, "type": "SCALAR"}],
        "bufferViews": [{"buffer": 0, "byteLength": 48}, {"buffer": 0, "byteOffset": 48, "byteLength": 24}],
        "buffers": [{"byteLength": 72, "uri": "data:application/octet-stream;base64,)"
           "AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAAAAAAAAAAAAAAAIA/AAACAAEAAAABAAMAAQACAAMAAAADAAIA"
           R"("}]})";
}

CliResult CliFixture::Run(const std::vector<std::string>& arguments, const std::string& input,
                          void (*prepare)()) const {
    return RunProgram(ZR_SHEET, arguments, input, prepare);
}

CliResult CliFixture::RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                                 const std::string& input, void (*prepare)()) const {
    // Beside the folder, so that nothing of the test's own lies in it.
    const fs::path out = m_folder.Path().string() + ".out";
    const fs::path err = m_folder.Path().string() + ".err";
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const int source = open(input.c_str(), O_RDONLY);
        if (source < 0 || dup2(source, STDIN_FILENO) < 0) _exit(kNotStarted);
        SendTo(STDOUT_FILENO, out);
        SendTo(STDERR_FILENO, err);
        if (chdir(m_folder.Path().c_str()) != 0) _exit(kNotStarted);
        if (prepare != nullptr) prepare();
        execv(argv[0], argv.data());
        _exit(kNotStarted);
    }
    int status = 0;
    CliResult result;
    if (child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status))
        result.exitCode = WEXITSTATUS(status);
    result.out = Read(out.string());
    result.err = Read(err.string());
    fs::remove(out);
    fs::remove(err);
    return result;
}

void CliFixture::ExpectRefused(const std::vector<std::string>& arguments, const std::string& culprit,
                               void (*prepare)()) const {
    const auto before = Files();
    const CliResult result = Run(arguments, "/dev/null", prepare);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.err.starts_with("zrsheet: ")) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_TRUE(result.err.ends_with('\n')) << result.err;
    EXPECT_NE(result.err.find(culprit), std::string::npos) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(Files(), before) << "something was left behind";
}

}  // namespace zrsheet
