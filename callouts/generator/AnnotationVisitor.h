// Finds the annotations that go with 3-D symbols.

#pragma once

#include <map>
#include <set>

#include "du/SmartPtr.h"
#include "zrk/annotation/AnnoSetVisitor.h"
#include "zrk/annotation/Annotation.h"
#include "zrk/tree/Instance.h"

namespace zrcallouts {

class AnnotationVisitor : public zrk::AnnoSetVisitor {
public:
    ~AnnotationVisitor() override;

    /// Never stops the walk. The first annotation of a symbol stands.
    bool Visit(const du::SmartPtr<zrk::Annotation>& annotation) override;

    /// The id of the annotation that goes with the symbol; 0 when there is none.
    unsigned int GetSymbolId(const du::SmartPtr<zrk::Instance>& instance) const;

private:
    std::map<du::SmartPtr<zrk::Instance>, du::SmartPtr<zrk::Annotation>> m_symbols;
    std::set<du::SmartPtr<zrk::Annotation>> m_others;
};

}  // namespace zrcallouts
