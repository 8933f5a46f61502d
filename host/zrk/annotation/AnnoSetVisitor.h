// What is called for the annotations of a set.

#pragma once

#include "du/SmartPtr.h"
#include "zrk/annotation/Annotation.h"

namespace zrk {

class AnnoSetVisitor {
public:
    /// Mode 1 includes the annotations that the set only refers to.
    explicit AnnoSetVisitor(int mode = 0) : m_mode(mode) {}
    virtual ~AnnoSetVisitor();

    /// False stops the walk.
    virtual bool Visit(const du::SmartPtr<Annotation>& annotation) = 0;

    bool IncludesReferenced() const { return m_mode == 1; }

private:
    const int m_mode;
};

}  // namespace zrk
