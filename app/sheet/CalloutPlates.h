// The callouts of the scene as they stand on the page: balloons, leaders and dots.

#pragma once

#include <vector>

#include "app/sheet/LabelTidy.h"
#include "app/sheet/Sheet.h"
#include "du/SmartPtr.h"
#include "zrannotations/Callout.h"

namespace zrsheet {

class CalloutPlates {
public:
    /// `figure` is where the view's picture lies on the page.
    CalloutPlates(const std::vector<du::SmartPtr<zrannotations::Callout>>& callouts, const PageBox& figure,
                  const SheetStyle& style);

    /// Gives the balloons their final places around the model's picture: the engine's layout knows no text
    /// widths and no page, and lays a label out for the first instance of its part, which need not be the one
    /// that is shown.
    void Tidy(const PageBox& model);
    void Move(const PagePoint& move);
    /// Moves the callouts' labels to where the balloons are now.
    void StoreLabels() const;
    [[nodiscard]] std::vector<PageBox> Boxes() const;
    [[nodiscard]] std::vector<SheetCallout> Take();

private:
    void Place(SheetCallout& callout, const PagePoint& centre) const;

    PageBox m_figure;
    double m_height;
    // One of each for every callout.
    std::vector<du::SmartPtr<zrannotations::Callout>> m_sources;
    std::vector<SheetCallout> m_callouts;
    std::vector<Balloon> m_balloons;
};

}  // namespace zrsheet
