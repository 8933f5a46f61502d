// The curves of all parts of a scene that a camera may see.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "app/lineart/Curve.h"
#include "app/lineart/LineRule.h"
#include "app/lineart/PartRaster.h"
#include "app/lineart/PlacedMesh.h"
#include "app/lineart/Viewer.h"

namespace zrsheet {

/// Curves where parts run through each other; `placement` is one of the parts.
struct CrossingSet {
    std::uint32_t placement = 0;
    std::vector<Curve> curves;
};

/// Never changes once made, so any thread may read it.
class SceneCurves {
public:
    /// Leaves out what lies outside the picture and, unless hidden lines are wanted, what `raster` shows to
    /// be covered. `size` is the scene's. The crossings must outlive it.
    SceneCurves(std::span<const PlacedMesh> parts, std::span<const CrossingSet> crossings,
                const Viewer& viewer, const PartRaster& raster, const LineRule& rule, double size,
                unsigned threads);

    /// By part; crossings last.
    std::span<const PlacedCurve> List() const { return m_list; }

private:
    class Maker;

    std::vector<std::vector<Curve>> m_curves;
    std::vector<PlacedCurve> m_list;
};

}  // namespace zrsheet
