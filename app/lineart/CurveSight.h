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
    /// Both must outlive it.
    CurveSight(const zrg::RayScene& scene, const Viewer& viewer) : m_scene(scene), m_viewer(viewer) {}

    /// Adds the pieces inside the viewport, the covered ones too if `withHidden`.
    void Look(const PlacedCurve& curve, bool withHidden, std::vector<SeenPiece>& pieces) const;

private:
    class Track;
    struct Span {
        double from = 0.0;
        double to = 0.0;
        LineKind kind = LineKind::Hidden;
    };

    std::vector<Track> TracksOf(const PlacedCurve& curve) const;
    Track WholeTrack(const PlacedCurve& curve) const;
    std::vector<Span> SpansOf(const Track& track) const;
    LineKind KindAt(const Track& track, double at) const;
    double Switch(const Track& track, double from, double to, LineKind kind) const;
    bool IsCovered(const dg::DPoint3D& point, double bias) const;
    bool IsAgainstItself(const Track& track, const dg::DPoint3D& point, const dg::DVec3& away) const;

    const zrg::RayScene& m_scene;
    const Viewer& m_viewer;
};

}  // namespace zrsheet
