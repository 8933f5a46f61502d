// Replays that instances joined an item: redo gives its callout the leaders again, undo takes them away.

#pragma once

#include "callouts/Callouts.h"
#include "zrk/operation/OperationStep.h"

namespace zrcallouts {

class UpdateItemGroupLeadersOperationStep : public zrk::OperationStep {
public:
    UpdateItemGroupLeadersOperationStep(du::SmartPtr<Callouts> engine, unsigned int itemId,
                                        Callouts::SbomSet added);
    ~UpdateItemGroupLeadersOperationStep() override;

    void Undo() override;
    void Redo() override;

private:
    du::SmartPtr<Callouts> m_engine;
    unsigned int m_itemId;
    Callouts::SbomSet m_added;
};

}  // namespace zrcallouts
