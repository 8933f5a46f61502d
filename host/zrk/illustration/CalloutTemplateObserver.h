// Told about a callout's template.

#pragma once

#include "zrk/illustration/AssociativeObjectObserver.h"

namespace zrk::illustration {

class CalloutTemplateObserver : public AssociativeObjectObserver {
public:
    ~CalloutTemplateObserver() override;
};

}  // namespace zrk::illustration
