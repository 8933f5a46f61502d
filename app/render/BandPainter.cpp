#include "app/render/BandPainter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zrsheet {
namespace {

// Reach of the filter from the middle of a pixel, in pixels. A tent draws slanting lines more evenly than the
// mean of the pixel's own samples, which is what half a pixel would be.
constexpr double kFilterReach = 0.85;

using Ground = std::array<double, 3>;  // red, green, blue

Ground GroundOf(const PictureStyle& style, int row, int rows) {
    const double share = (row + 0.5) / rows;
    const auto mix = [share](float top, float bottom) {
        return static_cast<double>(top) + share * static_cast<double>(bottom - top);
    };
    return {mix(style.groundTop.r, style.groundBottom.r), mix(style.groundTop.g, style.groundBottom.g),
            mix(style.groundTop.b, style.groundBottom.b)};
}

std::uint8_t* PixelAt(Raster& raster, int x, int y) {
    const auto width = static_cast<std::size_t>(raster.width);
    return raster.pixels.data() + 3 * (static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x));
}

std::uint8_t ToByte(double tone) {
    return static_cast<std::uint8_t>(std::lround(255.0 * std::clamp(tone, 0.0, 1.0)));
}

}  // namespace

/// Some columns of a band's samples and the ink on them, with rows and columns counted in the whole grid.
class BandPainter::Band {
public:
    Band(const SurfaceSampler& sampler, const SampleWindow& window)
        : m_firstRow(window.top),
          m_lastRow(window.bottom),
          m_firstColumn(window.left),
          m_lastColumn(window.right),
          m_width(static_cast<std::size_t>(window.right - window.left)) {
        const std::size_t count = static_cast<std::size_t>(m_lastRow - m_firstRow) * m_width;
        m_samples.resize(count);
        m_ink.resize(count, 0.0F);
        for (int y = m_firstRow; y < m_lastRow; ++y)
            sampler.SampleRow(y, m_firstColumn,
                              std::span(m_samples).subspan(IndexOf(m_firstColumn, y), m_width));
    }

    int GetFirstRow() const { return m_firstRow; }
    int GetLastRow() const { return m_lastRow; }
    int GetFirstColumn() const { return m_firstColumn; }
    int GetLastColumn() const { return m_lastColumn; }
    const SurfaceSample& SampleAt(int x, int y) const { return m_samples[IndexOf(x, y)]; }
    SurfaceSample& SampleAt(int x, int y) { return m_samples[IndexOf(x, y)]; }
    float InkAt(int x, int y) const { return m_ink[IndexOf(x, y)]; }

    /// A round dot; where dots overlap the darker counts.
    void Stamp(double centreX, double centreY, double radius) {
        const int firstX = std::max(static_cast<int>(std::ceil(centreX - radius - 0.5)), m_firstColumn);
        const int lastX = std::min(static_cast<int>(std::floor(centreX + radius + 0.5)), m_lastColumn - 1);
        const int firstY = std::max(static_cast<int>(std::ceil(centreY - radius - 0.5)), m_firstRow);
        const int lastY = std::min(static_cast<int>(std::floor(centreY + radius + 0.5)), m_lastRow - 1);
        for (int y = firstY; y <= lastY; ++y) {
            for (int x = firstX; x <= lastX; ++x) {
                const double distance = std::hypot(x - centreX, y - centreY);
                float& ink = m_ink[IndexOf(x, y)];
                ink = std::max(ink, static_cast<float>(std::clamp(radius + 0.5 - distance, 0.0, 1.0)));
            }
        }
    }

private:
    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>(y - m_firstRow) * m_width +
               static_cast<std::size_t>(x - m_firstColumn);
    }

    int m_firstRow;
    int m_lastRow;
    int m_firstColumn;
    int m_lastColumn;
    std::size_t m_width;
    std::vector<SurfaceSample> m_samples;
    std::vector<float> m_ink;
};

