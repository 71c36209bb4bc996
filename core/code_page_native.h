// The code page of native builds: data instead of a system's, so that the letters of every system can be tested here.
#pragma once

namespace core {

// 932, 936, 949, 950, or 1252, which it is from the start.
void SetSystemCodePage(int number);

}  // namespace core
