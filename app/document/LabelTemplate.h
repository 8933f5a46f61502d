// What balloons say, as the author writes it: literal text with placeholders.
//
// {item}, {quantity} and {tag} tell of the item; {name} and {property:NAME} of the part, {parent:NAME} of the
// assembly above it, {root:NAME} of the product; {file:NAME} of the model's file. {line} begins a new line.
// "{{" and "}}" stand for braces.

#pragma once

#include <map>
#include <string>

#include "zrannotations/TAnnotation.h"

namespace zrsheet {

/// Throws UserError for anything else in braces.
[[nodiscard]] zrannotations::TAnnotation::Contents ParseLabelTemplate(const std::string& text);

/// Throws UserError where ParseLabelTemplate does, and for a translation that is empty or names a placeholder
/// that the text has not; "{0}" is the first one. Translations have no braces but those of placeholders.
void CheckLabelTemplate(const std::string& text, const std::map<std::string, std::string>& translations);

}  // namespace zrsheet