BandPainter::BandPainter(const SurfaceSampler& sampler, const EdgeRule& rule, const PartSurvey& survey,
                         const PictureStyle& style, const dg::DVec3& towardsLight)
    : m_sampler(sampler),
      m_rule(rule),
      m_survey(survey),
      m_style(style),
      m_towardsLight(towardsLight),
      m_samples(style.samplesPerPixel),
      m_samplesPerPagePixel(rule.SamplesPerPagePixel()) {
    m_tints.reserve(style.colors.size());
    for (const dg::Color& color : style.colors) {
        const auto tint = [&style](float share) {
            return 1.0 - style.colorStrength * (1.0 - static_cast<double>(share));
        };
        m_tints.push_back({tint(color.r), tint(color.g), tint(color.b)});
    }
    const double widest =
        std::max({style.outlineWidth, style.overlapWidth, style.contactWidth, style.creaseWidth});
    m_drawsLines = widest > 0.0;
    m_margin = static_cast<int>(std::ceil(0.5 * widest * m_samplesPerPagePixel)) + m_samples + 2;
    const double middle = 0.5 * m_samples;
    double sum = 0.0;
    for (int i = -m_samples; i < 2 * m_samples; ++i) {
        const double weight = kFilterReach * m_samples - std::abs(i + 0.5 - middle);
        if (weight <= 0.0) continue;
        m_taps.push_back({i, weight});
        sum += weight;
    }
    for (Tap& tap : m_taps) tap.weight /= sum;
}

void BandPainter::Paint(int first, int last, Raster& raster) const {
    const SampleWindow& window = m_sampler.GetWindow();
    const int firstColumn = std::max(window.left - m_margin, 0);
    const int lastColumn = std::min(window.right + m_margin, m_sampler.GetWidth());
    const SampleWindow here{firstColumn, first * m_samples - m_margin, std::max(lastColumn, firstColumn),
                            last * m_samples + m_margin};
    if (here.bottom <= window.top || here.top >= window.bottom) {
        for (int y = first; y < last; ++y) PaintGround(y, 0, raster.width, raster);
        return;
    }
    Band band(m_sampler, here);
    RemoveSpecks(band);
    if (m_drawsLines) DrawLines(band);
    Resolve(band, first, last, raster);
}

// All specks are found before the first is mended, or what is mended would depend on where the band begins.
void BandPainter::RemoveSpecks(Band& band) const {
    struct Mend {
        int x;
        int y;
        SurfaceSample sample;
    };
    std::vector<Mend> mends;
    for (int y = band.GetFirstRow() + 1; y + 1 < band.GetLastRow(); ++y) {
        for (int x = band.GetFirstColumn() + 1; x + 1 < band.GetLastColumn(); ++x) {
            if (IsSpeck(band, x, y, false)) {
                mends.push_back({x, y, band.SampleAt(x - 1, y)});
                mends.back().sample.depth += mends.back().sample.slopeX;
            } else if (IsSpeck(band, x, y, true)) {
                mends.push_back({x, y, band.SampleAt(x, y - 1)});
                mends.back().sample.depth += mends.back().sample.slopeY;
            }
        }
    }
    for (const Mend& mend : mends) band.SampleAt(mend.x, mend.y) = mend.sample;
}

bool BandPainter::IsSpeck(const Band& band, int x, int y, bool isVertical) const {
    const int beforeX = isVertical ? x : x - 1;
    const int beforeY = isVertical ? y - 1 : y;
    const SurfaceSample& before = band.SampleAt(beforeX, beforeY);
    const SurfaceSample& after = band.SampleAt(2 * x - beforeX, 2 * y - beforeY);
    return m_rule.IsSpeck(before, band.SampleAt(x, y), after, beforeX, beforeY, isVertical);
}

void BandPainter::DrawLines(Band& band) const {
    for (int y = band.GetFirstRow(); y < band.GetLastRow(); ++y) {
        for (int x = band.GetFirstColumn(); x < band.GetLastColumn(); ++x) {
            if (x + 1 < band.GetLastColumn()) DrawLine(band, x, y, false);
            if (y + 1 < band.GetLastRow()) DrawLine(band, x, y, true);
        }
    }
}

