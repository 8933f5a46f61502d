// A scene of parts that is illustrated: it can have callouts and an item list.

#pragma once

#include <atomic>

#include "zrk/scene/ShapeScene.h"

namespace zrk::illustration {

class Illustration3dScene : public zrk::ShapeScene {
public:
    static const zrk::ClassType CLASS_TYPE;

    Illustration3dScene();
    ~Illustration3dScene() override;

    const zrk::ClassType& GetClassType() const override { return CLASS_TYPE; }

    /// Whether leaders are drawn in full dashes whatever covers them. Changing it tells nobody.
    bool GetDrawWhenHidden() const { return m_drawWhenHidden.load(std::memory_order_relaxed); }
    void SetDrawWhenHidden(bool draw) { m_drawWhenHidden.store(draw, std::memory_order_relaxed); }

private:
    std::atomic<bool> m_drawWhenHidden{false};  // alone: no other field goes with it
};

}  // namespace zrk::illustration
