// Decides where the illustration has a line: between which neighbouring samples, and of what weight.

#pragma once

#include "app/render/PictureStyle.h"
#include "app/render/SurfaceSampler.h"

namespace zrsheet {

/// Looks at two neighbouring samples only, so its answers do not depend on who asks or in which order. Any
/// thread.
class EdgeRule {
public:
    /// The sampler and the style must outlive it.
    EdgeRule(const SurfaceSampler& sampler, const PictureStyle& style);

    /// The width in page pixels of the line between the samples at (x, y) and one step right or, if
    /// `isVertical`, down; 0 when there is none.
    double LineWidth(const SurfaceSample& a, const SurfaceSample& b, int x, int y, bool isVertical) const;

    /// Is the middle one of three samples in a row a flaw of the mesh, with the surface running on from
    /// `before` to `after`? Rays slip through hairline cracks between facets, meet slivers whose normals are
    /// noise, and tell coincident faces apart by chance. (x, y) is the place of `before`.
    bool IsSpeck(const SurfaceSample& before, const SurfaceSample& middle, const SurfaceSample& after, int x,
                 int y, bool isVertical) const;

    /// Along each axis.
    double SamplesPerPagePixel() const;

private:
    bool IsCrease(const SurfaceSample& a, const SurfaceSample& b) const;
    double ToPixels(double depth, const SurfaceSample& at, int x, int y) const;

    const SurfaceSampler& m_sampler;
    const PictureStyle& m_style;
    float m_creaseCosine;
};

}  // namespace zrsheet
