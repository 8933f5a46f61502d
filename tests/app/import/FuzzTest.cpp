#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "app/import/ImportError.h"
#include "app/sample/GearReducer.h"
#include "app/sample/GlbWriter.h"
#include "tests/app/import/ImportFixture.h"

namespace zrsheet {
namespace {

class Fuzz : public ImportFixture {};

// The sample's whole tree with a few triangles of each part, so that most changes hit something that has a
// meaning.
std::string ThinSample() {
    constexpr std::size_t kTriangles = 6;
    Assembly assembly = MakeGearReducer();
    for (AssemblyPart& part : assembly.parts) {
        part.indices.resize(kTriangles * 3);
        part.positions.resize((*std::ranges::max_element(part.indices) + std::size_t{1}) * 3);
    }
    return WriteGlb(assembly);
}

// A changed byte may make another model or no model at all; the reader itself must never break.
TEST_F(Fuzz, ChangedBytesEndInAnAssemblyOrInOneLine) {
    constexpr unsigned kSeed = 20'240;
    constexpr int kRounds = 500;
    std::mt19937 random(kSeed);
    const std::string good = ThinSample();
    int refused = 0;
    for (int round = 0; round < kRounds; ++round) {
        std::string bytes = good;
        for (auto flips = 1 + random() % 3; flips > 0; --flips) {
            bytes[random() % bytes.size()] ^= static_cast<char>(1 + random() % 255);
        }
        try {
            EXPECT_FALSE(ImportModel(Write("fuzzed.glb", bytes)).nodes.empty());
        } catch (const ImportError& error) {
            ++refused;
            EXPECT_THAT(error.what(),
                        testing::Not(testing::ContainsRegex("\n|Sanitizer|runtime error|signal")))
                << "seed " << kSeed << " round " << round;
        }
    }
    EXPECT_GT(refused, kRounds / 10);
    EXPECT_LT(refused, kRounds);
}

}  // namespace
}  // namespace zrsheet
