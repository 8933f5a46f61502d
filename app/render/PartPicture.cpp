#include "app/render/PartPicture.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "app/render/BandPainter.h"
#include "app/render/EdgeRule.h"
#include "app/render/ParallelFor.h"
#include "app/render/PartSurvey.h"
#include "app/render/SmoothNormals.h"
#include "app/render/SurfaceSampler.h"
#include "du/Assert.h"

namespace zrsheet {
namespace {

constexpr int kBandRows = 32;
constexpr double kSurveySamples = 0.5;  // per page pixel and axis

/// From the eye's upper left, and rather from the eye than from above, so that no face it sees is black.
dg::DVec3 TowardsLight(const dg::Camera3D& camera) {
    const double x = 0.5 * camera.GetViewportWidth();
    const double y = 0.5 * camera.GetViewportHeight();
    const auto world = [&camera](double px, double py) {
        return dg::DPoint3D(px, py, 0.0) * camera.GetPixelToWorld();
    };
    const dg::DVec3 left = (world(x - 1.0, y) - world(x, y)).Normalized();
    const dg::DVec3 up = (world(x, y - 1.0) - world(x, y)).Normalized();
    const dg::DVec3 towardsEye = camera.PixelRay(x, y).direction * -1.0;
    return (left * 0.45 + up * 0.75 + towardsEye * 0.5).Normalized();
}

/// The smoothed normals of what is seen; a shape placed many times is smoothed once.
class Smoothing {
public:
    Smoothing(const zrg::RayScene& scene, const PartSurvey& survey, double creaseAngle, unsigned threads)
        : m_ofPlacement(scene.GetPlacementCount(), nullptr) {
        std::map<const zrg::Shape*, std::size_t> places;
        std::vector<const zrg::Shape*> shapes;
        for (std::uint32_t i = 0; i < m_ofPlacement.size(); ++i) {
            if (survey.IsSeen(i) && places.try_emplace(&scene.GetShape(i), shapes.size()).second) {
                shapes.push_back(&scene.GetShape(i));
            }
        }
        m_normals.resize(shapes.size());
        ParallelFor(shapes.size(), threads,
                    [&](std::size_t i) { m_normals[i] = SmoothNormals(*shapes[i], creaseAngle); });
        for (std::uint32_t i = 0; i < m_ofPlacement.size(); ++i) {
            const auto place = places.find(&scene.GetShape(i));
            if (place != places.end()) m_ofPlacement[i] = &m_normals[place->second];
        }
    }

    std::span<const SmoothNormals* const> OfPlacement() const { return m_ofPlacement; }

private:
    std::vector<SmoothNormals> m_normals;
    std::vector<const SmoothNormals*> m_ofPlacement;  // null: the shape is not seen
};

}  // namespace

Raster RenderPicture(const zrg::RayScene& scene, const dg::Camera3D& camera, const PictureStyle& style,
                     std::span<const std::uint32_t> partOfPlacement, unsigned threads) {
    DU_ASSERT(partOfPlacement.size() == scene.GetPlacementCount(),
              "Every placement needs the number of its part.");
    DU_ASSERT(style.colors.empty() || style.colors.size() == scene.GetPlacementCount(),
              "Either every placement has a colour or none.");
    SurfaceSampler coarse(scene, camera, partOfPlacement, kSurveySamples / style.scale);
    coarse.FindGround();
    const PartSurvey survey(coarse, EdgeRule(coarse, style), scene.GetPlacementCount(), threads);
    const Smoothing smoothing(scene, survey, style.creaseAngle, threads);
    SurfaceSampler sampler(scene, camera, partOfPlacement, style.samplesPerPixel);
    sampler.FindGround();
    sampler.SetSmoothing(smoothing.OfPlacement());
    const EdgeRule rule(sampler, style);
    const BandPainter painter(sampler, rule, survey, style, TowardsLight(camera));

    Raster raster{camera.GetViewportWidth(), camera.GetViewportHeight(), {}};
    const auto width = static_cast<std::size_t>(raster.width);
    const auto height = static_cast<std::size_t>(raster.height);
    raster.pixels.resize(3 * width * height);
    const std::size_t bands = (height + kBandRows - 1) / kBandRows;
    ParallelFor(bands, threads, [&](std::size_t band) {
        const int first = static_cast<int>(band) * kBandRows;
        painter.Paint(first, std::min(first + kBandRows, raster.height), raster);
    });
    return raster;
}

}  // namespace zrsheet
