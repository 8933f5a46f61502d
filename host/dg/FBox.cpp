#include "dg/FBox.h"

#include <algorithm>

namespace dg {
namespace {

template <class MovePoint>
FBox MoveCorners(const FBox& box, MovePoint movePoint) {
    FBox moved;
    if (box.IsEmpty()) return moved;
    for (unsigned corner = 0; corner < 8; ++corner) {
        moved.Enclose(movePoint((corner & 1U) != 0 ? box.max.x : box.min.x,
                                (corner & 2U) != 0 ? box.max.y : box.min.y,
                                (corner & 4U) != 0 ? box.max.z : box.min.z));
    }
    return moved;
}

}  // namespace

void FBox::Enclose(const FPoint3D& point) {
    min = {std::min(min.x, point.x), std::min(min.y, point.y), std::min(min.z, point.z)};
    max = {std::max(max.x, point.x), std::max(max.y, point.y), std::max(max.z, point.z)};
}

void FBox::Enclose(const FBox& box) {
    if (box.IsEmpty()) return;
    Enclose(box.min);
    Enclose(box.max);
}

FBox FBox::operator*(const Location& location) const {
    const DMat44 xform = location.GetXform();
    return MoveCorners(*this, [&xform](float x, float y, float z) {
        const DPoint3D p =
            DPoint3D(static_cast<double>(x), static_cast<double>(y), static_cast<double>(z)) * xform;
        return FPoint3D(static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z));
    });
}

FBox FBox::operator*(const FMat44& m) const {
    return MoveCorners(*this, [&m](float x, float y, float z) {
        const float w = x * m(0, 3) + y * m(1, 3) + z * m(2, 3) + m(3, 3);
        const float scale = w == 0.0F ? 1.0F : 1.0F / w;
        return FPoint3D((x * m(0, 0) + y * m(1, 0) + z * m(2, 0) + m(3, 0)) * scale,
                        (x * m(0, 1) + y * m(1, 1) + z * m(2, 1) + m(3, 1)) * scale,
                        (x * m(0, 2) + y * m(1, 2) + z * m(2, 2) + m(3, 2)) * scale);
    });
}

}  // namespace dg
