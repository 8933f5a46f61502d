// Lines up the labels of callouts on the screen.

#pragma once

#include <vector>

#include "callouts/ZrcalloutsExport.h"
#include "callouts/align/AlignMode.h"
#include "dg/DMat44.h"
#include "dg/DPoint3D.h"
#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "zrannotations/Annotation.h"
#include "zrannotations/Callout.h"
#include "zrk/operation/Operation.h"
#include "zrk/scene/ShapeView.h"

namespace zrcallouts {

/// One command: built, executed once and let go. Positions are pixels of the view. Annotations that are no
/// callouts stay where they are, but count. O(n log n).
class ZRCALLOUTS_API Align : public du::RefCounted {
public:
    /// Requires: `annotations` outlives this. Distributing and spacing sort it.
    Align(std::vector<du::SmartPtr<zrannotations::Annotation>>& annotations, Align_Mode mode,
          du::SmartPtr<zrk::ShapeView> view);
    /// Every move becomes a step of the operation, which is then recorded.
    Align(std::vector<du::SmartPtr<zrannotations::Annotation>>& annotations, Align_Mode mode,
          du::SmartPtr<zrk::ShapeView> view, du::SmartPtr<zrk::Operation> operation);
    Align(const Align&) = default;
    Align(Align&&) = default;
    ~Align() override;

    /// False, and nothing changed, without a view or with too few annotations: lining up needs 2,
    /// distributing 3.
    bool Execute();

private:
    using AnnotationPtr = du::SmartPtr<zrannotations::Annotation>;
    using CalloutPtr = du::SmartPtr<zrannotations::Callout>;

    bool CollectData();
    void SetPosition(CalloutPtr callout, dg::DPoint3D& from, dg::DPoint3D& to, dg::DMat44& toLocal);

    dg::DPoint3D PixelOf(const zrannotations::Callout& callout) const;
    bool HasEnough() const;
    void SortByPixel();
    void Measure();
    void Move(const CalloutPtr& callout, std::size_t index, dg::DPoint3D& previous,
              const dg::DMat44& pixelToWorld);
    bool Target(std::size_t index, dg::DPoint3D& previous, dg::DPoint3D& pixel) const;

    std::vector<AnnotationPtr>& m_annotations;
    Align_Mode m_mode;
    du::SmartPtr<zrk::ShapeView> m_view;
    du::SmartPtr<zrk::Operation> m_operation;
    double m_minimum = 0.0;
    double m_maximum = 0.0;
    double m_gap = 30.0;  // pixels that spacing keeps between neighbours

    // What the run under way measures with, shared by the sort and the moves. One per thread: the layout of
    // new callouts runs in the task pool while the user aligns others.
    static thread_local dg::DMat44 m_ObjToPx;
    static thread_local int m_idx;
};

}  // namespace zrcallouts
