#include "tests/callouts/align/optimal/RandomSheet.h"

#include <algorithm>

namespace zrcallouts {
namespace {

constexpr ScreenBox kPage{0.0, 0.0, 1000.0, 800.0};

LabelForm RandomForm(std::mt19937& random) {
    LabelForm form;
    if (random() % 4 == 0) form.width += 60.0 * Random(random);
    if (random() % 5 == 0) form = {std::max(form.width, 40.0), 40.0};
    return form;
}

}  // namespace

double Random(std::mt19937& random) { return static_cast<double>(random()) / 4294967296.0; }

LayoutProblem MakeSheet(const SheetKind& kind, unsigned seed) {
    std::mt19937 random(seed);
    LayoutProblem sheet;
    sheet.page = kPage;
    sheet.model = {kPage.x0 + kind.margin, kPage.y0 + kind.margin, kPage.x1 - kind.margin,
                   kPage.y1 - kind.margin};
    sheet.rules.pattern = kind.pattern;
    const ScreenPoint heap{Random(random), Random(random)};
    const auto place = [&](double middle) {
        return std::clamp(middle + (Random(random) - middle) * kind.spread, 0.0, 1.0);
    };
    for (std::size_t i = 0; i < kind.labels; ++i) {
        LayoutLabel label;
        const double x = place(heap.x);
        const double y = place(heap.y);
        label.anchors = {
            {sheet.model.x0 + x * sheet.model.Length(0), sheet.model.y0 + y * sheet.model.Length(1)}};
        label.centre = label.anchors.front();
        if (!kind.areAlike) label.form = RandomForm(random);
        sheet.labels.push_back(std::move(label));
    }
    return sheet;
}

}  // namespace zrcallouts
