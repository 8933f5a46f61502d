#include <gmock/gmock.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <random>
#include <thread>

#include "app/import/ImportError.h"
#include "tests/app/import/CadSample.h"
#include "tests/app/import/ImportFixture.h"

namespace zrsheet {
namespace {

using Random = std::mt19937;
using Damage = std::string (*)(std::string, Random&);

std::size_t Below(std::size_t count, Random& random) { return random() % count; }

std::string CutOff(std::string text, Random& random) {
    text.resize(Below(text.size(), random));
    return text;
}

std::string WrongBytes(std::string text, Random& random) {
    for (auto left = 1 + Below(20, random); left > 0; --left)
        text[Below(text.size(), random)] = static_cast<char>(random() % 256);
    return text;
}

// Up to a tenth of the entities.
std::string MissingLines(std::string text, Random& random) {
    for (auto left = 1 + Below(40, random); left > 0; --left) {
        const std::size_t end = text.find('\n', Below(text.size() - 1, random));
        const std::size_t next = text.find('\n', end + 1);
        if (next != std::string::npos) text.erase(end, next - end);
    }
    return text;
}

std::string ReplaceSome(const std::string& text, char start, Random& random,
                        const std::function<std::string()>& with) {
    std::string changed = text;
    for (auto left = 1 + Below(20, random); left > 0; --left) {
        const std::size_t place = changed.find(start, Below(changed.size(), random));
        if (place == std::string::npos) continue;
        const std::size_t end = changed.find_first_not_of("0123456789.E+-", place + 1);
        if (end == std::string::npos) continue;
        changed.replace(place, end - place, with());
    }
    return changed;
}

std::string Rewired(std::string text, Random& random) {
    return ReplaceSome(text, '#', random, [&random] { return "#" + std::to_string(1 + Below(400, random)); });
}

std::string AbsurdNumbers(std::string text, Random& random) {
    constexpr std::array<const char*, 8> kNumbers{
        "(1.E308", "(-1.E30", "(0.", "(1.E-300", "(9999999999999999999", "(-1", "(1.E9", "(1.E400"};
    return ReplaceSome(text, '(', random, [&] { return kNumbers[Below(kNumbers.size(), random)]; });
}

class DamagedStep : public ImportFixture {
protected:
    struct Tally {
        int read = 0;
        int refused = 0;
        int stopped = 0;  // by a limit or a signal
    };

    void Try(const std::string& name, const std::string& bytes) {
        ImportLimits limits;
        limits.memoryBytes = std::uint64_t{1} << 30;
        limits.time = std::chrono::seconds(3);
        const std::filesystem::path file = Write(name, bytes);
        try {
            const Assembly assembly = ImportModel(file, limits);
            const std::lock_guard hold(m_mutex);
            ++m_tally.read;
            EXPECT_FALSE(assembly.nodes.empty()) << name;
            for (const std::string& warning : assembly.warnings)
                EXPECT_EQ(warning.find('\n'), std::string::npos) << name;
        } catch (const ImportError& error) {
            const std::string line = error.what();
            const std::lock_guard hold(m_mutex);
            const bool isStopped =
                line.find("signal") != std::string::npos || line.find("took longer") != std::string::npos;
            ++(isStopped ? m_tally.stopped : m_tally.refused);
            EXPECT_TRUE(line.starts_with(file.string() + ": ")) << line;
            EXPECT_EQ(line.find('\n'), std::string::npos) << line;
            EXPECT_EQ(line.find("Sanitizer"), std::string::npos) << line;
        }
    }

    std::mutex m_mutex;  // guards the tally and what gtest collects
    Tally m_tally;
};

// Whatever is wrong with a file, it ends in an assembly or in one line, within the limits, and never in the
// end of the program that asked for it.
TEST_F(DamagedStep, EndsInAnAssemblyOrInOneLine) {
    constexpr unsigned kSeed = 10'303;
    constexpr int kOfEachKind = 24;
    const std::filesystem::path sample = Write("good.stp", "");
    WriteStepSample(sample);
    const std::string good = test::ReadFile(sample);
    const std::vector<Damage> kinds{CutOff, WrongBytes, MissingLines, Rewired, AbsurdNumbers};
    const int count = kOfEachKind * static_cast<int>(kinds.size());
    std::atomic<int> next = 0;
    const auto work = [&] {
        for (int i = next++; i < count; i = next++) {
            Random random(kSeed + static_cast<unsigned>(i));
            Try("damaged-" + std::to_string(i) + ".stp",
                kinds[static_cast<std::size_t>(i) % kinds.size()](good, random));
        }
    };
    {
        const std::jthread other(work);
        work();
    }
    EXPECT_EQ(m_tally.read + m_tally.refused + m_tally.stopped, count);
    EXPECT_GT(m_tally.read, count / 10);
    EXPECT_GT(m_tally.refused, count / 10);
    EXPECT_LT(m_tally.stopped, count / 4)
        << "crashes inside the reader are to become lines that say what is wrong";
}

}  // namespace
}  // namespace zrsheet
