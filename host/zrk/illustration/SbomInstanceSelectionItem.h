// A part or assembly that the user selected.

#pragma once

#include <utility>

#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "zrk/illustration/SbomInstance.h"

namespace zrk::illustration {

class SbomInstanceSelectionItem : public virtual du::RefCounted {
public:
    /// `sbom` may be null: something was selected that is no part.
    explicit SbomInstanceSelectionItem(du::SmartPtr<SbomInstance> sbom) : m_sbom(std::move(sbom)) {}
    ~SbomInstanceSelectionItem() override;

    const du::SmartPtr<SbomInstance>& GetSbomInstance() const { return m_sbom; }

private:
    du::SmartPtr<SbomInstance> m_sbom;
};

}  // namespace zrk::illustration
