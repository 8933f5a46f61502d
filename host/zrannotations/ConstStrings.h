// The names of the kinds of annotations.

#pragma once

#include "du/Symbol.h"

namespace zrannotations {

struct ConstStrings {
    /// Callouts, single and combined.
    static const du::Symbol zrCalloutLabel;
    static const du::Symbol zrCalloutTemplate;
    static const du::Symbol zrInset;
    static const du::Symbol zrSymbol;
};

}  // namespace zrannotations
