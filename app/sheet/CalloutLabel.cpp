#include "app/sheet/CalloutLabel.h"

#include "app/sheet/BalloonForm.h"

namespace zrsheet {
namespace {

/// The labels of a combined callout that is drawn as a stack; labels with lines have no room beside each
/// other, so they stand in one unless the author chose otherwise.
std::vector<std::string> StackOf(const zrannotations::Callout& callout,
                                 const zrannotations::CalloutStyle& ofDocument) {
    std::vector<std::string> labels;
    bool haveLines = false;
    if (!callout.IsCombined()) return labels;
    for (const auto& member : callout.CaptureState().members) {
        const std::string label = member.callout ? member.callout->GetMarkupText().Text() : std::string();
        if (label.empty()) continue;
        haveLines = haveLines || label.find('\n') != std::string::npos;
        labels.push_back(label);
    }
    const bool isStacked = callout.GetStyle().stacked.value_or(ofDocument.stacked.value_or(haveLines));
    if (!isStacked || labels.size() < 2) labels.clear();
    return labels;
}

}  // namespace

CalloutLabel LabelOf(const zrannotations::Callout& callout, const zrannotations::CalloutStyle& ofDocument,
                     const SheetStyle& style) {
    CalloutLabel label;
    label.text = callout.GetMarkupText().Text();
    label.look = LookOf(callout.GetStyle(), ofDocument, style, label.text);
    label.stack = StackOf(callout, ofDocument);
    const BalloonSize size = label.stack.empty()
                                 ? SizeOf(label.look, LabelLines(label.text, label.look.shape))
                                 : SizeOfStack(label.look, label.stack);
    label.form = {size.width, size.height, label.look.shape};
    if (!label.stack.empty()) label.form.stacked = static_cast<unsigned>(label.stack.size());
    return label;
}

}  // namespace zrsheet
