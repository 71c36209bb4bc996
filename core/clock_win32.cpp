#include "core/clock.h"

#include <windows.h>

#include "core/text.h"

namespace core {
namespace {

SYSTEMTIME Now() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return now;
}

std::string ShortDate(const SYSTEMTIME& when) {
  char text[128];
  const int size = ::GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &when, nullptr, text, sizeof text);
  return size > 0 ? std::string(text, static_cast<std::size_t>(size) - 1) : std::string();
}

std::string LongTime(const SYSTEMTIME& when) {
  char text[128];
  const int size = ::GetTimeFormatA(LOCALE_USER_DEFAULT, 0, &when, nullptr, text, sizeof text);
  return size > 0 ? std::string(text, static_cast<std::size_t>(size) - 1) : std::string();
}

}  // namespace

std::string ClockText() {
  const SYSTEMTIME now = Now();  // read once: midnight may pass between two calls
  return std::string(Trim(ShortDate(now) + " " + LongTime(now)));
}

std::string TimeText() { return LongTime(Now()); }

std::int32_t TickCount() { return static_cast<std::int32_t>(::GetTickCount()); }

}  // namespace core
