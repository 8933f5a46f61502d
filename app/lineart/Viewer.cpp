#include "app/lineart/Viewer.h"

#include <cmath>

namespace zrsheet {
namespace {

// Share of the eye's distance in a row of the matrix: below it the eye is infinitely far away.
constexpr double kParallel = 1e-12;
constexpr double kMargin = 4.0;  // pixels around the viewport

}  // namespace

// In pixel space the eye is the point that lies infinitely far in front, so the matrix's row of depth is
// where it is in the world.
Viewer::Viewer(const dg::Camera3D& camera) : m_camera(camera) {
    m_picture.Add({-kMargin, -kMargin, 0.0});
    m_picture.Add({camera.GetViewportWidth() + kMargin, camera.GetViewportHeight() + kMargin, 0.0});
    const dg::DMat44& m = camera.GetPixelToWorld();
    const dg::DVec3 depth(m(2, 0), m(2, 1), m(2, 2));
    m_isParallel = std::abs(m(2, 3)) <= kParallel * depth.Length();
    if (m_isParallel) {
        m_towards = depth.Normalized() * -1.0;
        m_room = depth.Length();
        m_pixelSize = dg::DVec3(m(0, 0), m(0, 1), m(0, 2)).Length() / std::abs(m(3, 3));
    } else {
        m_eye = dg::DPoint3D() + depth * (1.0 / m(2, 3));
    }
}

double Viewer::RoomBefore(const dg::DPoint3D& point) const {
    if (m_isParallel) return DepthTimesW(point) * m_room;
    const dg::DPoint3D pixel = ToPixel(point);
    return (ToWorld({pixel.x, pixel.y, 0.0}) - point).Dot(TowardsEye(point));
}

double Viewer::PixelSize(const dg::DPoint3D& point) const {
    if (m_isParallel) return m_pixelSize;
    const dg::DPoint3D pixel = ToPixel(point);
    return (ToWorld({pixel.x + 1.0, pixel.y, pixel.z}) - point).Length();
}

double Viewer::DepthTimesW(const dg::DPoint3D& p) const {
    const dg::DMat44& m = m_camera.GetWorldToPixel();
    return p.x * m(0, 2) + p.y * m(1, 2) + p.z * m(2, 2) + m(3, 2);
}

bool Viewer::ClipNear(dg::DPoint3D& from, dg::DPoint3D& to) const {
    const double depthFrom = DepthTimesW(from);
    const double depthTo = DepthTimesW(to);
    if (depthFrom >= 0.0 && depthTo >= 0.0) return true;
    if (depthFrom < 0.0 && depthTo < 0.0) return false;
    const dg::DPoint3D cut = from + (to - from) * (depthFrom / (depthFrom - depthTo));
    (depthFrom < 0.0 ? from : to) = cut;
    return true;
}

}  // namespace zrsheet
