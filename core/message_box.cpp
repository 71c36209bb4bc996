#include "core/message_box.h"

namespace core {

void ReportUnhandled(const RuntimeError& error) {
  ShowBox({.text = "Run-time error '" + std::to_string(error.number) + "':\r\n\r\n" + error.description,
           .icon = BoxIcon::Critical});
}

}  // namespace core
