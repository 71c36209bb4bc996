#include "core/text.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "core/code_page.h"

namespace core {
namespace {

constexpr auto kNone = std::string_view::npos;

constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15u;  // odd, with well-spread bits

// From the clock and the load address: nobody on the network can guess it.
const std::uint64_t kSeed = (static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
                             reinterpret_cast<std::uintptr_t>(&kSeed)) *
                            kGoldenRatio;

void Append(std::string& text, Character character) {
  if (character > 0xFF) text += static_cast<char>(character >> 8);
  text += static_cast<char>(character);
}

}  // namespace

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == kNone) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string LowerCase(std::string_view text) {
  const CodePage& page = SystemCodePage();
  std::string lower;
  while (!text.empty()) Append(lower, page.TakeLower(text));
  return lower;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  const CodePage& page = SystemCodePage();
  const auto equal = [&page](char x, char y) { return page.lower[ByteOf(x)] == page.lower[ByteOf(y)]; };
  if (!page.IsDoubleByte()) return std::equal(a.begin(), a.end(), b.begin(), equal);
  while (!a.empty())
    if (page.TakeLower(a) != page.TakeLower(b)) return false;
  return true;
}

// The code page has lower-case forms only: the capital is the other character with the same one.
std::string UpperCase(std::string_view character) {
  const CodePage& page = SystemCodePage();
  std::string_view rest = character;
  const Character lower = page.TakeLower(rest);
  const int end = page.IsDoubleByte() ? 0x10000 : 0x100;
  std::string upper;
  for (int number = 'A'; number != end && upper.empty(); ++number) {
    const auto other = static_cast<Character>(number);
    if (other != lower && page.Lower(other) == lower) Append(upper, other);
  }
  return upper.empty() ? std::string(character) : upper;
}

std::string_view FirstCharacter(std::string_view text) {
  return text.empty() ? text : text.substr(0, SystemCodePage().CharacterSize(text));
}

std::string_view LeadingCharacters(std::string_view text, std::size_t bytes) {
  const CodePage& page = SystemCodePage();
  if (!page.IsDoubleByte()) return text.substr(0, bytes);
  bytes = std::min(bytes, text.size());
  std::size_t size = 0;
  for (std::size_t next = 0; next <= bytes; next += page.CharacterSize(text.substr(next))) size = next;
  return text.substr(0, size);
}

std::size_t Find(std::string_view text, std::string_view ascii, std::size_t start) {
  const CodePage& page = SystemCodePage();
  std::size_t found = text.find(ascii, start);
  if (!page.IsDoubleByte()) return found;
  for (std::size_t at = start; found != kNone; found = text.find(ascii, found + 1)) {
    while (at < found) at += page.CharacterSize(text.substr(at));
    if (at == found) break;
  }
  return found;
}

std::size_t FindLast(std::string_view text, std::string_view ascii) {
  if (!SystemCodePage().IsDoubleByte()) return text.rfind(ascii);
  std::size_t last = Find(text, ascii);
  for (std::size_t found = last; found != kNone; found = Find(text, ascii, found + ascii.size())) last = found;
  return last;
}

std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
  text.remove_prefix(line.size());
  if (!text.empty()) text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
  return line;
}

std::vector<std::string_view> BarFields(std::string_view text) {
  std::vector<std::string_view> fields;
  while (!text.empty()) {
    const std::size_t bar = Find(text, "|");
    fields.push_back(text.substr(0, bar));
    text = bar == kNone ? std::string_view() : text.substr(bar + 1);
  }
  return fields;
}

std::string_view BarField(std::string_view text, std::size_t index) {
  for (; index > 0; --index) {
    const std::size_t bar = Find(text, "|");
    if (bar == kNone) return {};
    text.remove_prefix(bar + 1);
  }
  return text.substr(0, Find(text, "|"));
}

std::size_t NameHash::operator()(std::string_view name) const {
  const CodePage& page = SystemCodePage();
  std::uint64_t hash = kSeed;
  const auto add = [&hash](Character folded) {
    hash = (hash ^ folded) * kGoldenRatio;
    // Otherwise the low byte would depend on a few bits of the seed only, and collisions could be computed.
    hash ^= hash >> 32;
  };
  while (!name.empty()) add(page.TakeLower(name));
  return static_cast<std::size_t>(hash);
}

}  // namespace core
