// Paints one band of rows of the illustration; bands know nothing of each other and may be painted side by
// side.

#pragma once

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "app/render/EdgeRule.h"
#include "app/render/PartSurvey.h"
#include "app/render/PictureStyle.h"
#include "app/render/Raster.h"
#include "app/render/SurfaceSampler.h"

namespace zrsheet {

/// What is handed over must outlive the painter. Any thread, different bands of one raster at once.
class BandPainter {
public:
    BandPainter(const SurfaceSampler& sampler, const EdgeRule& rule, const PartSurvey& survey,
                const PictureStyle& style, const dg::DVec3& towardsLight);

    /// Paints the rows from `first` to before `last`.
    void Paint(int first, int last, Raster& raster) const;

private:
    class Band;
    /// Weight of a sample in a pixel, along one axis; `offset` counts from the pixel's first sample.
    struct Tap {
        int offset = 0;
        double weight = 0.0;
    };
    using Channels = std::array<double, 3>;  // red, green, blue
    /// As on white ground, and how much of it the ground makes up.
    struct Shade {
        Channels tones{};
        double ground = 0.0;

        void Add(double weight, const Shade& other) {
            for (std::size_t i = 0; i < tones.size(); ++i) tones[i] += weight * other.tones[i];
            ground += weight * other.ground;
        }
    };

    void RemoveSpecks(Band& band) const;
    bool IsSpeck(const Band& band, int x, int y, bool isVertical) const;
    void DrawLines(Band& band) const;
    void DrawLine(Band& band, int x, int y, bool isVertical) const;
    void Resolve(const Band& band, int first, int last, Raster& raster) const;
    /// The pixels from the first to before the second.
    void ResolveRow(const Band& band, int y, std::vector<Shade>& columns, const std::pair<int, int>& pixels,
                    Raster& raster) const;
    void PaintGround(int y, int left, int right, Raster& raster) const;
    Shade ShadeAt(const Band& band, int x, int y) const;
    double ToneOf(const SurfaceSample& sample) const;
    Channels TintOf(const SurfaceSample& sample) const;

    const SurfaceSampler& m_sampler;
    const EdgeRule& m_rule;
    const PartSurvey& m_survey;
    const PictureStyle& m_style;
    dg::DVec3 m_towardsLight;
    std::vector<Channels> m_tints;  // of placements
    std::vector<Tap> m_taps;
    int m_samples;  // per pixel and axis
    double m_samplesPerPagePixel;
    bool m_drawsLines;
    int m_margin;  // rows of samples around a band whose lines reach into it
};

}  // namespace zrsheet
