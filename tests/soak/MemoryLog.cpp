#include "tests/soak/MemoryLog.h"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

#include "du/Symbol.h"
#include "zrk/object/MemoryPool.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// g++ does not bring the header that declares it.
// NOLINTNEXTLINE(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace zrcallouts {
namespace {

// Buckets of the symbols' table, say.
constexpr std::size_t kHeapSlack = std::size_t{64} << 10;
constexpr std::size_t kPoolSlack = std::size_t{4} << 10;
constexpr std::size_t kResidentSlack = std::size_t{16} << 20;

std::size_t HeapBytes() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return __sanitizer_get_current_allocated_bytes();
#else
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

std::size_t ResidentBytes() {
    std::size_t pages = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// The middle one of the values that a member has in the samples [first, last).
std::size_t Middle(const std::vector<MemoryLog::Sample>& samples, std::size_t first, std::size_t last,
                   std::size_t MemoryLog::Sample::*member) {
    std::vector<std::size_t> values;
    values.reserve(last - first);
    for (std::size_t i = first; i < last; ++i) values.push_back(samples[i].*member);
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

MemoryLog::Sample MemoryLog::Take(std::size_t edits) {
    return {edits, HeapBytes() - du::Symbol::GetBytesInUse(), zrk::MemoryPool::GetBytesInUse(),
            ResidentBytes()};
}

std::string MemoryLog::Verdict() const {
    if (!IsEnough()) return "too few samples to tell";
    struct Kind {
        const char* name;
        std::size_t Sample::*member;
        std::size_t slack;
    };
    const std::size_t end = m_samples.size();
    for (const Kind& kind : {Kind{"heap", &Sample::heapBytes, kHeapSlack},
                             {"pool", &Sample::poolBytes, kPoolSlack},
                             {"resident memory", &Sample::residentBytes, kResidentSlack}}) {
        const std::size_t before = Middle(m_samples, end / 2, end * 3 / 4, kind.member);
        const std::size_t after = Middle(m_samples, end * 3 / 4, end, kind.member);
        if (after > before + kind.slack)
            return std::string(kind.name) + " grows: from " + std::to_string(before) + " to " +
                   std::to_string(after) + " bytes within a quarter of " +
                   std::to_string(m_samples.back().edits) + " edits";
    }
    return {};
}

}  // namespace zrcallouts
