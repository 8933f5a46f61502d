#include "callouts/events/CalloutsAnnoSetVisitor.h"

#include <utility>

#include "zrannotations/ConstStrings.h"

namespace zrcallouts {
namespace {

// Lets the walk include the annotations that the set only refers to.
constexpr int kWithReferenced = 1;

}  // namespace

CalloutsAnnoSetVisitor::CalloutsAnnoSetVisitor(Callouts* engine, du::SmartPtr<zrk::ShapeView> view,
                                               du::SmartPtr<zrk::AnnoSet> annoSet)
    : zrk::AnnoSetVisitor(kWithReferenced),
      m_engine(engine),
      m_view(std::move(view)),
      m_annoSet(std::move(annoSet)) {}

CalloutsAnnoSetVisitor::~CalloutsAnnoSetVisitor() = default;

bool CalloutsAnnoSetVisitor::Visit(const du::SmartPtr<zrk::Annotation>& annotation) {
    if (!annotation || !(annotation->GetClass() == zrannotations::ConstStrings::zrCalloutLabel)) return true;
    const auto callout = du::DynamicCast<zrannotations::Callout>(annotation);
    if (callout && m_annoSet->IsReferencedAnnotation(annotation)) m_engine->OnDrawWhenHidden(m_view, callout);
    return true;
}

}  // namespace zrcallouts
