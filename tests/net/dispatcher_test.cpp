#include "net/dispatcher.h"

#include <climits>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/callback_guard.h"
#include "core/clock.h"
#include "core/globals.h"
#include "net/answer_budget.h"
#include "support/recording_network.h"
#include "tests/support/desktop_test.h"
#include "ui/main/user_roster.h"

namespace net {
namespace {

using Lines = std::vector<std::string>;

const Lines kAnswer{"anna|M/", "anna|C/ 4", "anna|S/1"};

class DispatcherTest : public support::DesktopTest {
 protected:
  DispatcherTest() {
    core::gCurName = "anna";
    core::gColour = 4;
    core::gLangError = -1;  // no language file: nobody asks for its texts here
    roster.ClearlvUsers();
  }

  void Hear(std::string_view packet) { dispatcher.DataArrived(packet); }

  // Makes a user known, as any first packet does.
  void Know(std::string_view name) {
    Hear(std::string(name) + "|");
    port.sent.clear();
  }

  // What the hearing of a packet makes the copy send.
  Lines SentOn(std::string_view packet) {
    port.sent.clear();
    Hear(packet);
    return port.sent;
  }

  Lines ShownOn(std::string_view packet) {
    conversations.shown.clear();
    Hear(packet);
    return conversations.shown;
  }

  const toolkit::ListRow& Row(std::string_view name) { return *roster.lvUsers.FindText(name); }

