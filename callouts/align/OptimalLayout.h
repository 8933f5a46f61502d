// Arranges the labels of callouts around the model so that nobody has to correct them.

#pragma once

#include <functional>
#include <vector>

#include "callouts/Callouts.h"
#include "callouts/ZrcalloutsExport.h"
#include "callouts/align/optimal/LabelForm.h"
#include "callouts/align/optimal/LayoutProblem.h"
#include "callouts/align/optimal/LayoutQuality.h"
#include "dg/Camera3D.h"
#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "zrannotations/Callout.h"
#include "zrk/operation/Operation.h"
#include "zrk/scene/ShapeView.h"

namespace zrcallouts {

/// One command: built, executed once and let go. Labels stay apart from each other, from the parts and
/// from insets, and inside the window; leaders do not cross, do not run into foreign labels, and are as short
/// as that lets them be (see LayoutSolver.h). The scene's other callouts that are visible stay where they
/// are, and the labels keep off them and their leaders. Positions are pixels of the view. Call it on the
/// thread that edits the scene.
class ZRCALLOUTS_API OptimalLayout : public du::RefCounted {
public:
    using CalloutPtr = du::SmartPtr<zrannotations::Callout>;
    /// How large a callout's label is drawn: text is measured by whoever draws it.
    using FormSource = std::function<LabelForm(const zrannotations::Callout&)>;

    OptimalLayout(du::SmartPtr<Callouts> engine, du::SmartPtr<zrk::ShapeView> view, const LayoutRules& rules,
                  FormSource forms);
    ~OptimalLayout() override;

    // The three steps of a layout, for callers with wishes of their own: describe, solve (see
    // LayoutSolver.h), place.
    /// What is there to arrange, as it stands: first the callouts, in their order, which decides ties, then
    /// the others, pinned. Requires: engine and view.
    [[nodiscard]] LayoutProblem Describe(const std::vector<CalloutPtr>& callouts) const;
    /// Moves the labels to the centres that differ from what was described.
    void Place(const std::vector<CalloutPtr>& callouts, const LayoutProblem& problem,
               const std::vector<ScreenPoint>& centres, const du::SmartPtr<zrk::Operation>& operation) const;

    /// All of them. With an operation every move becomes a step of it, which is then recorded, so that
    /// one undo takes the layout back; a zrk::Transaction does so without. False, and nothing changed,
    /// without engine or view. O(vertices + n log n).
    bool Execute(const std::vector<CalloutPtr>& callouts, const du::SmartPtr<zrk::Operation>& operation);

private:
    void AddLabel(LayoutProblem& problem, const CalloutPtr& callout, const dg::Camera3D& camera,
                  bool isPinned) const;
    void AddSurroundings(LayoutProblem& problem, const std::vector<CalloutPtr>& arranged,
                         const dg::Camera3D& camera) const;
    void Move(const CalloutPtr& callout, const ScreenPoint& centre, const dg::Camera3D& camera,
              const du::SmartPtr<zrk::Operation>& operation) const;

    du::SmartPtr<Callouts> m_engine;
    du::SmartPtr<zrk::ShapeView> m_view;
    LayoutRules m_rules;
    FormSource m_forms;
};

}  // namespace zrcallouts
