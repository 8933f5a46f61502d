#include "zrannotations/ConstStrings.h"

namespace zrannotations {

const du::Symbol ConstStrings::zrCalloutLabel("zrCalloutLabel");
const du::Symbol ConstStrings::zrCalloutTemplate("zrCalloutTemplate");
const du::Symbol ConstStrings::zrInset("zrInset");
const du::Symbol ConstStrings::zrSymbol("zrSymbol");

}  // namespace zrannotations
