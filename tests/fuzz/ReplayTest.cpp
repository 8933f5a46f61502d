// Every input of the corpus, those that once broke something among them, goes through its target, and so do
// inputs that are made from them by chance: fewer than a fuzzer makes, but by every build.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "tests/fuzz/FuzzTarget.h"

namespace {

constexpr std::chrono::seconds kTimeForMadeInputs(3);
constexpr unsigned kMostMadeInputs = 20000;
constexpr std::size_t kLongest = 4096;

struct Input {
    std::string name;
    std::string bytes;
};

std::vector<Input> Corpus() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(ZR_CORPUS)) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::vector<Input> inputs;
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        inputs.push_back(
            {file.filename().string(), std::string((std::istreambuf_iterator<char>(stream)), {})});
    }
    return inputs;
}

void Feed(const std::string& bytes) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

/// Pieces of inputs of the corpus, cut, doubled, exchanged, with single bytes changed.
class InputMaker {
public:
    InputMaker(const std::vector<Input>& corpus, unsigned seed) : m_corpus(corpus), m_random(seed) {}

    std::string Make() {
        std::string bytes = Piece();
        for (std::size_t changes = 1 + Below(4); changes > 0; --changes) Change(bytes);
        bytes.resize(std::min(bytes.size(), kLongest));
        return bytes;
    }

private:
    std::size_t Below(std::size_t count) { return m_random() % count; }

    /// Of any input, from anywhere to anywhere; short ones whole as often as not.
    std::string Piece() {
        const std::string& bytes = m_corpus[Below(m_corpus.size())].bytes;
        if (bytes.size() < 2 || Below(2) == 0) return bytes;
        const std::size_t from = Below(bytes.size());
        return bytes.substr(from, 1 + Below(bytes.size() - from));
    }

    void Change(std::string& bytes) {
        const std::size_t place = Below(bytes.size() + 1);
        switch (Below(4)) {
            case 0:
                bytes.insert(place, Piece());
                break;
            case 1:
                bytes.erase(place, 1 + Below(16));
                break;
            case 2:
                if (place < bytes.size()) bytes[place] = static_cast<char>(m_random());
                break;
            default:
                if (place < bytes.size()) bytes[place] = static_cast<char>(bytes[place] ^ (1 << Below(8)));
        }
    }

    const std::vector<Input>& m_corpus;
    std::mt19937 m_random;
};

TEST(ZR_REPLAY, EndsWellWithEveryInput) {
    const auto inputs = Corpus();
    EXPECT_FALSE(inputs.empty());
    for (const auto& [name, bytes] : inputs) {
        SCOPED_TRACE(name);
        Feed(bytes);
    }
}

// A failure names its seed. Every run makes the same inputs, as many as it has time for.
TEST(ZR_REPLAY, EndsWellWithInputsMadeByChance) {
    const auto inputs = Corpus();
    const auto end = std::chrono::steady_clock::now() + kTimeForMadeInputs;
    unsigned seed = 0;
    while (seed < kMostMadeInputs && std::chrono::steady_clock::now() < end && !HasFailure()) {
        SCOPED_TRACE("seed " + std::to_string(++seed));
        std::clog << "seed " << seed << '\n';  // for those that end the process
        Feed(InputMaker(inputs, seed).Make());
    }
    EXPECT_GT(seed, 0U);
}

}  // namespace
