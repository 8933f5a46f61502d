// What balloons say, as the author writes it: literal text with {item}, {quantity}, {tag}, {name} and
// {property:NAME}.

#pragma once

#include <string>

#include "zrannotations/TAnnotation.h"

namespace zrsheet {

/// "{{" and "}}" stand for braces. Throws UserError for anything else in braces.
[[nodiscard]] zrannotations::TAnnotation::Contents ParseLabelTemplate(const std::string& text);

}  // namespace zrsheet
