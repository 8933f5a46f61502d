// What a callout's label says and how large it is drawn.

#pragma once

#include <string>
#include <vector>

#include "app/sheet/Sheet.h"
#include "callouts/align/optimal/LabelForm.h"
#include "zrannotations/Callout.h"

namespace zrsheet {

struct CalloutLabel {
    std::string text;
    CalloutLook look;
    std::vector<std::string> stack;  // what its balloons say, from the top; none: one that says the text
    zrcallouts::LabelForm form;
};

/// `ofDocument` is how callouts look that have no style of their own.
[[nodiscard]] CalloutLabel LabelOf(const zrannotations::Callout& callout,
                                   const zrannotations::CalloutStyle& ofDocument, const SheetStyle& style);

}  // namespace zrsheet
