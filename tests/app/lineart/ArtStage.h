// A stage for line art: shapes to place, cameras, and the lines as numbers.

#pragma once

#include <vector>

#include "app/lineart/LineArtist.h"
#include "dg/Camera3D.h"
#include "tests/app/render/ModelStage.h"
#include "zrg/RayScene.h"

namespace zrsheet::test {

/// A closed drum around the z axis, from z = 0 up.
ShapePtr Drum(double radius, double height, int sides);
/// The shape with its triangles wound the other way.
ShapePtr InsideOut(const ShapePtr& shape);

/// A straight piece of a line.
struct Stroke {
    LineKind kind = LineKind::Edge;
    ArtPoint from;
    ArtPoint to;

    double Length() const;
};

class ArtStage {
public:
    /// Parallel, from +z, a unit a pixel, the origin in the middle of 400 x 300.
    ArtStage();

    void Add(const ShapePtr& shape, const dg::Location& location = {});
    void LookFrom(const dg::DVec3& towardsEye, double pixelsPerUnit = 1.0);
    void SetCamera(const dg::Camera3D& camera) { m_camera = camera; }
    const dg::Camera3D& Camera() const { return m_camera; }
    LineRule& Rule() { return m_rule; }
    const zrg::RayScene& Scene();

    LineArt Draw(unsigned threads = 2);
    std::vector<Stroke> Strokes();
    /// Together, of one kind.
    double LengthOf(LineKind kind);
    ArtPoint PixelOf(const dg::DPoint3D& point) const;

private:
    zrg::RayScene m_scene;
    dg::Camera3D m_camera;
    LineRule m_rule;
    bool m_isCommitted = false;
};

}  // namespace zrsheet::test
