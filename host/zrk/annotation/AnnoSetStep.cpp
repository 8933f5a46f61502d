#include "zrk/annotation/AnnoSetStep.h"

#include <utility>

namespace zrk {

AnnoSetStep::AnnoSetStep(du::SmartPtr<AnnoSet> set, du::SmartPtr<Annotation> annotation, Change change)
    : m_set(std::move(set)), m_annotation(std::move(annotation)), m_change(change) {}

AnnoSetStep::~AnnoSetStep() = default;

void AnnoSetStep::Apply(bool add) {
    if (add) {
        m_set->AddAnnotationToSet(m_annotation, nullptr);
    } else {
        m_set->RemoveAnnotationFromSet(m_annotation, nullptr);
    }
}

}  // namespace zrk