void BandPainter::DrawLine(Band& band, int x, int y, bool isVertical) const {
    const SurfaceSample& a = band.SampleAt(x, y);
    const SurfaceSample& b = isVertical ? band.SampleAt(x, y + 1) : band.SampleAt(x + 1, y);
    const double width = m_rule.LineWidth(a, b, x, y, isVertical);
    if (width <= 0.0) return;
    const double shareA = a.IsGround() ? 1.0 : m_survey.LineShare(a.placement);
    const double shareB = b.IsGround() ? 1.0 : m_survey.LineShare(b.placement);
    const double radius = 0.5 * width * std::min(shareA, shareB) * m_samplesPerPagePixel;
    band.Stamp(isVertical ? x : x + 0.5, isVertical ? y + 0.5 : y, radius);
}

void BandPainter::Resolve(const Band& band, int first, int last, Raster& raster) const {
    std::vector<Shade> columns(static_cast<std::size_t>(band.GetLastColumn() - band.GetFirstColumn()));
    const int left = band.GetFirstColumn() / m_samples;
    const int right = std::min((band.GetLastColumn() + m_samples - 1) / m_samples, raster.width);
    for (int y = first; y < last; ++y) {
        PaintGround(y, 0, left, raster);
        ResolveRow(band, y, columns, {left, right}, raster);
        PaintGround(y, right, raster.width, raster);
    }
}

void BandPainter::PaintGround(int y, int left, int right, Raster& raster) const {
    const Ground ground = GroundOf(m_style, y, raster.height);
    std::uint8_t* pixel = PixelAt(raster, left, y);
    for (int x = left; x < right; ++x) {
        for (const double channel : ground) *pixel++ = ToByte(channel);
    }
}

// Column by column first: the shades of a picture row, still with every sample's column.
void BandPainter::ResolveRow(const Band& band, int y, std::vector<Shade>& columns,
                             const std::pair<int, int>& pixels, Raster& raster) const {
    const int firstColumn = band.GetFirstColumn();
    std::fill(columns.begin(), columns.end(), Shade());
    for (const Tap& tap : m_taps) {
        for (int x = firstColumn; x < band.GetLastColumn(); ++x) {
            columns[static_cast<std::size_t>(x - firstColumn)].Add(
                tap.weight, ShadeAt(band, x, y * m_samples + tap.offset));
        }
    }
    const Ground ground = GroundOf(m_style, y, raster.height);
    std::uint8_t* pixel = PixelAt(raster, pixels.first, y);
    for (int x = pixels.first; x < pixels.second; ++x) {
        Shade shade;
        for (const Tap& tap : m_taps) {
            const int column = std::clamp(x * m_samples + tap.offset, firstColumn, band.GetLastColumn() - 1);
            shade.Add(tap.weight, columns[static_cast<std::size_t>(column - firstColumn)]);
        }
        for (std::size_t channel = 0; channel < ground.size(); ++channel)
            *pixel++ = ToByte(shade.tones[channel] - shade.ground * (1.0 - ground[channel]));
    }
}

BandPainter::Shade BandPainter::ShadeAt(const Band& band, int x, int y) const {
    const auto ink = static_cast<double>(band.InkAt(x, y));
    const SurfaceSample& sample = band.SampleAt(x, y);
    const double tone = ToneOf(sample) * (1.0 - ink);
    Shade shade{TintOf(sample), sample.IsGround() ? 1.0 - ink : 0.0};
    for (double& channel : shade.tones) channel = channel * tone + m_style.ink * ink;
    return shade;
}

BandPainter::Channels BandPainter::TintOf(const SurfaceSample& sample) const {
    return sample.IsGround() || m_tints.empty() ? Channels{1.0, 1.0, 1.0} : m_tints[sample.placement];
}

double BandPainter::ToneOf(const SurfaceSample& sample) const {
    if (sample.IsGround()) return 1.0;
    const dg::DVec3 normal(static_cast<double>(sample.normal.x), static_cast<double>(sample.normal.y),
                           static_cast<double>(sample.normal.z));
    const double light = 0.5 + 0.5 * normal.Dot(m_towardsLight);
    return m_style.darkestTone + (m_style.brightestTone - m_style.darkestTone) * light;
}

}  // namespace zrsheet
