// Whole copies on a simulated segment: the packets that they send.
#include <algorithm>
#include <string>
#include <vector>

#include "support/memory_segment.h"
#include "core/globals.h"
#include "core/language.h"
#include "tests/support/desktop_test.h"

namespace net {
namespace {

using namespace std::chrono_literals;
using support::Desk;

class SegmentTest : public support::DesktopTest {
 protected:
  SegmentTest() {
    folder.Put("Lang.con", "Code,English\r\n10201,is now on the network");
    core::LoadLang();
    core::gLangError = -1;  // do not report the missing texts
  }
};

bool EverybodyKnowsEverybody(support::MemorySegment& segment) {
  const auto knowsAll = [&](const Desk& desk) {
    return !desk.IsUp() ||
           std::ranges::all_of(segment.Desks(), [&](const Desk& other) { return !other.IsUp() || desk.Knows(other); });
  };
  return std::ranges::all_of(segment.Desks(), knowsAll);
}

// FNV-1a.
std::uint64_t Fingerprint(const std::vector<std::string>& packets) {
  std::uint64_t hash = 0xCBF29CE484222325u;
  for (const std::string& packet : packets)
    for (const char byte : packet + "\n") hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3u;
  return hash;
}

// In a small segment the answer budget must not change a single packet, even when all start together. The hashes were
// recorded without a budget.
TEST_F(SegmentTest, SmallSegmentsSendTheRecordedPackets) {
  const struct {
    int copies;
    support::Time pause;  // between two starts
    std::uint64_t fingerprint;
  } kRecorded[] = {
      {2, 15s, 0x148021F9BE883BF9u},   {5, 15s, 0x426FF384004AFA41u},   {5, 4s, 0x95B5DA9F7AFCE75Eu},
      {2, 100ms, 0x511091C3B44912D9u}, {5, 100ms, 0xD6C9DFD383306879u},
  };
  for (const auto& row : kRecorded) {
    SCOPED_TRACE(std::to_string(row.copies) + " copies");
    support::MemorySegment segment;
    std::vector<std::string> said;
    segment.transcript = &said;
    for (int i = 0; i < row.copies; ++i) {
      segment.Add("user" + std::to_string(i), 100 * i, static_cast<std::int16_t>(i % 3));
      segment.At(i * row.pause, [&desk = segment.Desks().back()] { desk.Start(); });
    }
    segment.RunUntil(row.copies * row.pause + 15s);
    EXPECT_TRUE(EverybodyKnowsEverybody(segment));
    segment.Desks().front().Accept("renamed", 7);
    segment.RunUntil(segment.Now() + 5s);
    EXPECT_TRUE(EverybodyKnowsEverybody(segment));
    segment.Desks().back().Leave();
    segment.RunUntil(segment.Now() + 5s);
    EXPECT_EQ(Fingerprint(said), row.fingerprint);
  }
}

// Among many the same events take a few packets for each copy, and everybody is on every list, after a power cut too.
TEST_F(SegmentTest, LargeSegmentsListEverybodyWithFewPackets) {
  support::MemorySegment segment;
  for (int i = 0; i < 60; ++i) segment.Add("user" + std::to_string(i), i, static_cast<std::int16_t>(i % 3));
  segment.StartSettled();
  std::vector<std::string> said;
  segment.transcript = &said;
  auto& desks = segment.Desks();
  const auto expectFew = [&](std::size_t packets) {
    segment.RunUntil(segment.Now() + 15s);
    EXPECT_TRUE(std::ranges::all_of(desks, &Desk::IsUp));
    EXPECT_TRUE(EverybodyKnowsEverybody(segment));
    EXPECT_LE(said.size(), packets * desks.size());
    EXPECT_GE(said.size(), 3 * desks.size() - 3);
    said.clear();
  };
  desks.front().Kill();
  desks.front().Start();
  expectFew(25);
  desks.front().Accept("renamed", 7);
  expectFew(10);
  for (Desk& desk : desks) {
    desk.Kill();
    desk.Start();
  }
  expectFew(60);
}

}  // namespace
}  // namespace net
