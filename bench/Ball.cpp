#include "bench/Ball.h"

#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace zrbench {

du::SmartPtr<zrg::Shape> Ball(unsigned rings) {
    std::vector<float> positions;
    std::vector<std::uint32_t> indices;
    const unsigned sectors = 2 * rings;
    for (unsigned ring = 0; ring <= rings; ++ring) {
        const double polar = std::numbers::pi * ring / rings;
        for (unsigned sector = 0; sector < sectors; ++sector) {
            const double around = 2.0 * std::numbers::pi * sector / sectors;
            for (const double value :
                 {std::sin(polar) * std::cos(around), std::sin(polar) * std::sin(around), std::cos(polar)}) {
                positions.push_back(static_cast<float>(value));
            }
            if (ring == rings) continue;
            const unsigned here = ring * sectors + sector;
            const unsigned beside = ring * sectors + (sector + 1) % sectors;
            indices.insert(indices.end(),
                           {here, here + sectors, beside, beside, here + sectors, beside + sectors});
        }
    }
    return new zrg::Shape(positions, indices);
}

}  // namespace zrbench
