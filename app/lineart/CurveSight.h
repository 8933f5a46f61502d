// Finds what of a curve is seen, and as what kind of line.

#pragma once

#include <vector>

#include "app/lineart/Curve.h"
#include "app/lineart/LineArt.h"
#include "app/lineart/Viewer.h"
#include "zrg/RayScene.h"

namespace zrsheet {

/// A piece of a curve in the picture.
struct SeenPiece {
    LineKind kind = LineKind::Edge;
    std::uint32_t placement = 0;
    std::vector<ArtPoint> points;
    double slack = 0.0;  // pixels by which the triangles may be off the line
};

/// Asks by rays against all triangles of the scene, several times a pixel of the curve's length; where the
/// answer changes the place is found to a fraction of a pixel. Any thread.
class CurveSight {
public:
    /// `size` is the scene's extent; both must outlive it.
    CurveSight(const zrg::RayScene& scene, const Viewer& viewer, double size)
        : m_scene(scene), m_viewer(viewer), m_size(size) {}

    /// Adds the pieces inside the viewport, the covered ones too if `withHidden`. `partSize` is the extent of
    /// the curve's part: lines do not hide behind what covers them by less than a small share of it.
    void Look(const Curve& curve, double partSize, bool withHidden, std::vector<SeenPiece>& pieces) const;

private:
    class Track;
    struct Span {
        double from = 0.0;
        double to = 0.0;
        LineKind kind = LineKind::Hidden;
    };

    std::vector<Track> TracksOf(const Curve& curve) const;
    std::vector<Span> SpansOf(const Track& track, double bias) const;
    LineKind KindAt(const Track& track, double at, double bias) const;
    double Switch(const Track& track, double from, double to, LineKind kind, double bias) const;
    bool IsCovered(const dg::DPoint3D& point, double bias) const;
    bool IsAgainstItself(const Track& track, const dg::DPoint3D& point, const dg::DVec3& away) const;

    const zrg::RayScene& m_scene;
    const Viewer& m_viewer;
    double m_size;
};

}  // namespace zrsheet
