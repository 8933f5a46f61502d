// Re-checks the callouts that a scene's annotation set only refers to, which the engine does not register.

#pragma once

#include "callouts/Callouts.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/annotation/AnnoSetVisitor.h"

namespace zrcallouts {

/// Built on the stack for one walk. Requires: `engine` outlives the walk.
class CalloutsAnnoSetVisitor : public zrk::AnnoSetVisitor {
public:
    CalloutsAnnoSetVisitor(Callouts* engine, du::SmartPtr<zrk::ShapeView> view,
                           du::SmartPtr<zrk::AnnoSet> annoSet);
    ~CalloutsAnnoSetVisitor() override;

    /// Never stops the walk.
    bool Visit(const du::SmartPtr<zrk::Annotation>& annotation) override;

private:
    Callouts* m_engine;
    du::SmartPtr<zrk::ShapeView> m_view;
    du::SmartPtr<zrk::AnnoSet> m_annoSet;
};

}  // namespace zrcallouts
