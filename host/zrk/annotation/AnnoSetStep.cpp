#include "zrk/annotation/AnnoSetStep.h"

#include <utility>

namespace zrk {

AnnoSetStep::AnnoSetStep(du::SmartPtr<AnnoSet> set, du::SmartPtr<Annotation> annotation, std::uint64_t place,
                         Change change)
    : m_set(std::move(set)), m_annotation(std::move(annotation)), m_place(place), m_change(change) {}

AnnoSetStep::~AnnoSetStep() = default;

void AnnoSetStep::Apply(bool add) {
    if (add) {
        m_set->PutBack(m_annotation, m_place);
    } else {
        m_set->RemoveAnnotationFromSet(m_annotation, nullptr);
    }
}

}  // namespace zrk
