// Base of the annotations of illustrations.

#pragma once

#include "zrk/annotation/Annotation.h"

namespace zrannotations {

class Annotation : public zrk::Annotation {
public:
    ~Annotation() override;
};

}  // namespace zrannotations
