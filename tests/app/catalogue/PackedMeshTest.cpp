#include "app/catalogue/PackedMesh.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "app/file/Base64.h"
#include "du/SmartPtr.h"

namespace zrsheet {
namespace {

PackedMesh PackOf(std::vector<float> positions, std::vector<std::uint32_t> indices) {
    const du::SmartPtr<zrg::Shape> shape(new zrg::Shape(std::move(positions), std::move(indices)));
    return Pack(*shape);
}

/// 16-bit values as the page gets them.
std::string Words(const std::vector<std::uint16_t>& values) {
    std::string bytes;
    for (const std::uint16_t value : values) {
        bytes += static_cast<char>(value & 0xFFU);
        bytes += static_cast<char>(value >> 8U);
    }
    return Base64(bytes);
}

// Where one axis has no extent, dividing by it would make nonsense of all places.
TEST(PackedMesh, KeepsPlacesOnTheGridOfItsBox) {
    const PackedMesh mesh = PackOf({-1, 2, 5, 3, 2, 5, 1, 4, 5}, {0, 1, 2});
    EXPECT_EQ(mesh.low, (std::array<float, 3>{-1, 2, 5}));
    EXPECT_EQ(mesh.size, (std::array<float, 3>{4, 2, 0}));
    EXPECT_EQ(mesh.positions, Words({0, 0, 0, 65535, 0, 0, 32768, 65535, 0}));
    EXPECT_EQ(mesh.indices, Words({0, 1, 2}));
}

// Exporters write a vertex per corner; edges and smooth normals are found only where corners are joined.
TEST(PackedMesh, JoinsEqualVerticesAndDropsWhatVanishes) {
    const PackedMesh mesh =
        PackOf({0, 0, 9, 9, 0, 0, 0, 9, 0, /**/ 9, 0, 0, 9, 9, 0, 0, 9, 0, /**/ 9, 0, 1e-9F},
               {0, 1, 2, 3, 4, 5, 1, 6, 4});
    EXPECT_EQ(mesh.positions, Words({0, 0, 65535, 65535, 0, 0, 0, 65535, 0, 65535, 65535, 0}));
    EXPECT_EQ(mesh.indices, Words({0, 1, 2, 1, 3, 2}));
}

// One vertex more than 16 bits can count must not come out as the first one.
TEST(PackedMesh, CountsManyVerticesWith32Bits) {
    std::vector<double> sizes;
    for (const std::uint32_t count : {65536U, 65537U}) {
        std::vector<float> positions;
        std::vector<std::uint32_t> indices;
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::vector<float> place{static_cast<float>(i % 300), static_cast<float>(i / 300), 0.0F};
            positions.insert(positions.end(), place.begin(), place.end());
            if (i >= 301) indices.insert(indices.end(), {i, i - 1, i - 301});
        }
        for (std::uint32_t i = 0; i < 301; ++i) indices.insert(indices.end(), {i, count - 1, count - 2});
        const PackedMesh mesh = PackOf(positions, indices);
        EXPECT_EQ(mesh.isWide, count > 65536) << count;
        sizes.push_back(static_cast<double>(mesh.indices.size()));
    }
    EXPECT_NEAR(sizes[1] / sizes[0], 2.0, 0.01);
}

}  // namespace
}  // namespace zrsheet
