// Holds a counted object that its holder does not change.

#pragma once

#include "du/SmartPtr.h"

namespace du {

template <class T>
using ConstSmartPtr = SmartPtr<const T>;

}  // namespace du
