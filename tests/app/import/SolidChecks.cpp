#include "tests/app/import/SolidChecks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <utility>

namespace zrsheet {
namespace {

using Vector = std::array<double, 3>;

Vector Corner(const AssemblyPart& part, std::size_t index) {
    const float* const point = &part.positions[std::size_t{part.indices[index]} * 3];
    return {point[0], point[1], point[2]};
}

double Dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Vector Cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector UnitNormal(const AssemblyPart& part, std::size_t triangle) {
    const Vector a = Corner(part, triangle * 3);
    const Vector b = Corner(part, triangle * 3 + 1);
    const Vector c = Corner(part, triangle * 3 + 2);
    Vector normal = Cross({b[0] - a[0], b[1] - a[1], b[2] - a[2]}, {c[0] - a[0], c[1] - a[1], c[2] - a[2]});
    const double length = std::sqrt(Dot(normal, normal));
    for (double& x : normal) x /= length;
    return normal;
}

}  // namespace

void ExpectClosed(const AssemblyPart& part) {
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> triangleOf;
    for (std::size_t i = 0; i < part.indices.size(); ++i) {
        const std::size_t next = i % 3 == 2 ? i - 2 : i + 1;
        const bool isNew = triangleOf.try_emplace({part.indices[i], part.indices[next]}, i / 3).second;
        EXPECT_TRUE(isNew) << part.name;
    }
    std::size_t open = 0;
    std::size_t folded = 0;
    for (const auto& [edge, triangle] : triangleOf) {
        const auto other = triangleOf.find({edge.second, edge.first});
        if (other == triangleOf.end()) {
            ++open;
        } else if (Dot(UnitNormal(part, triangle), UnitNormal(part, other->second)) < -0.999) {
            ++folded;
        }
    }
    EXPECT_EQ(open, 0U) << part.name;
    EXPECT_EQ(folded, 0U) << part.name;
}

double Volume(const AssemblyPart& part) {
    constexpr double kCubicMillimetresPerCubicMetre = 1e9;
    double volume = 0;
    for (std::size_t i = 0; i < part.indices.size(); i += 3) {
        volume += Dot(Corner(part, i), Cross(Corner(part, i + 1), Corner(part, i + 2))) / 6;
    }
    return volume * kCubicMillimetresPerCubicMetre;
}

}  // namespace zrsheet
