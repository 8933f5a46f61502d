#include "zrk/scene/ShapeInstance.h"

#include <utility>

#include "zrk/scene/ShapeScene.h"

namespace zrk {
namespace {

du::SmartPtr<Shape> ShapeOf(const Instance& instance) {
    const auto& node = instance.GetComponentNode();
    return node ? node->GetShape() : du::SmartPtr<Shape>();
}

}  // namespace

constinit const ClassType ShapeInstance::CLASS_TYPE(20, "zrk::ShapeInstance", &Object::CLASS_TYPE);

ShapeInstance::ShapeInstance(const du::SmartPtr<Instance>& instance, const du::Symbol& shapeSource,
                             std::uint64_t sequence, std::shared_ptr<du::BackLink<ShapeScene>> scene)
    : m_instance(instance),
      m_shape(ShapeOf(*instance)),
      m_shapeSource(shapeSource),
      m_sequence(sequence),
      m_scene(std::move(scene)),
      m_location(instance->GetWorldLocation()) {}

ShapeInstance::~ShapeInstance() = default;

du::SmartPtr<ShapeScene> ShapeInstance::GetShapeScene() const { return m_scene->Lock(); }

void ShapeInstance::GetLocation(dg::Location& out) const {
    const std::lock_guard hold(m_mutex);
    out = m_location;
}

}  // namespace zrk
