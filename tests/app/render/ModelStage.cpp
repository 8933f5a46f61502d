#include "tests/app/render/ModelStage.h"

#include <cmath>
#include <numbers>

namespace zrsheet::test {
namespace {

constexpr int kInk = 170;  // darker than every surface

class MeshBuilder {
public:
    void AddQuad(const dg::DPoint3D& a, const dg::DPoint3D& b, const dg::DPoint3D& c, const dg::DPoint3D& d) {
        const auto first = static_cast<std::uint32_t>(m_positions.size() / 3);
        for (const dg::DPoint3D& p : {a, b, c, d}) {
            for (int axis = 0; axis < 3; ++axis) m_positions.push_back(static_cast<float>(p[axis]));
        }
        for (const std::uint32_t i : {0U, 1U, 2U, 0U, 2U, 3U}) m_indices.push_back(first + i);
    }
    ShapePtr Make() { return ShapePtr(new zrg::Shape(m_positions, m_indices)); }

private:
    std::vector<float> m_positions;
    std::vector<std::uint32_t> m_indices;
};

}  // namespace

ShapePtr Box(const dg::DPoint3D& low, const dg::DPoint3D& high) {
    const auto at = [&](int corner) {
        return dg::DPoint3D((corner & 1) != 0 ? high.x : low.x, (corner & 2) != 0 ? high.y : low.y,
                            (corner & 4) != 0 ? high.z : low.z);
    };
    MeshBuilder mesh;
    mesh.AddQuad(at(0), at(2), at(3), at(1));
    mesh.AddQuad(at(4), at(5), at(7), at(6));
    mesh.AddQuad(at(0), at(1), at(5), at(4));
    mesh.AddQuad(at(2), at(6), at(7), at(3));
    mesh.AddQuad(at(0), at(4), at(6), at(2));
    mesh.AddQuad(at(1), at(3), at(7), at(5));
    return mesh.Make();
}

ShapePtr Plate(double width, double height, int columns, int rows) {
    MeshBuilder mesh;
    const auto at = [&](int column, int row) {
        return dg::DPoint3D(width * column / columns - 0.5 * width, height * row / rows - 0.5 * height, 0.0);
    };
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            mesh.AddQuad(at(column, row), at(column + 1, row), at(column + 1, row + 1), at(column, row + 1));
        }
    }
    return mesh.Make();
}

ShapePtr Mantle(double radius, double height, int sides) {
    MeshBuilder mesh;
    const auto at = [&](int side, double z) {
        const double angle = 2.0 * std::numbers::pi * (side + 0.25) / sides;
        return dg::DPoint3D(radius * std::cos(angle), radius * std::sin(angle), z);
    };
    for (int i = 0; i < sides; ++i) {
        mesh.AddQuad(at(i, -0.5 * height), at(i + 1, -0.5 * height), at(i + 1, 0.5 * height),
                     at(i, 0.5 * height));
    }
    return mesh.Make();
}

dg::Location Turned(const dg::DVec3& axis, double degrees, const dg::DPoint3D& position) {
    const dg::DVec3 n = axis.Normalized();
    const double c = std::cos(degrees * std::numbers::pi / 180.0);
    const double s = std::sin(degrees * std::numbers::pi / 180.0);
    const auto row = [&](const dg::DVec3& e) { return e * c + n.Cross(e) * s + n * (n.Dot(e) * (1.0 - c)); };
    const dg::DVec3 x = row({1, 0, 0});
    const dg::DVec3 y = row({0, 1, 0});
    const dg::DVec3 z = row({0, 0, 1});
    return dg::Location(dg::DMat44({x.x, x.y, x.z, 0, y.x, y.y, y.z, 0, z.x, z.y, z.z, 0,  //
                                    position.x, position.y, position.z, 1}));
}

ModelStage::ModelStage(int width, int height, double pixelsPerUnit)
    : m_camera(dg::Camera3D::Orthographic({}, {0, 0, -1}, {0, 1, 0}, pixelsPerUnit, width, height, 1000.0)) {}

void ModelStage::Add(std::uint32_t part, const ShapePtr& shape, const dg::Location& location) {
    m_scene.Add(shape, location);
    m_parts.push_back(part);
}

Raster ModelStage::Render(unsigned threads) {
    if (!m_isCommitted) m_scene.Commit();
    m_isCommitted = true;
    return RenderPicture(m_scene, m_camera, m_style, m_parts, threads);
}

int ToneAt(const Raster& raster, int x, int y) {
    return raster.pixels[3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(raster.width) +
                              static_cast<std::size_t>(x))];
}

std::vector<double> LinesAcross(const Raster& raster, int y, int firstX, int lastX) {
    std::vector<double> lines;
    for (int x = firstX; x <= lastX; ++x) {
        if (ToneAt(raster, x, y) >= kInk) continue;
        const int start = x;
        while (x < lastX && ToneAt(raster, x + 1, y) < kInk) ++x;
        lines.push_back(0.5 * (start + x + 1));
    }
    return lines;
}

int InkIn(const Raster& raster, int firstX, int firstY, int lastX, int lastY) {
    int count = 0;
    for (int y = firstY; y <= lastY; ++y) {
        for (int x = firstX; x <= lastX; ++x) count += ToneAt(raster, x, y) < kInk ? 1 : 0;
    }
    return count;
}

double LineWeight(const Raster& raster, int y, int firstX, int lastX) {
    double weight = 0.0;
    for (int x = firstX; x <= lastX; ++x) weight += 1.0 - ToneAt(raster, x, y) / 255.0;
    return weight;
}

}  // namespace zrsheet::test
