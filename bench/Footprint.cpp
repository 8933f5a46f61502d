#include "bench/Footprint.h"

#include <malloc.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <string_view>

namespace zrbench {
namespace {

std::size_t StatusBytes(std::string_view field) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(field)) return 1024 * std::stoul(line.substr(field.size()));
    }
    return 0;
}

std::size_t Resident() { return StatusBytes("VmRSS:"); }

}  // namespace

Footprint::Footprint() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5;  // the highest mark begins anew
    m_start = Resident();
}

std::size_t Footprint::Peak() const { return std::max(StatusBytes("VmHWM:"), m_start) - m_start; }

std::size_t Footprint::Kept() const {
    malloc_trim(0);
    return std::max(Resident(), m_start) - m_start;
}

}  // namespace zrbench
