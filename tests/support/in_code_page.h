// Switches to another code page for the duration of a scope.
#pragma once

#include "core/code_page.h"

namespace support {

class InCodePage {
 public:
  explicit InCodePage(int number) { core::SetSystemCodePage(number); }
  InCodePage(const InCodePage&) = delete;
  InCodePage& operator=(const InCodePage&) = delete;
  ~InCodePage() { core::SetSystemCodePage(1252); }
};

}  // namespace support
