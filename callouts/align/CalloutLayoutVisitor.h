// Measures the picture of a model on the screen.

#pragma once

#include "dg/DMat44.h"
#include "dg/FBox.h"
#include "dg/FMat44.h"
#include "du/SmartPtr.h"
#include "zrk/scene/ShapeScene.h"
#include "zrk/tree/InstanceVisitor.h"

namespace zrcallouts {

/// Encloses the boxes of all parts that the scene has, hidden ones too, so that showing one does not move
/// every label.
class CalloutLayoutVisitor : public zrk::InstanceVisitor {
public:
    CalloutLayoutVisitor(du::SmartPtr<zrk::ShapeScene> scene, const dg::DMat44& worldToPixel);
    ~CalloutLayoutVisitor() override;

    /// False, which stops the walk, only without a scene.
    bool VisitInstance(const du::SmartPtr<zrk::Instance>& instance) override;

    /// In pixels; empty when there was no part.
    const dg::FBox& GetBox() const { return m_box; }

private:
    du::SmartPtr<zrk::ShapeScene> m_scene;
    dg::FMat44 m_worldToPixel;
    dg::FBox m_box;
};

}  // namespace zrcallouts
