#include <iconv.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <cwctype>
#include <numeric>

#include "core/code_page.h"
#include "tools/wire/code_page_text.h"

namespace wire {
namespace {

constexpr int kAnsiCodePages[] = {874, 932, 936, 949, 950, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258};
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

int gCodePage = 1252;

// One direction of iconv, for one text.
class Conversion {
 public:
  Conversion(const char* to, const char* from) : handle_(::iconv_open(to, from)) {
    if (!IsKnown()) throw std::invalid_argument(std::string("this system cannot convert ") + from + " to " + to);
  }
  ~Conversion() {
    if (IsKnown()) ::iconv_close(handle_);
  }
  Conversion(const Conversion&) = delete;
  Conversion& operator=(const Conversion&) = delete;

  // Converts as much as possible; the rest stays in `text`.
  std::string Convert(std::string_view& text) {
    std::string converted;
    std::array<char, 4096> buffer;
    char* in = const_cast<char*>(text.data());
    std::size_t left = text.size(), before;
    do {
      before = left;
      char* out = buffer.data();
      std::size_t room = buffer.size();
      ::iconv(handle_, &in, &left, &out, &room);
      converted.append(buffer.data(), out);
    } while (left > 0 && left < before);
    // Flushes: some code pages hold a character back in case an accent follows.
    char* out = buffer.data();
    std::size_t room = buffer.size();
    ::iconv(handle_, nullptr, nullptr, &out, &room);
    text.remove_prefix(text.size() - left);
    return converted.append(buffer.data(), out);
  }

 private:
  bool IsKnown() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  iconv_t handle_;
};

std::string NameOf(int codePage) { return "CP" + std::to_string(codePage); }

// The first character of a text in UTF-8.
std::string_view FirstCharacter(std::string_view utf8) {
  const auto isContinuation = [](char byte) { return (core::ByteOf(byte) & 0xC0) == 0x80; };
  return utf8.substr(
      0, static_cast<std::size_t>(std::find_if_not(utf8.begin() + 1, utf8.end(), isContinuation) - utf8.begin()));
}

// Builds the lower-case table of a single-byte code page from that of Unicode. A character whose lower case is not in
// the code page maps to itself.
core::CodePage PageOfBytes(int number) {
  std::setlocale(LC_CTYPE, "C.UTF-8");
  const std::string name = NameOf(number);
  Conversion toWide("WCHAR_T", name.c_str()), fromWide(name.c_str(), "WCHAR_T");
  core::CodePage page;
  std::iota(page.lower.begin(), page.lower.end(), std::uint8_t{0});
  for (std::uint8_t& lower : page.lower) {
    const char byte = static_cast<char>(lower);
    std::string_view letter(&byte, 1);
    const std::string wide = toWide.Convert(letter);
    if (wide.size() != sizeof(wchar_t)) continue;
    wchar_t character;
    std::copy(wide.begin(), wide.end(), reinterpret_cast<char*>(&character));
    character = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(character)));
    std::string_view lowerCase(reinterpret_cast<const char*>(&character), sizeof character);
    const std::string bytes = fromWide.Convert(lowerCase);
    if (bytes.size() == 1) lower = core::ByteOf(bytes[0]);
  }
  return page;
}

}  // namespace

int DefaultCodePage() { return 1252; }

void UseCodePage(int number) {
  if (std::ranges::find(kAnsiCodePages, number) == std::end(kAnsiCodePages))
    throw std::invalid_argument(std::to_string(number) + " is not an ANSI code page");
  gCodePage = number;
  try {
    core::SetSystemCodePage(number);
  } catch (const std::invalid_argument&) {
    core::SetSystemCodePage(PageOfBytes(number));
  }
}

std::string ToCodePage(std::string_view utf8) {
  const std::string name = NameOf(gCodePage);
  std::string_view rest = utf8;
  std::string bytes = Conversion(name.c_str(), "UTF-8").Convert(rest);
  if (rest.empty()) return bytes;
  std::string_view character = FirstCharacter(rest), left = character;
  if (Conversion("WCHAR_T", "UTF-8").Convert(left).empty() || !left.empty())
    throw std::invalid_argument("the text is not UTF-8");
  throw std::invalid_argument("code page " + std::to_string(gCodePage) + " has no \"" + std::string(character) + "\"");
}

std::string ToUtf8(std::string_view bytes) {
  const std::string name = NameOf(gCodePage);
  Conversion conversion("UTF-8", name.c_str());
  std::string utf8 = conversion.Convert(bytes);
  while (!bytes.empty()) {
    bytes.remove_prefix(1);
    utf8.append(kReplacement).append(conversion.Convert(bytes));
  }
  return utf8;
}

}  // namespace wire