  mainwindow::UserRoster roster;
  support::RecordingPort port;
  support::RecordingConversations conversations;
  Messenger messenger{port, {.fewNames = 1000000, .maxAtOnce = 1000000}};  // whoever asks is answered at once
  Dispatcher dispatcher{roster, conversations, messenger};
};

TEST_F(DispatcherTest, AFirstPacketListsAndAnswersItsSender) {
  core::gStatus = 1;
  EXPECT_EQ(SentOn("bob|c/ 255"), kAnswer);
  EXPECT_EQ(Row("bob").key, "bob");
  EXPECT_EQ(Row("bob").foreColour, 255);
  EXPECT_TRUE(Row("bob").checked);
  EXPECT_EQ(SentOn("bob|C/ 7"), Lines{});
  EXPECT_EQ(Row("bob").foreColour, 7);
  // Neither a missing bar, an unknown kind nor an empty name keeps a sender off the list.
  for (const std::string_view packet : {"carl", "dora|X/", "emma|M", "|M/"}) EXPECT_EQ(SentOn(packet), kAnswer);
  EXPECT_EQ(roster.lvUsers.Count(), 6u);
  EXPECT_EQ(SentOn("|M/"), Lines{});
  EXPECT_EQ(Log(), "");
}

TEST_F(DispatcherTest, ANameInAnotherCaseIsLostUntilTheFirstOneLeaves) {
  Know("Bob");
  EXPECT_EQ(SentOn("bob|C/ 9"), Lines{});
  EXPECT_EQ(Row("Bob").foreColour, 0);
  EXPECT_EQ(Log(), "Error Receveing Data: 35602: Key is not unique in collection;");
  Hear("Bob|L/");
  EXPECT_EQ(SentOn("bob|").size(), 3u);
}

TEST_F(DispatcherTest, AHiddenNameIsAnsweredNeverListedNorHeard) {
  core::gStatus = 1;
  for (int i = 0; i < 2; ++i) EXPECT_EQ(SentOn("_bob|M/\xDFnow"), kAnswer);
  EXPECT_EQ(conversations.shown, Lines{});
  EXPECT_EQ(roster.lvUsers.Count(), 1u);
}

// Otherwise two copies that start together answer each other's answers for ever.
TEST_F(DispatcherTest, HiddenCopiesAnswerEachOtherOncePerStay) {
  core::gCurName = "_anna";
  core::gStarting = -1;
  messenger.OpenSocket();
  EXPECT_EQ(SentOn("_bob|C/ 1").size(), 3u);
  EXPECT_EQ(SentOn("_bob|S/0"), Lines{});
  EXPECT_EQ(SentOn("_Bob|M/").size(), 3u) << "told apart exactly";
  EXPECT_EQ(SentOn("_ANNA|M/").size(), 3u);  // the own echo is listed and answered once, like anybody
  EXPECT_EQ(SentOn("_ANNA|M/"), Lines{});
  EXPECT_TRUE(roster.HasRow("_ANNA"));
  messenger.OpenSocket();
  EXPECT_EQ(SentOn("_bob|S/0").size(), 3u);
  // A crowd of invented names is answered up to a bound.
  std::size_t answered = 0;
  for (std::size_t i = 0; i < Dispatcher::kMostHiddenNames + 10; ++i)
    answered += SentOn("_" + std::to_string(i) + "|M/").size() / 3;
  EXPECT_EQ(answered, Dispatcher::kMostHiddenNames - 1);
  messenger.OpenSocket();
  for (std::size_t bytes = 60000; bytes < Dispatcher::kMostHiddenBytes; bytes += 60000)
    EXPECT_EQ(SentOn("_" + std::string(59999, 'x') + std::to_string(bytes) + "|M/").size(), 3u);
  EXPECT_EQ(SentOn("_" + std::string(60000, 'y') + "|M/"), Lines{});
}

// Who ended without leaving is listed still when he comes back, and nobody else makes him known to the others' lists.
TEST_F(DispatcherTest, AGreetingIsAnsweredUnlessItsSenderWasJustAnswered) {
  core::gStatus = 1;
  for (const std::string_view name : {"bob", "\xDEva"}) Know(name);
  EXPECT_EQ(SentOn("bob|M/bob is here"), Lines{});
  support::Desktop().ticks += 9999;
  EXPECT_EQ(SentOn("bob|M/bob is here"), Lines{});
  support::Desktop().ticks += 1;
  for (const std::string_view packet :
       {"bob|M/bobby is here", "bob|M/bob", "bob|M/", "bob|P/bob x|y", "\xDEva|M/\xDEva says"})
    EXPECT_EQ(SentOn(packet), Lines{}) << packet;
  EXPECT_EQ(SentOn("bob|m/bob is here"), kAnswer);
  EXPECT_EQ(SentOn("bob|M/bob is here"), Lines{});
  EXPECT_TRUE(Log().ends_with("Unknow Data Receved (bob: bob is here);"));
}

TEST_F(DispatcherTest, StatesAndColoursAreNumbersReadTolerantly) {
  core::gStateNames = {"zero", "one", "two"};
  const std::pair<std::string, const char*> kStates[] = {{"1", "one"},    {"1x", "one"}, {" 2", "two"},  {"", "zero"},
                                                         {"abc", "zero"}, {"3", "zero"}, {"1.5", "zero"}};
  for (const auto& [argument, text] : kStates) {
    Hear("bob|S/" + argument);
    EXPECT_EQ(Row("bob").subText, text) << argument;
  }
  const std::pair<std::string, std::int32_t> kColours[] = {
      {"4", 4}, {"abc", 0}, {"-2147483648", INT32_MIN}, {"2147483648", INT32_MIN}};
  for (const auto& [argument, colour] : kColours) {
    Hear("bob|C/" + argument);
    EXPECT_EQ(Row("bob").foreColour, colour) << argument;
  }
  EXPECT_EQ(Log(), "Unknow Data Receved (bob: 3);Unknow Data Receved (bob: 1.5);Error Receveing Data: 6: Overflow;");
}

TEST_F(DispatcherTest, LeavingRemovesEverywhereEvenAStranger) {
  conversations.Add("one", {"bob"});
  Know("bob");
  EXPECT_EQ(ShownOn("bob|L/"), Lines{"one without bob"});
  EXPECT_FALSE(roster.HasRow("bob"));
  EXPECT_EQ(SentOn("bob|L/").size(), 3u);
  EXPECT_FALSE(roster.HasRow("bob"));
}

TEST_F(DispatcherTest, MarkRecipientAndOwnStateDecideWhatIsShown) {
  Know("bob");
  conversations.Add("one", {"bob"});
  const struct {
    std::int16_t status;
    const char* packet;
    Lines shown;
  } kRows[] = {
      {0, "bob|M/\xDEhi", {"one bob: hi #0"}},
      {0, "bob|M/\xDFnow", {"alert bob: now (0)"}},
      {1, "bob|M/\xDFnow", {"alert bob: now (0)"}},
      {0, "bob|P/\xDEx|y|ANNA", {"one bob: x|y #0"}},
      {0, "bob|P/\xDF|anna", {"alert bob:  (1)"}},
      {1, "bob|M/\xDEhi", {}},
      {2, "bob|M/\xDEhi", {}},
      {2, "bob|M/\xDFnow", {}},
  };
  for (const auto& row : kRows) {
    core::gStatus = row.status;
    EXPECT_EQ(ShownOn(row.packet), row.shown) << row.status << " " << row.packet;
  }
  core::gStatus = 0;
  for (const char* packet : {"bob|P/\xDEhi|carl", "bob|P/\xDEhi", "bob|P/|anna", "bob|P/|",
                             "bob|M/bob is now on the network", "bob|P/psst|anna"})
    EXPECT_EQ(ShownOn(packet), Lines{}) << packet;
  EXPECT_EQ(Log(), "Unknow Data Receved (bob: bob is now on the network);Unknow Data Receved (bob: psst);");
}

TEST_F(DispatcherTest, OwnTextsAndThoseOfTheBlockedAreNotShown) {
  for (const char* name : {"anna", "Bob"}) Know(name);
  conversations.Add("one", {"anna"});
  roster.AddBlocked("bob");
  EXPECT_EQ(ShownOn("anna|M/\xDEhi"), Lines{"one anna: hi #0"}) << "but for chat lines, which come back";
  for (const char* packet : {"anna|M/\xDFnow", "anna|M/anna is now on the network", "anna|B/hello", "Bob|M/\xDFnow",
                             "Bob|M/\xDEhi", "Bob|M/x", "Bob|P/\xDFnow|anna", "Bob|B/hello"})
    EXPECT_EQ(ShownOn(packet), Lines{}) << packet;
  EXPECT_TRUE(support::Desktop().posted.empty());
  EXPECT_EQ(Log(), "");
  Hear("Bob|C/3");
  Hear("Bob|S/1");
  EXPECT_EQ(Row("Bob").foreColour, 3) << "the roster stays in step";
  EXPECT_EQ(Row("Bob").subText, "Alerts Only");
  Hear("Bob|L/");
  EXPECT_FALSE(roster.HasRow("Bob"));
}

TEST_F(DispatcherTest, ANoticeWaitsInABoxUnderTheSendersName) {
  core::gStatus = 2;
  Hear("bob|B/hello");
  Hear("bob|B/");
  ASSERT_EQ(support::Desktop().posted.size(), 2u);
  EXPECT_EQ(support::Desktop().posted[0].text, "hello");
  EXPECT_EQ(support::Desktop().posted[0].title, "bob");
  EXPECT_TRUE(support::Desktop().boxes.empty());
}

TEST_F(DispatcherTest, EveryWindowOfTheSenderShowsTheLineElseANewOneOpens) {
  Know("bob");
  Hear("bob|C/5");
  conversations.Add("one", {"bob"});
  conversations.Add("two", {"carl"});
  conversations.Add("three", {"(All)"});
  EXPECT_EQ(ShownOn("bob|M/\xDEhi"), (Lines{"one bob: hi #5", "three bob: hi #5"}));
  conversations.windows.resize(2);
  EXPECT_EQ(ShownOn("dora|P/\xDEhi|anna"), (Lines{"open |dora", "new dora: hi #0"}));
  EXPECT_EQ(Log(), "New chat window opened;");
}

TEST_F(DispatcherTest, ALineWithoutAWindowIsNotedOncePerSenderAndMinute) {
  conversations.refuses = true;
  for (const int minute : {0, 1}) {
    support::Desktop().ticks = minute * 60000;
    for (const char* packet : {"emma|M/\xDEhi", "fred|P/\xDEhi|anna", "emma|M/\xDEhi"})
      EXPECT_EQ(ShownOn(packet), Lines{});
  }
  const std::string lost = "Chat line lost, too many chat windows are open (";
  EXPECT_EQ(Log(), lost + "emma);" + lost + "fred);" + lost + "emma);" + lost + "fred);");
}

TEST_F(DispatcherTest, DatagramsThatArriveDuringADispatchFollowInOrder) {
  std::string buffer = "bob|M/\xDEhi";
  conversations.onOpen = [&] {
    core::Guarded([] { throw std::out_of_range("timer"); });  // must not hold the dispatch up with a box
    for (const char* line : {"bob|M/\xDEone", "bob|M/\xDEtwo", "bob|L/"}) {
      buffer = line;  // the socket reads into the buffer whose content is being dispatched
      Hear(buffer);
    }
  };
  EXPECT_EQ(ShownOn(buffer),
            (Lines{"open |bob", "new bob: hi #0", "new bob: one #0", "new bob: two #0", "new without bob"}));
  ASSERT_EQ(support::Desktop().posted.size(), 1u);
  EXPECT_EQ(support::Desktop().posted[0].text, "Run-time error '51':\r\n\r\nInternal error (timer)");
  core::Guarded([] { throw std::bad_alloc(); });
  EXPECT_EQ(support::Desktop().events.back(), "box Run-time error '7':\r\n\r\nOut of memory");

  std::size_t lost = 0;
  conversations.onOpen = [&] {
    for (std::size_t i = 0; i < Dispatcher::kMostWaiting + 5; ++i) Hear("carl" + std::to_string(i) + "|M/");
  };
  Hear("dora|M/\xDEhi");
  for (std::size_t i = 0; i < Dispatcher::kMostWaiting + 5; ++i) lost += !roster.HasRow("carl" + std::to_string(i));
  EXPECT_EQ(lost, 5u);

  // What a crowd of long lines may hold in memory is free again when they were shown.
  for (const char* round : {"emma", "fay"}) {
    conversations.onOpen = [&] {
      for (int i = 0; i < 200; ++i) Hear(round + ("|X/" + std::string(60000, 'x')));
      Hear(std::string(round) + "|M/\xDElast");
    };
    EXPECT_EQ(ShownOn(std::string(round) + "|M/\xDEhi").back(), "new " + std::string(round) + ": last #0");
    conversations.windows.clear();
  }
}

TEST_F(DispatcherTest, EveryCountedPacketRefreshesTheWindows) {
  const auto window = conversations.Add("one", {});
  const std::string before = roster.lblStat.Caption();
  roster.lblStat.ShowHelp("help");
  Hear("bob|X/");
  EXPECT_EQ(window->refreshedIcons, 1);
  EXPECT_EQ(window->refreshedNames, 1);
  EXPECT_NE(roster.lblStat.Caption(), before);
  Hear("_carl|X/");
  EXPECT_EQ(window->refreshedNames, 1);
}

constexpr AnswerLimits kLimits;
constexpr std::size_t kFew = kLimits.fewNames, kMany = 200;  // 200 names: a delay of 450 ms

class AnswerBudgetTest : public testing::Test {
 protected:
  AnswerBudgetTest() { budget.Begin(true, 1, now); }

