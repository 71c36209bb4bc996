// Implements the functions of core that the net code calls, with the terminal in place of the desktop, the log file and
// the language file.
#include "demo/terminal.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <string>

#include "core/clock.h"
#include "core/event_loop.h"
#include "core/language.h"
#include "core/log.h"
#include "core/message_box.h"

namespace demo {
namespace {

bool gShowPackets = false;

std::string Now() {
  timespec now;
  std::timespec_get(&now, TIME_UTC);
  tm parts;
  char text[16];
  std::strftime(text, sizeof text, "%H:%M:%S", ::localtime_r(&now.tv_sec, &parts));
  std::string milliseconds = std::to_string(now.tv_nsec / 1000000);
  milliseconds.insert(0, 3 - milliseconds.size(), '0');
  return text + ("." + milliseconds);
}

std::string Printable(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\x%02X", code);
    text += code >= 0x20 && code < 0x7F ? std::string(1, byte) : std::string(escape);
  }
  return text;
}

}  // namespace

void Show(std::string_view what, std::string_view text) {
  std::printf("%s %.*s %s\n", Now().c_str(), static_cast<int>(what.size()), what.data(), Printable(text).c_str());
  std::fflush(stdout);
}

void ShowPacket(std::string_view what, std::string_view bytes) {
  if (gShowPackets) Show(what, bytes);
}

void ShowPackets(bool show) { gShowPackets = show; }

}  // namespace demo

namespace core {

void WriteLog(std::string_view text) { demo::Show("log", text); }

std::int32_t TickCount() {
  const auto time = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::int32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

void PostBox(Box box) { demo::Show("box", box.title + ": " + box.text); }

// Not needed: the partner's own loop handles all events.
void RunPendingEvents() {}

std::string GetText(int code) {
  switch (code) {
    case 1201:
      return "user|users|online";
    case 10201:
      return "is now on the network";
    default:
      return {};
  }
}

unsigned LanguageGeneration() { return 1; }

}  // namespace core
