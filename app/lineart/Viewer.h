// A camera as line art asks it: where the eye is from a point, how large a pixel is there, where a point
// falls.

#pragma once

#include "dg/Camera3D.h"

namespace zrsheet {

/// Parallel and central views alike. Never changes once made, so any thread may ask.
class Viewer {
public:
    explicit Viewer(const dg::Camera3D& camera);

    /// Of length 1.
    dg::DVec3 TowardsEye(const dg::DPoint3D& point) const {
        return m_isParallel ? m_towards : (m_eye - point).Normalized();
    }
    /// How far the nearest plane is on the way to the eye; negative when the point lies before it.
    double RoomBefore(const dg::DPoint3D& point) const;
    dg::DPoint3D ToPixel(const dg::DPoint3D& point) const { return point * m_camera.GetWorldToPixel(); }
    dg::DPoint3D ToWorld(const dg::DPoint3D& pixel) const { return pixel * m_camera.GetPixelToWorld(); }
    /// The world's length of a pixel there.
    double PixelSize(const dg::DPoint3D& point) const;
    /// Cuts off what lies before the nearest plane. Returns false when nothing is left; else `from` and `to`
    /// (world) have been moved.
    bool ClipNear(dg::DPoint3D& from, dg::DPoint3D& to) const;

    const dg::Camera3D& Camera() const { return m_camera; }

private:
    double DepthTimesW(const dg::DPoint3D& point) const;

    dg::Camera3D m_camera;
    bool m_isParallel = true;
    dg::DVec3 m_towards;  // of parallel views
    dg::DPoint3D m_eye;   // of central ones
};

}  // namespace zrsheet
