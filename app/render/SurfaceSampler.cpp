#include "app/render/SurfaceSampler.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "app/render/PixelBox.h"

namespace zrsheet {
namespace {

// In sample widths. Below it two surfaces are one to the ray's single precision.
constexpr double kSameDepth = 0.1;
// A facet seen edge-on has no slope; this one, in samples, is as good as none.
constexpr double kSteepest = 1e6;

// Samples around the boxes of the parts, for rounding.
constexpr double kWindowSlack = 2.0;

std::array<dg::DPoint3D, 8> CornersOf(const dg::FBox& box) {
    std::array<dg::DPoint3D, 8> corners;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        corners[i] = {static_cast<double>((i & 1U) != 0 ? box.max.x : box.min.x),
                      static_cast<double>((i & 2U) != 0 ? box.max.y : box.min.y),
                      static_cast<double>((i & 4U) != 0 ? box.max.z : box.min.z)};
    }
    return corners;
}

/// What lies behind the eye of a central view has no place in the picture.
bool IsBeforeEye(const dg::DPoint3D& point, const dg::DMat44& toPixel) {
    return point.x * toPixel(0, 3) + point.y * toPixel(1, 3) + point.z * toPixel(2, 3) + toPixel(3, 3) > 0.0;
}

dg::FVec3 Narrow(const dg::DVec3& v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

}  // namespace

SurfaceSampler::SurfaceSampler(const zrg::RayScene& scene, const dg::Camera3D& camera,
                               std::span<const std::uint32_t> partOfPlacement, double samplesPerPixel)
    : m_scene(scene),
      m_camera(camera),
      m_partOfPlacement(partOfPlacement),
      m_samplesPerPixel(samplesPerPixel),
      m_width(static_cast<int>(std::lround(camera.GetViewportWidth() * samplesPerPixel))),
      m_height(static_cast<int>(std::lround(camera.GetViewportHeight() * samplesPerPixel))),
      m_window(Everything()) {}

void SurfaceSampler::FindGround() { m_window = WindowOfParts(); }

// Most of a page is ground, and a box around each part tells it without a ray.
SampleWindow SurfaceSampler::WindowOfParts() const {
    PixelBox extent;
    for (std::uint32_t i = 0; i < m_scene.GetPlacementCount(); ++i) {
        dg::FBox box;
        if (!m_scene.GetShape(i).ComputeDefaultBBox(box)) continue;
        const dg::DMat44 toPixel = m_scene.GetToWorld(i) * m_camera.GetWorldToPixel();
        for (const dg::DPoint3D& corner : CornersOf(box)) {
            if (!IsBeforeEye(corner, toPixel)) return Everything();
            extent.Add(corner * toPixel);
        }
    }
    const auto sample = [this](double pixel, double slack, double least, double most) {
        return static_cast<int>(std::clamp(pixel * m_samplesPerPixel + slack, least, most));
    };
    const auto column = [&](double x, double slack) { return sample(x, slack, 0.0, m_width); };
    const auto row = [&](double y, double slack) { return sample(y, slack, -m_height, 2.0 * m_height); };
    return {column(extent.left, -kWindowSlack), row(extent.top, -kWindowSlack),
            column(extent.right, kWindowSlack), row(extent.bottom, kWindowSlack)};
}

void SurfaceSampler::SampleRow(int y, int firstColumn, std::span<SurfaceSample> row) const {
    std::fill(row.begin(), row.end(), SurfaceSample());
    const int left = std::max(m_window.left, firstColumn);
    const int right = std::min(m_window.right, firstColumn + static_cast<int>(row.size()));
    if (y < m_window.top || y >= m_window.bottom || left >= right) return;
    row = row.subspan(static_cast<std::size_t>(left - firstColumn), static_cast<std::size_t>(right - left));
    std::vector<zrg::RayHit> hits(row.size());
    m_scene.NearestRow(m_camera, ToPixel(left), ToPixel(y), 1.0 / m_samplesPerPixel, hits);
    for (std::size_t i = 0; i < hits.size(); ++i) {
        const zrg::RayHit& hit = hits[i];
        if (!hit) continue;
        // Flat faces without smoothing fill most of most pictures: what holds for the whole facet is found
        // once.
        const bool isSameFacet =
            i > 0 && hits[i - 1].placement == hit.placement && hits[i - 1].triangle == hit.triangle;
        row[i] = isSameFacet ? row[i - 1] : DescribeFacet(hit);
        row[i].depth = static_cast<float>(DepthOf(hit.point));
        if (IsSmoothed(hit.placement)) row[i].normal = SmoothedNormal(hit, row[i].isTurned);
    }
}

// A plane's four numbers move to pixel space by the inverse of the matrix that moves points.
SurfaceSample SurfaceSampler::DescribeFacet(const zrg::RayHit& hit) const {
    const dg::DMat44& m = m_camera.GetPixelToWorld();
    const dg::DVec3 n = m_scene.NormalToWorld(hit.placement, hit.normal);
    const double offset = -(n.x * hit.point.x + n.y * hit.point.y + n.z * hit.point.z);
    const auto pixelPlane = [&](std::size_t row) {
        return m(row, 0) * n.x + m(row, 1) * n.y + m(row, 2) * n.z + m(row, 3) * offset;
    };
    const double towards = pixelPlane(2);
    const double steepest = kSteepest / SamplesPerDepth(hit.point);
    const auto slope = [&](std::size_t axis) {
        const double change = -pixelPlane(axis) / m_samplesPerPixel;
        if (std::abs(change) >= steepest * std::abs(towards))
            return static_cast<float>(std::copysign(steepest, change));
        return static_cast<float>(change / towards);
    };
    SurfaceSample sample;
    sample.part = m_partOfPlacement[hit.placement];
    sample.placement = hit.placement;
    sample.isTurned = towards > 0.0;
    sample.slopeX = slope(0);
    sample.slopeY = slope(1);
    sample.facet = Narrow(sample.isTurned ? n * -1.0 : n);
    sample.normal = sample.facet;
    return sample;
}

dg::FVec3 SurfaceSampler::SmoothedNormal(const zrg::RayHit& hit, bool isTurned) const {
    const dg::DVec3 local = m_normals[hit.placement]->At(hit.triangle, hit.u, hit.v);
    const dg::DVec3 world = m_scene.NormalToWorld(hit.placement, local);
    return Narrow(isTurned ? world * -1.0 : world);
}

bool SurfaceSampler::Coincide(const SurfaceSample& a, const SurfaceSample& b, int x, int y,
                              bool isVertical) const {
    return IsMetAt(b.placement, a, x, y) &&
           IsMetAt(a.placement, b, isVertical ? x : x + 1, isVertical ? y + 1 : y);
}

bool SurfaceSampler::IsMetAt(std::uint32_t placement, const SurfaceSample& sample, int x, int y) const {
    const zrg::RayHit hit = m_scene.NearestOf(m_camera.PixelRay(ToPixel(x), ToPixel(y)), placement);
    if (!hit) return false;
    const double gap = std::abs(DepthOf(hit.point) - static_cast<double>(sample.depth));
    return gap * SamplesPerDepth(hit.point) < kSameDepth;
}

double SurfaceSampler::SamplesPerDepth(const SurfaceSample& sample, int x, int y) const {
    return SamplesPerDepth(dg::DPoint3D(ToPixel(x), ToPixel(y), static_cast<double>(sample.depth)) *
                           m_camera.GetPixelToWorld());
}

// Compares what a step along x and one along depth come to in the world, which in a central view is another
// ratio at every place.
double SurfaceSampler::SamplesPerDepth(const dg::DPoint3D& point) const {
    const dg::DMat44& m = m_camera.GetPixelToWorld();
    const auto step = [&](std::size_t row) {
        return dg::DVec3(m(row, 0) - m(row, 3) * point.x, m(row, 1) - m(row, 3) * point.y,
                         m(row, 2) - m(row, 3) * point.z)
            .Length();
    };
    return step(2) / step(0) * m_samplesPerPixel;
}

double SurfaceSampler::DepthOf(const dg::DPoint3D& point) const {
    return (point * m_camera.GetWorldToPixel()).z;
}

}  // namespace zrsheet
