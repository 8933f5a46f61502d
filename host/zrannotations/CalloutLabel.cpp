// The callout's label: its text and where it lies.

#include <atomic>
#include <utility>

#include "zrannotations/Callout.h"
#include "zrk/scene/Scene.h"

namespace zrannotations {
namespace {

constexpr int kWorldPlacement = 1;
constexpr int kRelativePlacement = 0;

unsigned NextDrawingOrder() {
    static std::atomic<unsigned> last{0};
    return ++last;
}

}  // namespace

du::Symbol Callout::GetText(bool localized) const {
    const std::lock_guard hold(m_mutex);
    return localized && !m_localizedText.empty() ? m_localizedText : m_text;
}

void Callout::SetText(const du::Symbol& text, bool localized) {
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        (localized ? m_localizedText : m_text) = text;
    }
    MarkDirty();
}

du::Symbol Callout::GetMarkupText() const { return GetText(true); }

bool Callout::CheckDynamicTextForLegacyCallout(const std::string& generated) const {
    const std::lock_guard hold(m_mutex);
    return m_legacyText && m_legacyText->Text() != generated;
}

void Callout::SetLegacyText(const du::Symbol& text) {
    BeforeChange();
    const std::lock_guard hold(m_mutex);
    m_legacyText = text;
    m_text = text;
}

CalloutStyle Callout::GetStyle() const {
    const std::lock_guard hold(m_mutex);
    return m_style;
}

void Callout::SetStyle(const CalloutStyle& style) {
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        m_style = style;
    }
    MarkDirty();
}

void Callout::SetupLocalizationIfNecessary(bool isLocalized) {
    if (!isLocalized) return;
    BeforeChange();
    if (m_localizable.empty()) m_localizable = GetText(false);
    m_localizable.SetEnabled(true);
}

void Callout::BringToFront() {
    const unsigned order = NextDrawingOrder();
    {
        const std::lock_guard hold(m_mutex);
        m_drawingOrder = order;
    }
    MarkDirty();
}

unsigned Callout::GetDrawingOrder() const {
    const std::lock_guard hold(m_mutex);
    return m_drawingOrder;
}

du::SmartPtr<zrk::ShapeView> Callout::MainView() const {
    auto scene = GetScene();
    if (!scene) {
        // Before it is shown a callout belongs to the scene of its part.
        const auto part = GetShapeInstanceAtPos(0);
        if (part) scene = part->GetShapeScene();
    }
    return scene ? du::DynamicCast<zrk::ShapeView>(scene->GetView(0)) : du::SmartPtr<zrk::ShapeView>();
}

void Callout::MarkDirty() {
    if (const auto view = MainView()) view->SetDirty();
}

int Callout::GetPlacementKind() const {
    return GetType() == CALLOUT_TYPE_FREE ? kWorldPlacement : kRelativePlacement;
}

/// From the coordinates in which the label is kept to the world.
bool Callout::LabelFrame(dg::DMat44& toWorld) const {
    if (GetPlacementKind() == kWorldPlacement) return true;
    dg::Location location;
    if (!GetInstanceLocationAtPos(location, 0)) return false;
    location.SetMat(dg::FMat33::Scale(location.GetScale()));
    toWorld = location.GetXform();
    return true;
}

dg::DPoint3D Callout::GetPosition() const {
    const std::lock_guard hold(m_mutex);
    return m_position;
}

void Callout::SetLabelPosition(const dg::DPoint3D& position) {
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        m_position = position;
        m_screenView = nullptr;
    }
    NotifyModified();
}

bool Callout::GetMarkupLabelPosition(dg::DPoint3D& out) const {
    dg::DMat44 toWorld;
    if (!LabelFrame(toWorld)) return false;
    out = GetPosition() * toWorld;
    return true;
}

bool Callout::SetMarkupLabelPosition(const dg::DPoint3D& world) {
    dg::DMat44 toWorld;
    if (!LabelFrame(toWorld)) return false;
    SetLabelPosition(world * toWorld.Invert());
    return true;
}

bool Callout::IsLabelInScreenSpace() const {
    const std::lock_guard hold(m_mutex);
    return static_cast<bool>(m_screenView);
}

void Callout::SetLabelScreenSpaceMode(const du::SmartPtr<zrk::ShapeView>& view) {
    dg::DPoint3D world;
    if (!view || !GetMarkupLabelPosition(world)) return;
    dg::Camera3D camera;
    view->GetCamera(camera);
    BeforeChange();
    const std::lock_guard hold(m_mutex);
    m_screenView = view;
    m_pixel = world * camera.GetWorldToPixel();
}

dg::DPoint3D Callout::GetLabelRelativeScreenPosition(du::SmartPtr<zrk::ShapeView>& view) const {
    {
        const std::lock_guard hold(m_mutex);
        if (m_screenView) {
            if (!view) view = m_screenView;
            return m_pixel;
        }
    }
    if (!view) view = MainView();
    dg::DPoint3D pixel;
    if (!view || !GetMarkupLabelPosition(pixel)) return pixel;
    dg::Camera3D camera;
    view->GetCamera(camera);
    return pixel * camera.GetWorldToPixel();
}

void Callout::GetBlendColor(const dg::Color& a, const dg::Color& b, dg::Color& out) {
    out.r = 0.5F * (a.r + b.r);
    out.g = 0.5F * (a.g + b.g);
    out.b = 0.5F * (a.b + b.b);
}

}  // namespace zrannotations
