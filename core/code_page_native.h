// The code page of native builds: built-in data, so that tests can run with the letters of any supported system.
#pragma once

#include "core/code_page.h"

namespace core {

// Selects 932, 936, 949, 950 or 1252, the default. Throws std::invalid_argument for any other.
void SetSystemCodePage(int number);

// Selects a code page that the caller provides.
void SetSystemCodePage(CodePage page);

}  // namespace core
