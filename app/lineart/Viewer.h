// A camera as line art asks it: where the eye is from a point, how large a pixel is there, where a point
// falls.

#pragma once

#include "app/render/PixelBox.h"
#include "dg/Camera3D.h"

namespace zrsheet {

/// Parallel and central views alike. Never changes once made, so any thread may ask.
class Viewer {
public:
    explicit Viewer(const dg::Camera3D& camera);

    /// Do all points have the eye on the same side, infinitely far away?
    bool IsParallel() const { return m_isParallel; }
    /// Of length 1.
    dg::DVec3 TowardsEye(const dg::DPoint3D& point) const {
        return m_isParallel ? m_towards : (m_eye - point).Normalized();
    }
    /// How far the nearest plane is on the way to the eye; negative when the point lies before it.
    double RoomBefore(const dg::DPoint3D& point) const;
    /// Does it lie before the nearest plane?
    bool IsBefore(const dg::DPoint3D& point) const { return DepthTimesW(point) < 0.0; }
    dg::DPoint3D ToPixel(const dg::DPoint3D& point) const { return point * m_camera.GetWorldToPixel(); }
    dg::DPoint3D ToWorld(const dg::DPoint3D& pixel) const { return pixel * m_camera.GetPixelToWorld(); }
    /// The world's length of a pixel there.
    double PixelSize(const dg::DPoint3D& point) const;
    /// Cuts off what lies before the nearest plane. Returns false when nothing is left; else `from` and `to`
    /// (world) have been moved.
    bool ClipNear(dg::DPoint3D& from, dg::DPoint3D& to) const;

    /// The viewport and a margin, in which lines are drawn.
    const PixelBox& Picture() const { return m_picture; }
    const dg::Camera3D& Camera() const { return m_camera; }

private:
    double DepthTimesW(const dg::DPoint3D& point) const;

    dg::Camera3D m_camera;
    PixelBox m_picture;
    bool m_isParallel = true;
    dg::DVec3 m_towards;  // of parallel views
    double m_pixelSize = 0.0;
    double m_room = 0.0;  // towards the eye, per unit of depth
    dg::DPoint3D m_eye;   // of central ones
};

}  // namespace zrsheet
