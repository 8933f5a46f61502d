// A stage for small models: shapes to place, a camera, and eyes that count lines in the picture.

#pragma once

#include <cstdint>
#include <vector>

#include "app/render/PartPicture.h"
#include "dg/Camera3D.h"
#include "dg/Location.h"
#include "zrg/RayScene.h"
#include "zrg/Shape.h"

namespace zrsheet::test {

using ShapePtr = du::SmartPtr<zrg::Shape>;

/// A box between two corners, each face with vertices of its own.
ShapePtr Box(const dg::DPoint3D& low, const dg::DPoint3D& high);
/// A rectangle in the plane z = 0 of columns x rows squares, two triangles each.
ShapePtr Plate(double width, double height, int columns, int rows);
/// The mantle of a prism with `sides` faces around the z axis, each face with vertices of its own.
ShapePtr Mantle(double radius, double height, int sides);
/// Turned by `degrees` around the axis.
dg::Location Turned(const dg::DVec3& axis, double degrees, const dg::DPoint3D& position = {});

class ModelStage {
public:
    /// From +z, x to the right and y up, `pixelsPerUnit`; the origin is in the middle.
    ModelStage(int width, int height, double pixelsPerUnit = 1.0);

    void Add(std::uint32_t part, const ShapePtr& shape, const dg::Location& location = {});
    void SetCamera(const dg::Camera3D& camera) { m_camera = camera; }
    PictureStyle& Style() { return m_style; }
    Raster Render(unsigned threads = 2);

private:
    zrg::RayScene m_scene;
    dg::Camera3D m_camera;
    PictureStyle m_style;
    std::vector<std::uint32_t> m_parts;
    bool m_isCommitted = false;
};

/// 0 is black, 255 white.
int ToneAt(const Raster& raster, int x, int y);
/// The middles of the dark runs along row `y` between two columns.
std::vector<double> LinesAcross(const Raster& raster, int y, int firstX, int lastX);
/// How many pixels of the rectangle are darker than any surface.
int InkIn(const Raster& raster, int firstX, int firstY, int lastX, int lastY);
/// The darkness of a row's stretch, in widths of a black line.
double LineWeight(const Raster& raster, int y, int firstX, int lastX);

}  // namespace zrsheet::test
