// That an annotation entered or left its set, as a step that can be undone.

#pragma once

#include <cstdint>

#include "du/SmartPtr.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/operation/OperationStep.h"

namespace zrk {

class AnnoSetStep : public OperationStep {
public:
    enum class Change { kAdded, kRemoved };

    /// `place`: the annotation's in the order of the set.
    AnnoSetStep(du::SmartPtr<AnnoSet> set, du::SmartPtr<Annotation> annotation, std::uint64_t place,
                Change change);
    ~AnnoSetStep() override;

    const char* GetDebugClassName() const override { return "zrk::AnnoSetStep"; }
    void Undo() override { Apply(m_change == Change::kRemoved); }
    void Redo() override { Apply(m_change == Change::kAdded); }

private:
    void Apply(bool add);

    const du::SmartPtr<AnnoSet> m_set;
    const du::SmartPtr<Annotation> m_annotation;
    const std::uint64_t m_place;
    const Change m_change;
};

}  // namespace zrk
