
#include <algorithm>
#include <map>
#include <numeric>
#include <stdexcept>
#include <string>
#include <utility>

#include "core/code_page.h"

namespace core {
namespace {

struct Bytes {
  int first, last;
};

// A range of capitals and the lower-case form of the first one; the others follow in the same order.
struct Capitals {
  int first, last, lower;
};

struct Data {
  int number;
  std::vector<Bytes> lead, trail;
  std::vector<Capitals> capitals;
};

// In addition to A to Z, which are in every code page. Of double-byte characters, Latin, Greek and Cyrillic have case.
const Data kData[] = {
    {1252,
     {},
     {},
     {{0xC0, 0xD6, 0xE0},
      {0xD8, 0xDE, 0xF8},
      {0x8A, 0x8A, 0x9A},
      {0x8C, 0x8C, 0x9C},
      {0x8E, 0x8E, 0x9E},
      {0x9F, 0x9F, 0xFF}}},
    {932,
     {{0x81, 0x9F}, {0xE0, 0xFC}},
     {{0x40, 0x7E}, {0x80, 0xFC}},
     {{0x8260, 0x8279, 0x8281}, {0x839F, 0x83B6, 0x83BF}, {0x8440, 0x844E, 0x8470}, {0x844F, 0x8460, 0x8480}}},
    {936,
     {{0x81, 0xFE}},
     {{0x40, 0x7E}, {0x80, 0xFE}},
     {{0xA3C1, 0xA3DA, 0xA3E1}, {0xA6A1, 0xA6B8, 0xA6C1}, {0xA7A1, 0xA7C1, 0xA7D1}}},
    {949,
     {{0x81, 0xFE}},
     {{0x41, 0x5A}, {0x61, 0x7A}, {0x81, 0xFE}},
     {{0xA3C1, 0xA3DA, 0xA3E1}, {0xA5C1, 0xA5D8, 0xA5E1}, {0xACA1, 0xACC1, 0xACD1}}},
    {950,
     {{0x81, 0xFE}},
     {{0x40, 0x7E}, {0xA1, 0xFE}},
     {{0xA2CF, 0xA2E4, 0xA2E9}, {0xA2E5, 0xA2E8, 0xA340}, {0xA344, 0xA35B, 0xA35C}}},
};

std::array<bool, 256> Among(const std::vector<Bytes>& ranges) {
  std::array<bool, 256> among{};
  for (const Bytes& range : ranges) std::fill(&among[0] + range.first, &among[0] + range.last + 1, true);
  return among;
}

void SetLower(CodePage& page, const Capitals& row) {
  for (int capital = row.first; capital <= row.last; ++capital) {
    const int lower = row.lower + capital - row.first;
    if (capital > 0xFF)
      page.lowerDoubleByte[static_cast<std::size_t>(capital)] = static_cast<Character>(lower);
    else
      page.lower[static_cast<std::size_t>(capital)] = static_cast<std::uint8_t>(lower);
  }
}

CodePage PageOf(int number) {
  const auto data = std::ranges::find(kData, number, &Data::number);
  if (data == std::end(kData)) throw std::invalid_argument("code page " + std::to_string(number));
  CodePage page;
  page.isLead = Among(data->lead);
  page.isTrail = Among(data->trail);
  std::iota(page.lower.begin(), page.lower.end(), std::uint8_t{0});
  if (!data->lead.empty()) page.lowerDoubleByte.resize(0x10000);
  std::iota(page.lowerDoubleByte.begin(), page.lowerDoubleByte.end(), Character{0});
  SetLower(page, {'A', 'Z', 'a'});
  for (const Capitals& row : data->capitals) SetLower(page, row);
  return page;
}

const CodePage* gPage = nullptr;

}  // namespace

// Cached, because a fuzzer changes the code page with every input.
void SetSystemCodePage(int number) {
  static std::map<int, CodePage> pages;
  if (!pages.contains(number)) pages.emplace(number, PageOf(number));
  gPage = &pages.at(number);
}

void SetSystemCodePage(CodePage page) {
  static CodePage other;
  other = std::move(page);
  gPage = &other;
}

const CodePage& SystemCodePage() {
  if (!gPage) SetSystemCodePage(1252);
  return *gPage;
}

}  // namespace core
