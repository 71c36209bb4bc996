// The lower-case form of every byte of the ANSI code page: asked from Windows once (CharLowerBuffA), the table of
// Windows-1252 in native builds.
#pragma once

#include <array>

namespace core {

using CaseTable = std::array<char, 256>;

const CaseTable& LowerCaseTable();

}  // namespace core
