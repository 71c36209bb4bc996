#include "core/text.h"

#include <algorithm>

#include "core/ansi_case.h"

namespace core {
namespace {

char Lower(char c) { return LowerCaseTable()[static_cast<unsigned char>(c)]; }

}  // namespace

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), Lower);
  return lower;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return Lower(x) == Lower(y); });
}

std::string AsciiUpper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

std::vector<std::string_view> BarFields(std::string_view text) {
  std::vector<std::string_view> fields;
  while (!text.empty()) {
    const std::size_t bar = text.find('|');
    fields.push_back(text.substr(0, bar));
    text = bar == std::string_view::npos ? std::string_view() : text.substr(bar + 1);
  }
  return fields;
}

std::string_view BarField(std::string_view text, std::size_t index) {
  for (; index > 0; --index) {
    const std::size_t bar = text.find('|');
    if (bar == std::string_view::npos) return {};
    text.remove_prefix(bar + 1);
  }
  return text.substr(0, text.find('|'));
}

}  // namespace core
