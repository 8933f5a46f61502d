#include "tests/app/lineart/ArtStage.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace zrsheet::test {

ShapePtr Drum(double radius, double height, int sides) {
    std::vector<float> positions;
    const auto add = [&positions](double x, double y, double z) {
        for (const double value : {x, y, z}) positions.push_back(static_cast<float>(value));
    };
    add(0, 0, 0);
    add(0, 0, height);
    std::vector<std::uint32_t> indices;
    const auto count = static_cast<std::uint32_t>(sides);
    for (std::uint32_t i = 0; i < count; ++i) {
        const double angle = 2.0 * std::numbers::pi * (i + 0.3) / sides;
        add(radius * std::cos(angle), radius * std::sin(angle), 0);
        add(radius * std::cos(angle), radius * std::sin(angle), height);
        const std::uint32_t low = 2 + 2 * i;
        const std::uint32_t next = 2 + 2 * ((i + 1) % count);
        indices.insert(indices.end(),
                       {0, next, low, 1, low + 1, next + 1, low, next, next + 1, low, next + 1, low + 1});
    }
    return ShapePtr(new zrg::Shape(std::move(positions), std::move(indices)));
}

ShapePtr InsideOut(const ShapePtr& shape) {
    std::vector<std::uint32_t> indices(shape->GetIndices().begin(), shape->GetIndices().end());
    for (std::size_t i = 0; i < indices.size(); i += 3) std::swap(indices[i], indices[i + 1]);
    return ShapePtr(new zrg::Shape({shape->GetPositions().begin(), shape->GetPositions().end()}, indices));
}

double Stroke::Length() const { return std::hypot(to.x - from.x, to.y - from.y); }

ArtStage::ArtStage() { LookFrom({0, 0, 1}); }

void ArtStage::Add(const ShapePtr& shape, const dg::Location& location) { m_scene.Add(shape, location); }

void ArtStage::LookFrom(const dg::DVec3& towardsEye, double pixelsPerUnit) {
    const dg::DVec3 up =
        std::abs(towardsEye.Normalized().y) > 0.99 ? dg::DVec3(0, 0, -1) : dg::DVec3(0, 1, 0);
    m_camera = dg::Camera3D::Orthographic({}, towardsEye * -1.0, up, pixelsPerUnit, 400, 300, 2000.0);
}

const zrg::RayScene& ArtStage::Scene() {
    if (!std::exchange(m_isCommitted, true)) m_scene.Commit();
    return m_scene;
}

LineArt ArtStage::Draw(unsigned threads) { return LineArtist(Scene(), m_rule, threads).Draw(m_camera); }

std::vector<Stroke> ArtStage::Strokes() {
    std::vector<Stroke> strokes;
    for (const ArtLine& line : Draw().lines) {
        for (std::size_t i = 1; i < line.points.size(); ++i)
            strokes.push_back({line.kind, line.points[i - 1], line.points[i]});
        if (line.isClosed) strokes.push_back({line.kind, line.points.back(), line.points.front()});
    }
    return strokes;
}

double ArtStage::LengthOf(LineKind kind) {
    double length = 0.0;
    for (const Stroke& stroke : Strokes()) length += stroke.kind == kind ? stroke.Length() : 0.0;
    return length;
}

ArtPoint ArtStage::PixelOf(const dg::DPoint3D& point) const {
    const dg::DPoint3D pixel = point * m_camera.GetWorldToPixel();
    return {pixel.x, pixel.y};
}

}  // namespace zrsheet::test
