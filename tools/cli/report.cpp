#include "tools/cli/report.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <nlohmann/json.hpp>
#include <ostream>

#include "core/globals.h"
#include "tools/wire/code_page_text.h"

namespace cli {
namespace {

using Json = nlohmann::ordered_json;  // keeps the event first, for human readers

struct Kind {
  const char* name;
  bool hasText = false, hasRecipient = false;
};

// A switch, because the compiler reports a missing case.
constexpr Kind KindOf(EventKind kind) {
  switch (kind) {
    case EventKind::Joined:
      return {"joined"};
    case EventKind::Left:
      return {"left"};
    case EventKind::State:
      return {"status"};
    case EventKind::Colour:
      return {"colour"};
    case EventKind::Alert:
      return {"alert", true, true};
    case EventKind::Chat:
      return {"chat", true, true};
    case EventKind::Notice:
      return {"notice", true};
  }
  return {""};
}

constexpr const char* kPresent = "present";

std::string NameOf(EventKind kind, const EventStyle& style) {
  if (kind == EventKind::Joined && style.answering) return kPresent;
  return KindOf(kind).name;
}

// "#RRGGBB". In packets red is the lowest byte.
std::string ColourText(std::int32_t colour) {
  const auto bits = static_cast<std::uint32_t>(colour);
  std::array<char, 8> text;
  std::snprintf(text.data(), text.size(), "#%02X%02X%02X", bits & 0xFF, bits >> 8 & 0xFF, bits >> 16 & 0xFF);
  return text.data();
}

std::string TimeText(const char* format, bool local) {
  const std::time_t now = std::time(nullptr);
  std::array<char, 32> text;
  std::strftime(text.data(), text.size(), format, local ? std::localtime(&now) : std::gmtime(&now));
  return text.data();
}

Json JsonOf(const User& user) {
  Json json = {{"name", wire::ToUtf8(user.name)}};
  json["status"] = user.state ? Json(*user.state) : Json();
  json["statusText"] = user.state ? Json(StateText(user)) : Json();
  json["colour"] = ColourText(user.colour);
  json["address"] = wire::HostText(user.host);
  return json;
}

// Counts characters, not bytes: skips UTF-8 continuation bytes.
std::string Padded(std::string text, std::size_t width) {
  const auto length = static_cast<std::size_t>(
      std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
  return text.append(width > length ? width - length : 0, ' ');
}

}  // namespace

std::string Printable(std::string_view bytes) {
  std::string text;
  bool afterC2 = false;  // C2 80 to C2 9F encode control characters too
  for (const char each : wire::ToUtf8(bytes)) {
    const auto byte = static_cast<unsigned char>(each);
    const bool high = afterC2 && byte < 0xA0;
    afterC2 = byte == 0xC2;
    if (high) text.pop_back();
    if (high || byte < 0x20 || byte == 0x7F) {
      std::array<char, 5> escape;
      std::snprintf(escape.data(), escape.size(), "\\x%02X", byte);
      text += escape.data();
    } else {
      text += each;
    }
  }
  return text;
}

std::string StateText(const User& user) {
  return user.state ? core::gStateNames[static_cast<std::size_t>(*user.state)] : "?";
}

void PrintUsers(std::ostream& out, const SegmentView& view) {
  constexpr std::size_t kNameWidth = 24, kStateWidth = 16, kColourWidth = 9;
  for (const auto& [name, user] : view.Users())
    out << Padded(Printable(name), kNameWidth) << ' ' << Padded(StateText(user), kStateWidth)
        << Padded(ColourText(user.colour), kColourWidth) << wire::HostText(user.host) << '\n';
}

void PrintUsersAsJson(std::ostream& out, const SegmentView& view) {
  Json users = Json::array();
  for (const auto& [name, user] : view.Users()) users.push_back(JsonOf(user));
  out << users.dump(2) << '\n';
}

std::string EventLine(const Event& event, const EventStyle& style) {
  std::string line = TimeText("%H:%M:%S ", true) + Padded(NameOf(event.kind, style), 8) + Printable(event.user.name);
  if (event.kind == EventKind::State) line += ": " + StateText(event.user);
  if (event.kind == EventKind::Colour) line += ": " + ColourText(event.user.colour);
  const Kind kind = KindOf(event.kind);
  if (kind.hasRecipient) line += " to " + (event.to ? Printable(*event.to) : "everybody");
  if (kind.hasText && style.texts) line += ": " + Printable(event.text);
  return line;
}

std::string EventJson(const Event& event, const EventStyle& style) {
  Json json = {{"event", NameOf(event.kind, style)}, {"time", TimeText("%Y-%m-%dT%H:%M:%SZ", false)}};
  json.update(JsonOf(event.user));
  const Kind kind = KindOf(event.kind);
  if (kind.hasRecipient) json["to"] = event.to ? Json(wire::ToUtf8(*event.to)) : Json();
  if (kind.hasText && style.texts) json["text"] = wire::ToUtf8(event.text);
  return json.dump();
}

}  // namespace cli
