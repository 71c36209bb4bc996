#include "core/callback_guard.h"

#include <utility>

#include "core/globals.h"
#include "core/message_box.h"
#include "core/scoped_flag.h"

namespace core {

void ReportUnhandled(const RuntimeError& error) {
  static bool reporting = false;
  Box box{.text = "Run-time error '" + std::to_string(error.number) + "':\r\n\r\n" + error.description,
          .icon = BoxIcon::Critical};
  if (gDispatching || gStarting != 0 || reporting) return PostBox(std::move(box));
  const ScopedFlag flag(reporting);
  GuardedSilently([&box] { ShowBox(box); });
}

void ReportCurrentError() noexcept {
  GuardedSilently([] { ReportUnhandled(CurrentError()); });
}

}  // namespace core
