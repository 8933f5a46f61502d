// A part definition: what all instances of the same part share.

#pragma once

#include <string>
#include <utility>

#include "du/SmartPtr.h"
#include "zrk/object/Object.h"
#include "zrk/scene/Shape.h"

namespace zrk {

/// Never changes once made. Two instances are of the same part when they share the node.
class ComponentNode : public Object {
public:
    /// Without a shape: an assembly.
    ComponentNode(std::string name, du::SmartPtr<Shape> shape)
        : m_name(std::move(name)), m_shape(std::move(shape)) {}
    ~ComponentNode() override;

    std::string GetObjectName() const override { return m_name; }
    const du::SmartPtr<Shape>& GetShape() const { return m_shape; }

private:
    std::string m_name;
    du::SmartPtr<Shape> m_shape;
};

}  // namespace zrk
