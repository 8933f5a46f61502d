#include "app/catalogue/PackedMesh.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include "app/file/Base64.h"

namespace zrsheet {
namespace {

using GridPoint = std::array<std::uint16_t, 3>;

constexpr double kSteps = 65535.0;
constexpr std::size_t kMostNarrow = 65536;  // vertices that 16 bits can count

/// Vertices once each, in the order in which triangles meet them.
struct GridMesh {
    std::vector<GridPoint> points;
    std::vector<std::uint32_t> indices;
};

class Grid {
public:
    explicit Grid(const zrg::Shape& shape) : m_positions(shape.GetPositions()) {
        dg::FBox box;
        if (!shape.ComputeDefaultBBox(box)) return;
        m_low = {box.min.x, box.min.y, box.min.z};
        m_size = {box.max.x - box.min.x, box.max.y - box.min.y, box.max.z - box.min.z};
    }

    const std::array<float, 3>& Low() const { return m_low; }
    const std::array<float, 3>& Size() const { return m_size; }

    GridPoint At(std::uint32_t vertex) const {
        GridPoint point{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double size = static_cast<double>(m_size[axis]);
            if (!(size > 0.0)) continue;
            const double share =
                (static_cast<double>(m_positions[3 * vertex + axis]) - static_cast<double>(m_low[axis])) /
                size;
            point[axis] = static_cast<std::uint16_t>(std::lround(std::clamp(share, 0.0, 1.0) * kSteps));
        }
        return point;
    }

private:
    std::span<const float> m_positions;
    std::array<float, 3> m_low{};
    std::array<float, 3> m_size{};
};

GridMesh Join(const zrg::Shape& shape, const Grid& grid) {
    GridMesh mesh;
    std::map<GridPoint, std::uint32_t> numbers;
    const auto indices = shape.GetIndices();
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        const std::array<GridPoint, 3> corners{grid.At(indices[i]), grid.At(indices[i + 1]),
                                               grid.At(indices[i + 2])};
        if (corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0]) continue;
        for (const GridPoint& corner : corners) {
            const auto [at, isNew] =
                numbers.try_emplace(corner, static_cast<std::uint32_t>(mesh.points.size()));
            if (isNew) mesh.points.push_back(corner);
            mesh.indices.push_back(at->second);
        }
    }
    return mesh;
}

void Append(std::string& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xFFU);
}

}  // namespace

PackedMesh Pack(const zrg::Shape& shape) {
    const Grid grid(shape);
    const GridMesh mesh = Join(shape, grid);
    PackedMesh packed{grid.Low(), grid.Size(), {}, {}, mesh.points.size() > kMostNarrow};
    std::string bytes;
    for (const GridPoint& point : mesh.points)
        for (const std::uint16_t step : point) Append(bytes, step, 2);
    packed.positions = Base64(bytes);
    bytes.clear();
    for (const std::uint32_t index : mesh.indices) Append(bytes, index, packed.isWide ? 4 : 2);
    packed.indices = Base64(bytes);
    return packed;
}

}  // namespace zrsheet
