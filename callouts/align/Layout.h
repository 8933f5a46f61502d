// Arranges the labels of callouts around the picture of the model.

#pragma once

#include <array>
#include <set>
#include <vector>

#include "callouts/Callouts.h"
#include "callouts/ZrcalloutsExport.h"
#include "dg/Camera3D.h"
#include "dg/DMat44.h"
#include "dg/FBox.h"
#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "zrannotations/Annotation.h"
#include "zrannotations/Callout.h"
#include "zrk/scene/ShapeView.h"

namespace zrcallouts {

/// Every label goes to the nearest side of the model's rectangle on the screen, then the labels of a side are
/// spaced. Records nothing for undo.
class ZRCALLOUTS_API Layout : public du::RefCounted {
public:
    Layout(du::SmartPtr<Callouts> engine, du::SmartPtr<zrk::ShapeView> view);
    ~Layout() override;

    /// False without engine or view. O(parts + n log n).
    bool Execute(const std::set<du::SmartPtr<zrannotations::Callout>>& callouts);

private:
    /// The sides at the rectangle's least and greatest x, then at its least and greatest y.
    enum Side { kLeft, kRight, kTop, kBottom, kSideCount };
    using SideList = std::vector<du::SmartPtr<zrannotations::Annotation>>;

    dg::FBox MeasureModel(const dg::Camera3D& camera) const;
    static dg::FBox FrameAround(dg::FBox model, const dg::Camera3D& camera);
    static Side MoveToSide(const dg::FBox& frame, dg::DPoint3D& pixel);
    static void PlaceLabel(zrannotations::Callout& callout, const dg::DPoint3D& world);

    du::SmartPtr<Callouts> m_engine;
    du::SmartPtr<zrk::ShapeView> m_view;
};

}  // namespace zrcallouts
