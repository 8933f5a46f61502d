// Switches "draw when hidden" for a scene, undoably.

#pragma once

#include "callouts/Callouts.h"
#include "callouts/ZrcalloutsExport.h"
#include "zrk/illustration/Illustration3dScene.h"
#include "zrk/operation/OperationStep.h"

namespace zrcallouts {

/// With the flag on every leader is drawn dashed and none dimmed; with it off covered leaders are. Building
/// the step changes nothing: Redo sets the state, Undo its opposite. The step makes no history entry of its
/// own.
class ZRCALLOUTS_API CalloutsDrawWhenHiddenOperationStep : public zrk::OperationStep {
public:
    static const du::Symbol type;

    CalloutsDrawWhenHiddenOperationStep(du::SmartPtr<zrcallouts::Callouts> engine, bool state);
    ~CalloutsDrawWhenHiddenOperationStep() override;

    bool Recordable() const override { return false; }
    du::Symbol Type() const override { return type; }
    void Undo() override;
    void Redo() override;

    bool GetDrawWhenHiddenState() const { return m_state; }

private:
    void Apply(bool state);

    bool m_state;
    du::SmartPtr<Callouts> m_engine;
    du::SmartPtr<zrk::illustration::Illustration3dScene> m_scene;
    du::SmartPtr<zrk::ShapeView> m_view;
};

}  // namespace zrcallouts
