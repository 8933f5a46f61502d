#include "zrannotations/SymbolAnnotation.h"

#include "zrannotations/ConstStrings.h"

namespace zrannotations {

SymbolAnnotation::~SymbolAnnotation() = default;

du::Symbol SymbolAnnotation::GetClass() const { return ConstStrings::zrSymbol; }

}  // namespace zrannotations
