// The callouts of the scene as they stand on the page: balloons, leaders and dots.

#pragma once

#include <cstddef>
#include <vector>

#include "app/sheet/AnchorEdges.h"
#include "app/sheet/Sheet.h"
#include "callouts/align/optimal/LabelForm.h"
#include "du/SmartPtr.h"
#include "zrannotations/Callout.h"

namespace zrsheet {

class CalloutPlates {
public:
    /// `ofDocument` is how callouts look that have no style of their own, `figure` where the view's picture
    /// lies on the page.
    CalloutPlates(const std::vector<du::SmartPtr<zrannotations::Callout>>& callouts,
                  const zrannotations::CalloutStyle& ofDocument, const PageBox& figure,
                  const SheetStyle& style);

    /// Chooses what each leader ends with by what the picture shows around it.
    void EndLeaders(const zrk::PickScene& scene, unsigned threads);

    void Move(const PagePoint& move);

    /// Of what the page shows: a callout whose parts are all hidden or gone is placed like the others, so
    /// that it stands well once they are back, but until then its balloon would point at nothing.
    [[nodiscard]] std::vector<PageBox> Boxes() const;
    [[nodiscard]] std::vector<SheetCallout> Take();

private:
    void Place(std::size_t i);

    /// A leader that is drawn.
    struct Source {
        unsigned position = 0;  // in its callout
        dg::DPoint3D pixel;     // of the view
    };

    void AddLeaders(SheetCallout& plate, const zrannotations::Callout& callout, const dg::Camera3D& camera,
                    const std::string& ink);
    zrannotations::Terminator EndOf(const zrannotations::Callout& callout, const Source& leader,
                                    const AnchorEdges& edges) const;

    PageBox m_figure;
    zrannotations::CalloutStyle m_style;
    // One of each for every callout.
    std::vector<du::SmartPtr<zrannotations::Callout>> m_sources;
    std::vector<SheetCallout> m_callouts;
    std::vector<PagePoint> m_centres;
    std::vector<zrcallouts::LabelForm> m_forms;
    std::vector<std::vector<Source>> m_leaders;  // as in m_callouts
};

}  // namespace zrsheet
