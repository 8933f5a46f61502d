// Values of a STEP file as text.

#pragma once

#include <StepRepr_RepresentationItem.hxx>
#include <TCollection_HAsciiString.hxx>
#include <string>

namespace zrsheet {

/// One line, maybe empty; empty for no text at all.
[[nodiscard]] std::string TextOf(const Handle(TCollection_HAsciiString) & text);

/// The value of a text, a number, or a measure with its unit, such as "2.5 kg"; empty for anything else.
[[nodiscard]] std::string ValueTextOf(const StepRepr_RepresentationItem& item);

}  // namespace zrsheet
