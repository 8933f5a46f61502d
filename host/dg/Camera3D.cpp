#include "dg/Camera3D.h"

#include <cmath>

namespace dg {
namespace {

/// The eye's axes in the world: right, down and forward.
struct Axes {
    DVec3 right;
    DVec3 down;
    DVec3 forward;
};

Axes AxesOf(const DVec3& direction, const DVec3& up) {
    const DVec3 forward = direction.Normalized();
    const DVec3 right = forward.Cross(up).Normalized();
    return {right, forward.Cross(right), forward};
}

/// World coordinates relative to `origin`, along the axes.
DMat44 ToEye(const DPoint3D& origin, const Axes& axes) {
    const DVec3 o(origin.x, origin.y, origin.z);
    return DMat44({axes.right.x, axes.down.x, axes.forward.x, 0,  //
                   axes.right.y, axes.down.y, axes.forward.y, 0,  //
                   axes.right.z, axes.down.z, axes.forward.z, 0,  //
                   -o.Dot(axes.right), -o.Dot(axes.down), -o.Dot(axes.forward), 1});
}

}  // namespace

Camera3D::Camera3D(const DMat44& worldToPixel, int width, int height)
    : m_worldToPixel(worldToPixel), m_pixelToWorld(worldToPixel.Invert()), m_width(width), m_height(height) {}

Camera3D Camera3D::Orthographic(const DPoint3D& target, const DVec3& direction, const DVec3& up,
                                double pixelsPerUnit, int width, int height, double depthRange) {
    const DMat44 toPixel({pixelsPerUnit, 0, 0, 0, 0, pixelsPerUnit, 0, 0, 0, 0, 0.5 / depthRange, 0,
                          0.5 * width, 0.5 * height, 0.5, 1});
    return {ToEye(target, AxesOf(direction, up)) * toPixel, width, height};
}

Camera3D Camera3D::Perspective(const DPoint3D& eye, const DPoint3D& target, const DVec3& up,
                               double fieldOfView, double nearDistance, double farDistance, int width,
                               int height) {
    const double focal = 0.5 * height / std::tan(0.5 * fieldOfView);
    const double depthScale = farDistance / (farDistance - nearDistance);
    const DMat44 toPixel({focal, 0, 0, 0,                            //
                          0, focal, 0, 0,                            //
                          0.5 * width, 0.5 * height, depthScale, 1,  //
                          0, 0, -nearDistance * depthScale, 0});
    return {ToEye(eye, AxesOf(target - eye, up)) * toPixel, width, height};
}

void Camera3D::SetViewport(int width, int height) {
    m_width = width;
    m_height = height;
}

Camera3D Camera3D::Magnified(const DPoint3D& from, const DPoint3D& to, double factor) const {
    const DMat44 magnify({factor, 0, 0, 0, 0, factor, 0, 0, 0, 0, 1, 0,  //
                          to.x - factor * from.x, to.y - factor * from.y, 0, 1});
    return {m_worldToPixel * magnify, m_width, m_height};
}

Ray Camera3D::PixelRay(double x, double y) const {
    const DPoint3D nearest = DPoint3D(x, y, 0.0) * m_pixelToWorld;
    const DPoint3D farthest = DPoint3D(x, y, 1.0) * m_pixelToWorld;
    return {nearest, (farthest - nearest).Normalized()};
}

}  // namespace dg
