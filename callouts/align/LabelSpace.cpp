#include "callouts/align/LabelSpace.h"

#include "dg/Location.h"

namespace zrcallouts {
namespace {

constexpr int kWorldPlacement = 1;

}  // namespace

bool IsWorldPlaced(const zrannotations::Callout& callout) {
    return callout.GetPlacementKind() == kWorldPlacement;
}

bool WorldToLabel(const zrannotations::Callout& callout, dg::DMat44& toLocal) {
    dg::Location part;
    if (!callout.GetInstanceLocationAtPos(part, 0)) return false;
    dg::Location frame = dg::Location::IDENTITY;
    frame.SetPos(part.GetPos());
    frame.SetMat(dg::FMat33::Scale(part.GetScale()));
    toLocal = frame.GetXform().Invert();
    return true;
}

}  // namespace zrcallouts
