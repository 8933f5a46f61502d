// Which part is seen where: a grid over the picture, and the outlines of the areas in it.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "app/lineart/CurveSight.h"
#include "app/lineart/LineArt.h"
#include "dg/Camera3D.h"
#include "zrg/RayScene.h"

namespace zrsheet {

class AreaMap {
public:
    /// Asks closely where `pieces` run, since areas end at lines, and coarsely elsewhere; where the coarse
    /// look finds different parts it asks closely too. The map does not depend on `threads`.
    AreaMap(const zrg::RayScene& scene, const dg::Camera3D& camera, std::span<const SeenPiece> pieces,
            unsigned threads);

    /// How many square pixels of each placement are seen.
    std::vector<double> Sizes() const;
    /// By placement; specks are left out.
    std::vector<VisibleArea> Outlines() const;

private:
    static constexpr std::uint32_t kGround = zrg::RayHit::kNothing;

    class Tracer;

    std::uint32_t At(int x, int y) const {
        if (x < 0 || y < 0 || x >= m_width || y >= m_height) return kGround;
        return m_placements[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
                            static_cast<std::size_t>(x)];
    }
    void FillRow(const zrg::RayScene& scene, const dg::Camera3D& camera, int blockRow,
                 const std::vector<bool>& hasLine);

    int m_width;  // in samples
    int m_height;
    int m_blocks;  // along the width
    std::uint32_t m_count;
    std::vector<std::uint32_t> m_placements;
};

}  // namespace zrsheet
