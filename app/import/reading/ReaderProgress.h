// Tells the program that started the reader how far it is.

#pragma once

#include <string_view>

namespace zrsheet {

/// `stage`: what is done now, for a person; `percent` of all that there is to do.
void TellReaderProgress(std::string_view stage, int percent);

}  // namespace zrsheet
