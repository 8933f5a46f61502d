// A window onto a scene of parts: it has a camera and answers what lies under a pixel.

#pragma once

#include <memory>
#include <mutex>

#include "dg/Camera3D.h"
#include "dg/Color.h"
#include "du/Flags.h"
#include "du/SmartPtr.h"
#include "zrk/event/PickEvent.h"
#include "zrk/scene/PickQueue.h"
#include "zrk/scene/ShapeScene.h"
#include "zrk/scene/View.h"
#include "zrk/scene/VisibilityMap.h"

namespace zrk {

/// Any thread. Picks are queued with the kernel and answered when it dispatches; `event` then completes with
/// status 0 and what the eye meets first, or with another status when the kernel stops before. Nothing is met
/// behind hidden parts only.
class ShapeView : public View {
public:
    static const ClassType CLASS_TYPE;

    ShapeView(const du::SmartPtr<ShapeScene>& scene, unsigned viewId);
    ~ShapeView() override;

    const ClassType& GetClassType() const override { return CLASS_TYPE; }

    /// Null once the scene is gone.
    du::SmartPtr<ShapeScene> GetShapeScene() const { return du::DynamicCast<ShapeScene>(GetScene()); }
    void GetCamera(dg::Camera3D& out) const;
    void GetBackgroundColors(dg::Color& top, dg::Color& bottom, dg::Color& border) const;

    /// Through another camera than the view's own.
    void Pick(const dg::Camera3D& camera, int x, int y, du::Flags flags, PickEvent* event);
    /// Through the view's own camera.
    virtual void Pick(int x, int y, du::Flags flags, PickEvent* event);
    /// As if the part were alone in the scene.
    void Pick(const du::SmartPtr<ShapeInstance>& only, int x, int y, du::Flags flags, PickEvent* event);

    /// Keeps the viewport's size when the camera brings none.
    void SetCamera(const dg::Camera3D& camera);
    void SetBackgroundColors(const dg::Color& top, const dg::Color& bottom, const dg::Color& border);
    void Resize(int width, int height);
    /// Called now and then by the application: observers compare the camera with the one they checked last.
    void OnTimer();

    /// Where the parts are seen; made when first asked for after the camera or a part changed.
    std::shared_ptr<const VisibilityMap> GetVisibilityMap() const;

private:
    struct Colors {
        dg::Color top{1.0F, 1.0F, 1.0F, 1.0F};
        dg::Color bottom{1.0F, 1.0F, 1.0F, 1.0F};
        dg::Color border{1.0F, 1.0F, 1.0F, 1.0F};

        friend bool operator==(const Colors&, const Colors&) = default;
    };

    /// The change, which is made, belongs to the scene's open transaction. Views that are no view of the
    /// scene (those of insets) follow others and are left out.
    template <class Apply, class State>
    void TakeIn(Apply apply, const State& former, const State& state);
    void PutCamera(const dg::Camera3D& camera);
    void PutColors(const Colors& colors);

    const std::shared_ptr<PickQueue> m_picks = std::make_shared<PickQueue>();
    mutable du::LeafLock m_mutex;  // guards the two below
    dg::Camera3D m_camera;
    Colors m_colors;
    std::mutex m_timerMutex;  // guards m_lastChecked between timers; observers get a copy
    dg::Camera3D m_lastChecked;
    mutable std::mutex m_mapMutex;  // guards the three below; held while the map is built, which calls nobody
    mutable std::shared_ptr<const VisibilityMap> m_map;
    mutable dg::Camera3D m_mapCamera;
    mutable std::uint64_t m_mapRevision = 0;
};

}  // namespace zrk
