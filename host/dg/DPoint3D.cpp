#include "dg/DPoint3D.h"

#include "dg/Location.h"

namespace dg {

DPoint3D& DPoint3D::operator*=(const DMat44& m) {
    const double w = x * m(0, 3) + y * m(1, 3) + z * m(2, 3) + m(3, 3);
    const DPoint3D moved(x * m(0, 0) + y * m(1, 0) + z * m(2, 0) + m(3, 0),
                         x * m(0, 1) + y * m(1, 1) + z * m(2, 1) + m(3, 1),
                         x * m(0, 2) + y * m(1, 2) + z * m(2, 2) + m(3, 2));
    // Exact for the affine matrices, which are by far the most.
    *this = w == 1.0 || w == 0.0 ? moved : DPoint3D(moved.x / w, moved.y / w, moved.z / w);
    return *this;
}

DPoint3D& DPoint3D::operator*=(const Location& location) { return *this *= location.GetXform(); }

}  // namespace dg
