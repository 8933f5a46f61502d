// A part in a scene: its shape, where it stands, and whether it is shown.

#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

#include "dg/Location.h"
#include "du/BackLink.h"
#include "du/LeafLock.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "zrk/object/Object.h"
#include "zrk/scene/Shape.h"
#include "zrk/tree/Instance.h"

namespace zrk {

class ShapeScene;

/// Made, moved, shown and hidden by its scene only. Any thread.
class ShapeInstance : public Object {
public:
    static const ClassType CLASS_TYPE;

    ~ShapeInstance() override;

    const ClassType& GetClassType() const override { return CLASS_TYPE; }

    void GetInstance(du::SmartPtr<Instance>& out) const { out = m_instance; }
    const du::SmartPtr<Shape>& GetShape() const { return m_shape; }
    /// From local to world coordinates.
    void GetLocation(dg::Location& out) const;
    bool IsVisible() const { return m_isVisible.load(std::memory_order_relaxed); }
    /// Shown as a hint only; picks may look through it.
    bool IsPhantom() const { return m_isPhantom.load(std::memory_order_relaxed); }
    /// Which of the part's representations is shown; empty for parts that have only one.
    du::Symbol GetCurrentShapeSource() const { return m_shapeSource; }
    /// Null once the scene is gone.
    du::SmartPtr<ShapeScene> GetShapeScene() const;
    /// Its place in the order in which the scene's parts were made.
    std::uint64_t GetSequence() const { return m_sequence; }

private:
    friend class ShapeScene;

    ShapeInstance(const du::SmartPtr<Instance>& instance, const du::Symbol& shapeSource,
                  std::uint64_t sequence, std::shared_ptr<du::BackLink<ShapeScene>> scene);

    const du::SmartPtr<Instance> m_instance;
    const du::SmartPtr<Shape> m_shape;
    const du::Symbol m_shapeSource;
    const std::uint64_t m_sequence;
    const std::shared_ptr<du::BackLink<ShapeScene>> m_scene;
    mutable du::LeafLock m_mutex;  // guards m_location
    dg::Location m_location;
    // Single flags whose readers need no other field to agree with them.
    std::atomic<bool> m_isVisible{true};
    std::atomic<bool> m_isPhantom{false};
};

}  // namespace zrk
