#include "core/callback_guard.h"

#include <string>

#include "core/globals.h"
#include "core/message_box.h"
#include "core/scoped_flag.h"

namespace core {
namespace {

Box BoxOf(const RuntimeError& error) {
  return {.text = "Run-time error '" + std::to_string(error.number) + "':\r\n\r\n" + error.description,
          .icon = BoxIcon::Critical};
}

}  // namespace

void ReportUnhandled(const RuntimeError& error) {
  static bool reporting = false;
  if (gDispatching || gStarting != 0 || reporting) return PostUnhandled(error);
  const ScopedFlag flag(reporting);
  GuardedSilently([&error] { ShowBox(BoxOf(error)); });
}

void PostUnhandled(const RuntimeError& error) { PostBox(BoxOf(error)); }

void ReportCurrentError() noexcept {
  GuardedSilently([] { ReportUnhandled(CurrentError()); });
}

}  // namespace core
