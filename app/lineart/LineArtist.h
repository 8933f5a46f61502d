// Draws line art of a scene: what a draughtsman would draw of it, as lines.

#pragma once

#include <cstdint>
#include <vector>

#include "app/lineart/EdgeMesh.h"
#include "app/lineart/LineArt.h"
#include "app/lineart/LineRule.h"
#include "app/lineart/PlacedMesh.h"
#include "app/lineart/SceneCurves.h"
#include "dg/Camera3D.h"
#include "zrg/RayScene.h"

namespace zrsheet {

/// Finds the edges of all shapes, and where parts run through each other, once; then draws from any side.
class LineArtist {
public:
    /// The scene must outlive it. Requires: at least one thread. Cost: n log n of the triangles of different
    /// shapes, and of those that overlap others'.
    LineArtist(const zrg::RayScene& scene, const LineRule& rule, unsigned threads);
    LineArtist(const LineArtist&) = delete;
    LineArtist& operator=(const LineArtist&) = delete;
    ~LineArtist() = default;

    /// What `camera` sees, as large as its viewport, which is not empty. The same for any number of threads.
    /// Cost: about a ray for each pixel of all lines, and some more for the areas. Any thread.
    [[nodiscard]] LineArt Draw(const dg::Camera3D& camera) const;

private:
    void FindCrossings();

    const zrg::RayScene& m_scene;
    LineRule m_rule;
    unsigned m_threads;
    std::vector<EdgeMesh> m_meshes;            // of each shape
    std::vector<std::uint32_t> m_meshNumbers;  // of each placement
    std::vector<PlacedMesh> m_placed;          // the placements
    std::vector<CrossingSet> m_crossings;
    double m_size = 0.0;  // of the scene
};

}  // namespace zrsheet
