// The shape of a part as the scene knows it.

#pragma once

#include <utility>

#include "du/SmartPtr.h"
#include "zrg/Shape.h"
#include "zrk/object/Object.h"

namespace zrk {

/// Never changes once made. All instances of a part share one.
class Shape : public Object {
public:
    /// `data` may be null: a part whose geometry is not loaded.
    explicit Shape(du::SmartPtr<zrg::Shape> data) : m_data(std::move(data)) {}
    ~Shape() override;

    zrg::Shape* GetShapeData() const { return m_data.get(); }

private:
    du::SmartPtr<zrg::Shape> m_data;
};

}  // namespace zrk
