// The election of the forwarding relay, and what it forwards.
#include <gtest/gtest.h>

#include "tools/relay/relay.h"

namespace relay {
namespace {

using std::chrono::milliseconds;

const Clock::time_point kStart{};

// Two relays of one segment and their broker: a claim reaches both, in the same order.
class Elections : public testing::Test {
 protected:
  void Publish(std::string_view holder) {
    for (Election* each : {&first, &second}) each->OnHolder(holder, now);
  }

  void Pass(milliseconds time) {
    now += time;
    for (Election* each : {&first, &second})
      if (each->TakeClaim(now)) Publish(each->OwnName());
  }

  Clock::time_point now = kStart;
  Election first{"first"}, second{"second"};
};

TEST_F(Elections, OneIsInChargeAndIsReplaced) {
  for (Election* each : {&first, &second}) each->OnConnected(now);
  Pass(Election::kClaimDelay / 2);
  EXPECT_FALSE(first.InCharge() || second.InCharge());  // somebody else's name may still come
  Pass(Election::kClaimDelay);
  EXPECT_TRUE(first.InCharge() != second.InCharge());
  Publish("first");
  EXPECT_TRUE(first.InCharge() && !second.InCharge());

  Publish("");  // the last will of a third one, which stood by
  Pass(milliseconds(1));
  EXPECT_TRUE(first.InCharge() && !second.InCharge());

  first.OnDisconnected();
  second.OnHolder("", now);
  Pass(Election::kClaimDelay);
  EXPECT_TRUE(!first.InCharge() && second.InCharge());
}

wire::Datagram From(int port, std::string bytes) {
  return {.bytes = std::move(bytes), .sender = {.host = 1, .port = port}};
}

TEST(Relay, PassesWhatCopiesSend) {
  Relay relay({.group = "office", .segment = "left", .filteredKinds = "B", .packetsPerSecond = 2}, kStart);
  EXPECT_FALSE(relay.PassesOut(From(40000, "anna|M/"), kStart));  // a relay's own broadcast
  EXPECT_FALSE(relay.PassesOut(From(1414, "anna|b/notice"), kStart));
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(relay.PassesOut(From(1414, "anna|M/"), kStart));
  EXPECT_FALSE(relay.PassesOut(From(1414, "anna|M/"), kStart));  // over the rate
  EXPECT_TRUE(relay.PassesOut(From(1414, "anna|M/"), kStart + milliseconds(600)));

  EXPECT_FALSE(relay.PassesIn("quillon/office/left", "anna|M/", false, kStart));
  EXPECT_FALSE(relay.PassesIn("quillon/office/right", "anna|M/", true, kStart));
  EXPECT_FALSE(relay.PassesIn("quillon/office/right", std::string(65508, 'x'), false, kStart));
  EXPECT_TRUE(relay.PassesIn("quillon/office/right", "anna|M/", false, kStart));
  relay.NoteLost(false);
  EXPECT_EQ(
      relay.TakeCounts(),
      "out: 5 passed, 1 filtered, 1 over the rate, 0 refused; in: 0 passed, 0 filtered, 0 over the rate, 2 refused");
}

}  // namespace
}  // namespace relay
