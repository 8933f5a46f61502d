// What balloons say, as the author writes it: literal text with {item}, {quantity}, {tag}, {name} and
// {property:NAME}.

#pragma once

#include <string>

#include "du/SmartPtr.h"
#include "zrannotations/TAnnotation.h"

namespace zrsheet {

/// "{{" and "}}" stand for braces. Throws UserError for anything else in braces.
[[nodiscard]] du::SmartPtr<zrannotations::TAnnotation> ParseLabelTemplate(const std::string& text);

}  // namespace zrsheet
