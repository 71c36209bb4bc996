// The code page of native builds: data instead of a system's, so that the letters of every system can be tested here.
#pragma once

#include "core/code_page.h"

namespace core {

// 932, 936, 949, 950, or 1252, which it is from the start. Throws std::invalid_argument for others.
void SetSystemCodePage(int number);

// Any other one, known from elsewhere.
void SetSystemCodePage(CodePage page);

}  // namespace core
