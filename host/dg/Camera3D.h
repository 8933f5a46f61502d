// How a view looks at the world: a matrix to pixels and the size of its viewport.
//
// Pixel space has its origin at the viewport's top left, x to the right, y downwards, and z from 0 (nearest)
// to 1. Whole coordinates are sample points: the ray of the pixel (3, 4) goes exactly through (3.0, 4.0).

#pragma once

#include "dg/DMat44.h"
#include "dg/DPoint3D.h"
#include "dg/DVec3.h"
#include "dg/Ray.h"

namespace dg {

class Camera3D {
public:
    /// No viewport and the identity as matrix.
    Camera3D() = default;

    /// A parallel projection along `direction` whose viewport has `target` in its middle. Depth covers
    /// `depthRange` world units before and behind the target. Requires: `direction` and `up` not parallel.
    static Camera3D Orthographic(const DPoint3D& target, const DVec3& direction, const DVec3& up,
                                 double pixelsPerUnit, int width, int height, double depthRange);
    /// A central projection. Requires: 0 < nearDistance < farDistance.
    static Camera3D Perspective(const DPoint3D& eye, const DPoint3D& target, const DVec3& up,
                                double fieldOfView, double nearDistance, double farDistance, int width,
                                int height);
    /// The camera whose matrix and viewport were read before. Requires: the matrix has an inverse.
    static Camera3D FromMatrix(const DMat44& worldToPixel, int width, int height) {
        return {worldToPixel, width, height};
    }

    const DMat44& GetWorldToPixel() const { return m_worldToPixel; }
    const DMat44& GetPixelToWorld() const { return m_pixelToWorld; }
    int GetViewportWidth() const { return m_width; }
    int GetViewportHeight() const { return m_height; }
    void SetViewport(int width, int height);

    /// The same view magnified: what lies at the pixel `from` appears at the pixel `to`, and everything
    /// around it `factor` times as large. Depth stays.
    Camera3D Magnified(const DPoint3D& from, const DPoint3D& to, double factor) const;

    /// From the nearest plane through the pixel coordinate, away from the eye.
    Ray PixelRay(double x, double y) const;

    /// Exact.
    friend bool operator==(const Camera3D&, const Camera3D&) = default;

private:
    Camera3D(const DMat44& worldToPixel, int width, int height);

    DMat44 m_worldToPixel;
    DMat44 m_pixelToWorld;
    int m_width = 0;
    int m_height = 0;
};

}  // namespace dg
