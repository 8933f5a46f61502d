#include "app/sample/AssemblyBuilder.h"

#include <cmath>
#include <numbers>

namespace zrsheet {
namespace {

// Where the axes x, y, z of the placed thing point.
std::array<Point3, 3> Axes(const Placement& placement) {
    constexpr std::array<double, 4> kCosines{1, 0, -1, 0};
    const auto cosine = [&](int quarters) { return kCosines[static_cast<std::size_t>(quarters & 3)]; };
    const auto sine = [&](int quarters) { return kCosines[static_cast<std::size_t>((quarters + 3) & 3)]; };
    const double c = std::cos(placement.turnAboutZ);
    const double s = std::sin(placement.turnAboutZ);
    std::array<Point3, 3> axes{Point3{c, s, 0}, {-s, c, 0}, {0, 0, 1}};
    const double cx = cosine(placement.quartersAboutX);
    const double sx = sine(placement.quartersAboutX);
    const double cy = cosine(placement.quartersAboutY);
    const double sy = sine(placement.quartersAboutY);
    for (Point3& axis : axes) {
        axis = {axis[0], cx * axis[1] - sx * axis[2], sx * axis[1] + cx * axis[2]};
        axis = {cy * axis[0] + sy * axis[2], axis[1], -sy * axis[0] + cy * axis[2]};
    }
    return axes;
}

std::array<double, 16> Matrix(const Placement& placement) {
    constexpr double kMetresPerMillimetre = 0.001;
    const auto [x, y, z] = Axes(placement);
    std::array<double, 16> matrix{x[0], x[1], x[2], 0, y[0], y[1], y[2], 0, z[0], z[1], z[2], 0, 0, 0, 0, 1};
    for (std::size_t i = 0; i < 3; ++i) matrix[12 + i] = placement.move[i] * kMetresPerMillimetre;
    return matrix;
}

}  // namespace

int AssemblyBuilder::DefinePart(const PartData& data, const SolidMesh& mesh) {
    m_assembly.parts.push_back(mesh.ToPart(data.name));
    m_data.push_back(data);
    return static_cast<int>(m_data.size()) - 1;
}

int AssemblyBuilder::AddGroup(int parent, const std::string& name, const std::string& number,
                              const Placement& placement) {
    m_assembly.nodes.push_back({name, parent, Matrix(placement), -1, {{"PartNumber", number}}});
    return static_cast<int>(m_assembly.nodes.size()) - 1;
}

int AssemblyBuilder::AddPart(int parent, int part, const Placement& placement) {
    const auto& [name, number, material] = m_data[static_cast<std::size_t>(part)];
    m_assembly.nodes.push_back(
        {name, parent, Matrix(placement), part, {{"PartNumber", number}, {"Material", material}}});
    return static_cast<int>(m_assembly.nodes.size()) - 1;
}

}  // namespace zrsheet
