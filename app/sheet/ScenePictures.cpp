#include "app/sheet/ScenePictures.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <string>
#include <utility>

#include "app/render/PartPicture.h"
#include "zrannotations/Inset.h"

namespace zrsheet {
namespace {

using zrannotations::Inset;

PagePoint OnPage(const dg::DPoint3D& pixel, const PageBox& figure) {
    return {figure.x0 + pixel.x, figure.y0 + pixel.y};
}

/// Only the pixels around the glass are drawn. The box is laid on whole pixels of the view, as its picture
/// is.
void TakePicture(const Inset& inset, const ScenePainter& painter, const PageBox& figure,
                 const HotspotSource& hotspotsOf, SheetInset& out) {
    const Inset::Glass glass = inset.GetGlass();
    const double left = std::floor(glass.centre.x - glass.radius);
    const double top = std::floor(glass.centre.y - glass.radius);
    const double width = std::ceil(glass.centre.x + glass.radius) - left;
    const double height = std::ceil(glass.centre.y + glass.radius) - top;
    out.box = {figure.x0 + left, figure.y0 + top, figure.x0 + left + width, figure.y0 + top + height};
    dg::Camera3D magnifier;
    if (!inset.GetMagnifierCamera(magnifier)) return;
    dg::Camera3D window = magnifier.Magnified({left, top, 0.0}, {0.0, 0.0, 0.0}, 1.0);
    window.SetViewport(static_cast<int>(width), static_cast<int>(height));
    out.picture = painter.Shade(window);
    LineArt art = painter.Draw(window);
    out.lines = std::move(art.lines);
    out.hotspots = hotspotsOf(std::move(art.areas));
}

}  // namespace

std::vector<dg::Color> ColorsOf(const zrk::PickScene& scene, const ProductModel& model) {
    std::vector<dg::Color> colors;
    if (!model.HasColors()) return colors;
    colors.reserve(scene.GetParts().size());
    for (const auto& part : scene.GetParts()) colors.push_back(model.ColorOf(*part));
    return colors;
}

std::string CssColor(const dg::Color& color) {
    const auto channel = [](float value) {
        return std::lround(255.0 * std::clamp(static_cast<double>(value), 0.0, 1.0));
    };
    return fmt::format("#{:02x}{:02x}{:02x}", channel(color.r), channel(color.g), channel(color.b));
}

ScenePainter::ScenePainter(const zrk::PickScene& scene, const PictureChoice& choice,
                           const PictureStyle& style, unsigned threads)
    : m_scene(scene),
      m_mode(choice.mode),
      m_style(style),
      m_threads(threads),
      m_artist(scene.GetRays(), {style.creaseAngle, choice.hidden && choice.mode != PictureMode::Shaded},
               threads) {
    if (m_mode != PictureMode::Both) return;
    // The vectors are the lines then.
    m_style.outlineWidth = m_style.overlapWidth = m_style.contactWidth = m_style.creaseWidth = 0.0;
}

Raster ScenePainter::Shade(const dg::Camera3D& camera) const {
    if (m_mode == PictureMode::Line) return {};
    std::vector<std::uint32_t> numbers(m_scene.GetParts().size());
    std::iota(numbers.begin(), numbers.end(), 0U);
    dg::Camera3D fine = camera.Magnified({0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, m_style.scale);
    const auto scaled = [this](int length) { return static_cast<int>(std::lround(m_style.scale * length)); };
    fine.SetViewport(scaled(camera.GetViewportWidth()), scaled(camera.GetViewportHeight()));
    return RenderPicture(m_scene.GetRays(), fine, m_style, numbers, m_threads);
}

LineArt ScenePainter::Draw(const dg::Camera3D& camera) const {
    LineArt art = m_artist.Draw(camera);
    if (m_mode == PictureMode::Shaded) art.lines.clear();
    return art;
}

std::vector<SheetInset> InsetsOf(const zrk::AnnoSet& annotations, const ScenePainter& painter,
                                 const PageBox& figure, const HotspotSource& hotspotsOf) {
    std::vector<SheetInset> insets;
    int number = 0;
    for (const auto& annotation : annotations.GetAnnotations()) {
        const auto inset = du::DynamicCast<Inset>(annotation);
        if (!inset) continue;
        ++number;
        const Inset::Glass glass = inset->GetGlass();
        if (!inset->IsVisible() || glass.radius <= 0.0) continue;
        SheetInset& taken = insets.emplace_back();
        taken.id = "inset-" + std::to_string(number);
        taken.factor = static_cast<double>(glass.factor);
        taken.glass = {OnPage(glass.centre, figure), glass.radius};
        taken.source = {OnPage(glass.source, figure), glass.radius / taken.factor};
        TakePicture(*inset, painter, figure, hotspotsOf, taken);
    }
    return insets;
}

}  // namespace zrsheet
