// A leader line: from a callout's label to a point of a part.

#pragma once

#include <string>

#include "dg/Color.h"
#include "dg/DPoint3D.h"
#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "zrannotations/Inset.h"
#include "zrk/scene/ShapeInstance.h"
#include "zrk/tree/BaseInstance.h"

namespace zrannotations {

/// Belongs to whoever made it until Callout::ConnectLeader; from then on the callout's lock guards it.
class CalloutLeader : public virtual du::RefCounted {
public:
    CalloutLeader(const dg::DPoint3D& anchor, const du::SmartPtr<zrk::ShapeInstance>& shapeInstance,
                  const du::SmartPtr<zrk::BaseInstance>& assembly);
    /// To a part that is not loaded yet, known by its id only.
    CalloutLeader(const dg::DPoint3D& anchor, const std::string& instanceId);
    ~CalloutLeader() override;

    /// One of several leaders to equal parts, drawn only when all are to be shown.
    bool m_collapsed = false;

private:
    friend class Callout;

    dg::DPoint3D m_anchor;  // in the part's local coordinates
    du::SmartPtr<zrk::ShapeInstance> m_shapeInstance;
    du::SmartPtr<zrk::BaseInstance> m_assembly;
    std::string m_instanceId;
    du::SmartPtr<Inset> m_inset;
    unsigned m_symbolId = 0;
    bool m_isHidden = false;
    bool m_isClipped = false;  // ends outside its inset
    bool m_isDashed = false;
    bool m_isDim = false;
    dg::Color m_dimColor;
};

}  // namespace zrannotations
