// Which part is seen at each point of a grid over the picture.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "app/lineart/PlacedMesh.h"
#include "app/lineart/Viewer.h"
#include "app/render/PixelBox.h"

namespace zrsheet {

/// Never changes once made, so any thread may ask.
class PartRaster {
public:
    static constexpr std::uint32_t kGround = 0xFFFFFFFFU;

    /// `samples` per pixel along both axes, each in the middle of its share. Of parts whose surfaces are as
    /// near to each other as `coincident` (world) the first is seen. The same for any number of threads.
    /// Cost: O(triangles) and O(samples that they cover).
    PartRaster(std::span<const PlacedMesh> parts, const Viewer& viewer, int samples, double coincident,
               unsigned threads);

    int Samples() const { return m_samples; }
    /// In samples.
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    /// The number of the part; kGround also outside.
    std::uint32_t At(int x, int y) const {
        return x < 0 || y < 0 || x >= m_width || y >= m_height ? kGround
                                                               : Row(y)[static_cast<std::size_t>(x)];
    }
    std::span<const std::uint32_t> Row(int y) const {
        const auto width = static_cast<std::size_t>(m_width);
        return {m_parts.data() + static_cast<std::size_t>(y) * width, width};
    }

    /// Is everything covered that may be in the box? When in doubt it is not.
    bool Covers(const PixelBox& box) const;

private:
    class Band;

    int m_samples;
    int m_width;
    int m_height;
    int m_columns;          // of tiles
    double m_margin = 0.0;  // of depth
    std::vector<std::uint32_t> m_parts;
    std::vector<float> m_deepest;  // of each tile
};

}  // namespace zrsheet
