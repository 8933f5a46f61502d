// One thing that a pick met.

#pragma once

#include <utility>

#include "dg/DPoint3D.h"
#include "du/SmartPtr.h"
#include "zrk/object/Object.h"

namespace zrk {

class PickResult {
public:
    PickResult(du::SmartPtr<Object> object, const dg::DPoint3D& point)
        : m_object(std::move(object)), m_point(point) {}

    const du::SmartPtr<Object>& GetObject() const { return m_object; }
    /// In world coordinates.
    const dg::DPoint3D& GetPoint() const { return m_point; }

private:
    du::SmartPtr<Object> m_object;
    dg::DPoint3D m_point;
};

}  // namespace zrk
