#include "dg/DPoint3D.h"

#include "dg/Location.h"

namespace dg {

DPoint3D& DPoint3D::operator*=(const Location& location) { return *this *= location.GetXform(); }

}  // namespace dg