  // Lets time pass until there is something to do, or for so long; the milliseconds that it took.
  std::uint32_t Pass(std::uint32_t most = 10000) {
    const std::uint32_t wait = std::min(budget.Wait(now).value_or(most), most);
    now = core::TicksAfter(now, wait);
    return wait;
  }

  void ForgetTheJoining() {
    Pass(kLimits.repetition.most);
    budget.Settle(now);
  }

  std::int32_t now = INT_MAX - 700;  // the clock wraps around in each of these tests
  AnswerBudget budget{kLimits};
};

TEST_F(AnswerBudgetTest, AmongFewEverybodyIsAnsweredAtOnceUpToAFlood) {
  ForgetTheJoining();
  for (std::uint32_t i = 0; i < kLimits.maxAtOnce; ++i) EXPECT_EQ(budget.Ask(true, kFew, now), Answer::Now);
  EXPECT_EQ(budget.Ask(true, kFew, now), Answer::Owed);
  EXPECT_EQ(budget.Ask(true, kFew, now), Answer::Gathered);
  Pass();
  EXPECT_TRUE(budget.Settle(now));
  now = core::TicksAfter(now, 1000);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(budget.Ask(true, kFew, now), Answer::Now) << i;
}

TEST_F(AnswerBudgetTest, AmongManyOneAnswerServesAllAndIsRepeatedOnce) {
  ForgetTheJoining();
  EXPECT_EQ(budget.Wait(now), std::nullopt);
  for (int round = 0; round < 2; ++round) {  // the second one in place of the repetition
    EXPECT_EQ(budget.Ask(true, kMany, now), Answer::Owed);
    EXPECT_EQ(budget.Ask(false, kMany, now), Answer::Gathered);
    EXPECT_FALSE(budget.Settle(now));
    const std::uint32_t wait = Pass();
    EXPECT_GE(wait, 150u);
    EXPECT_LE(wait, 450u);
    EXPECT_TRUE(budget.Settle(now));
    EXPECT_FALSE(budget.Settle(now));
  }
  const std::uint32_t wait = Pass();
  EXPECT_GE(wait, kLimits.repetition.least);
  EXPECT_LE(wait, kLimits.repetition.most);
  EXPECT_TRUE(budget.Settle(now));
  EXPECT_EQ(budget.Wait(now), std::nullopt);
}

TEST_F(AnswerBudgetTest, HiddenNewcomersGetNoRepetition) {
  ForgetTheJoining();
  budget.Ask(false, kMany, now);
  Pass();
  EXPECT_TRUE(budget.Settle(now));
  EXPECT_EQ(budget.Wait(now), std::nullopt);
  budget.Begin(false, 1, now);
  EXPECT_EQ(budget.Wait(now), std::nullopt);
  EXPECT_EQ(budget.Ask(true, kMany, now), Answer::Owed);
  EXPECT_GE(Pass(), kLimits.longestDelay * 2 / 3);
  EXPECT_TRUE(budget.Settle(now));
  EXPECT_EQ(budget.Wait(now), std::nullopt);
}

TEST_F(AnswerBudgetTest, AJoiningIsRepeatedWhereManyAnswer) {
  for (const std::size_t names : {kFew, kFew + 1}) {
    budget.Begin(true, 1, now);
    if (budget.Ask(false, names, now) == Answer::Owed) {
      Pass();
      EXPECT_TRUE(budget.Settle(now));
    }
    EXPECT_GE(Pass(), 1u);
    EXPECT_EQ(budget.Settle(now), names > kFew);
  }
  budget.End();
  EXPECT_EQ(budget.Wait(now), std::nullopt);
}

// Sleep and resume: nobody waits longer than two seconds of a user's time for what was owed before.
TEST_F(AnswerBudgetTest, AClockThatJumpsNeitherSilencesNorFloods) {
  ForgetTheJoining();
  for (const int jump : {-3600000, 3600000, INT_MIN, INT_MAX, -60000}) {
    EXPECT_EQ(budget.Ask(false, kMany, now), Answer::Owed);
    now = core::TicksAfter(now, static_cast<std::uint32_t>(jump));
    EXPECT_LE(budget.Wait(now), kLimits.longestDelay);
    EXPECT_EQ(budget.Ask(false, kMany, now), Answer::Now) << jump;
    EXPECT_FALSE(budget.Settle(now));
    EXPECT_EQ(budget.Ask(true, kFew, now), Answer::Now) << jump;
  }
}

}  // namespace
}  // namespace net
