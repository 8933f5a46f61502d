// The memory of the process over a long run, and the verdict whether it grows with the work done.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zrcallouts {

class MemoryLog {
public:
    /// Taken while nothing is under way, after `edits` edits in all.
    struct Sample {
        std::size_t edits = 0;
        std::size_t heapBytes = 0;  // without symbols, which stay for good once their text has come up
        std::size_t poolBytes = 0;
        std::size_t residentBytes = 0;
    };

    MemoryLog() { m_samples.reserve(kMostSamples); }

    /// The process as it is now.
    static Sample Take(std::size_t edits);

    void Add(const Sample& sample) { m_samples.push_back(sample); }
    const std::vector<Sample>& GetSamples() const { return m_samples; }
    /// For a verdict.
    bool IsEnough() const { return m_samples.size() >= kFewestSamples; }
    /// What grew, in one line; "" when nothing did. Memory may rise to the height that the work needs during
    /// the first half of the edits; in the second half its middle may not rise further, but for some slack.
    /// That is least for the pool, which nothing but objects takes from, and most for resident memory, which
    /// holds what allocators and sanitizers keep for later, too.
    std::string Verdict() const;

private:
    static constexpr std::size_t kFewestSamples = 12;  // three in each quarter
    // More than a night's rounds: the log must not grow itself.
    static constexpr std::size_t kMostSamples = std::size_t{1} << 17;

    std::vector<Sample> m_samples;
};

}  // namespace zrcallouts
