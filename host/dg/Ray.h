// A half line in world coordinates.

#pragma once

#include "dg/DPoint3D.h"
#include "dg/DVec3.h"

namespace dg {

struct Ray {
    DPoint3D origin;
    DVec3 direction;  // of length 1
};

}  // namespace dg
