// The annotation that goes with a 3-D symbol in the scene.

#pragma once

#include "du/SmartPtr.h"
#include "zrannotations/Annotation.h"
#include "zrk/tree/Instance.h"

namespace zrannotations {

class SymbolAnnotation : public Annotation {
public:
    explicit SymbolAnnotation(const du::SmartPtr<zrk::Instance>& instance) : m_instance(instance) {}
    ~SymbolAnnotation() override;

    du::Symbol GetClass() const override;
    const du::SmartPtr<zrk::Instance>& GetInstance() const { return m_instance; }

private:
    const du::SmartPtr<zrk::Instance> m_instance;
};

}  // namespace zrannotations
