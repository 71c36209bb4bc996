#include "net/dispatcher.h"

#include <algorithm>
#include <climits>
#include <stdexcept>
#include <string>
#include <utility>
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

constexpr AnswerLimits kLimits;
constexpr char kAnswer[] = "anna|M/;anna|C/ 4;anna|S/0;", kHiddenAnswer[] = "_anna|M/;_anna|C/ 4;_anna|S/0;";

class DispatcherTest : public support::DesktopTest {
 protected:
  DispatcherTest() {
    core::gCurName = "anna";
    core::gColour = 4;
    core::gLangError = -1;  // no report of missing texts
    roster.ClearlvUsers();
  }

  // What a packet causes to be sent and shown, each followed by ";".
  std::string On(std::string_view packet) {
    port.sent.clear();
    conversations.shown.clear();
    dispatcher.DataArrived(packet);
    std::string reaction;
    for (const Lines* lines : {&port.sent, &conversations.shown})
      for (const std::string& line : *lines) reaction += line + ";";
    return reaction;
  }

  void Expect(std::initializer_list<std::pair<std::string_view, std::string>> packets) {
    for (const auto& [packet, reaction] : packets) EXPECT_EQ(On(packet), reaction) << packet;
  }

  const toolkit::ListRow& Row(std::string_view name) { return *roster.lvUsers.FindText(name); }

  mainwindow::UserRoster roster;
  support::RecordingPort port;
  support::RecordingConversations conversations;
  Messenger messenger{port, {.fewNames = 1000000, .maxAtOnce = 1000000}};  // everybody is answered at once
  Dispatcher dispatcher{roster, conversations, messenger};
};

TEST_F(DispatcherTest, NewcomersAreListedAndAnsweredUntilTheyLeave) {
  conversations.Add("one", {"Bob"});
  Expect({{"Bob|M/", kAnswer}, {"Bob|c/ 255", ""}});
  EXPECT_EQ(Row("Bob").key, "bob");
  EXPECT_EQ(Row("Bob").foreColour, 255);
  EXPECT_TRUE(Row("Bob").checked);
  // Neither a missing bar, an unknown kind nor an empty name keeps a sender off the list.
  Expect({{"carl", kAnswer}, {"dora|X/", kAnswer}, {"emma|M", kAnswer}, {"|M/", kAnswer}, {"|M/", ""}});
  // A hidden name is answered each time, but never listed, and its texts are not shown.
  Expect({{"_fred|M/\xDFnow", kAnswer}, {"_fred|M/\xDFnow", kAnswer}});
  EXPECT_EQ(roster.lvUsers.Count(), 6u);
  EXPECT_EQ(Log(), "");
  // A name in another case is rejected until the first one leaves.
  Expect({{"bob|C/ 9", ""}, {"Bob|L/", "one without Bob;"}, {"bob|", kAnswer}});
  EXPECT_EQ(Log(), "Error Receveing Data: 35602: Key is not unique in collection;");
  Expect(
      {{"gus|L/", std::string(kAnswer) + "one without gus;"}, {"gus|L/", std::string(kAnswer) + "one without gus;"}});
  for (int i = 0; roster.lvUsers.Count() < roster.kMaxRows; ++i) roster.AddUser(std::to_string(i));
  Expect({{"late|M/\xDFnow", ""}});
}

// Otherwise two copies that start together would answer each other's answers forever.
TEST_F(DispatcherTest, HiddenCopiesAnswerEachOtherOncePerStay) {
  core::gCurName = "_anna";
  core::gStarting = -1;
  messenger.OpenSocket();
  Expect({{"_bob|C/ 1", kHiddenAnswer}, {"_bob|S/0", ""}, {"_Bob|M/", kHiddenAnswer}});
  Expect({{"_ANNA|M/", kHiddenAnswer}, {"_ANNA|M/", ""}});  // its own echo is listed and answered once, like anybody
  EXPECT_TRUE(roster.HasRow("_ANNA"));
  messenger.OpenSocket();
  Expect({{"_bob|S/0", kHiddenAnswer}});
  // A flood of invented names is answered up to a limit.
  std::size_t answered = 0;
  for (std::size_t i = 0; i < Dispatcher::kMaxHiddenNames + 10; ++i)
    answered += On("_" + std::to_string(i) + "|M/") == kHiddenAnswer;
  EXPECT_EQ(answered, Dispatcher::kMaxHiddenNames - 1);
}

// A copy that ended without leaving is still listed when it comes back, and needs everybody's answer again.
TEST_F(DispatcherTest, AGreetingIsAnsweredUnlessItsSenderWasJustAnswered) {
  Expect({{"bob|", kAnswer}, {"\xDEva|", kAnswer}, {"bob|M/bob is here", ""}});
  support::Desktop().ticks += 9999;
  Expect({{"bob|M/bob is here", ""}});
  support::Desktop().ticks += 1;
  Expect({{"bob|M/bobby is here", ""}, {"bob|M/bob", ""}, {"bob|M/", ""}, {"bob|P/bob x|y", ""}});
  core::gStatus = 2;  // the next one is a chat line
  Expect({{"\xDEva|M/\xDEva says", ""}});
  core::gStatus = 0;
  Expect({{"bob|m/bob is here", kAnswer}, {"bob|M/bob is here", ""}});
  EXPECT_TRUE(Log().ends_with("Unknow Data Receved (bob: bob is here);"));
}

// Later the copy answers at once again, as in any small segment.
TEST_F(DispatcherTest, HiddenNamesDelayAnswersForSeconds) {
  Messenger limited{port};
  Dispatcher other{roster, conversations, limited};
  const auto settle = [&] {
    port.wakeIn = 0;
    support::Desktop().ticks += static_cast<std::int32_t>(kLimits.longestDelay);
    limited.SendOwed();
  };
  limited.OpenSocket();
  settle();
  for (int i = 0; i < 200; ++i) other.DataArrived("_" + std::to_string(i) + "|M/");
  settle();
  EXPECT_EQ(port.wakeIn, 0u) << "hidden names need no repetition";
  for (const char* name : {"bob|", "\xDEva|C/ 4"}) {
    port.sent.clear();
    other.DataArrived(name);
    EXPECT_EQ(port.sent, Lines{});
    settle();
    EXPECT_EQ(port.sent.size(), 3u);
    EXPECT_GE(port.wakeIn, kLimits.repetition.min) << name << " is listed, so the answer is repeated";
  }
  support::Desktop().ticks += 20000;
  other.DataArrived("carl|");
  EXPECT_EQ(port.sent.size(), 6u);
  RecentNames flooded;
  for (std::size_t i = 0; i < RecentNames::kMaxNames + 5; ++i) flooded.Note(std::to_string(i), 0);
  EXPECT_EQ(flooded.Count(0), RecentNames::kMaxNames);
  flooded.Note("later", RecentNames::kSpan);
  EXPECT_EQ(flooded.Count(RecentNames::kSpan), 1u);
}

TEST_F(DispatcherTest, StatesAndColoursAreNumbersReadTolerantly) {
  core::gStateNames = {"zero", "one", "two"};
  const std::pair<std::string, const char*> kStates[] = {{"1", "one"},    {"1x", "one"}, {" 2", "two"},  {"", "zero"},
                                                         {"abc", "zero"}, {"3", "zero"}, {"1.5", "zero"}};
  for (const auto& [argument, text] : kStates) {
    On("bob|S/" + argument);
    EXPECT_EQ(Row("bob").subText, text) << argument;
  }
  const std::pair<std::string, std::int32_t> kColours[] = {
      {"4", 4}, {"abc", 0}, {"-2147483648", INT32_MIN}, {"2147483648", INT32_MIN}};
  for (const auto& [argument, colour] : kColours) {
    On("bob|C/" + argument);
    EXPECT_EQ(Row("bob").foreColour, colour) << argument;
  }
  EXPECT_EQ(Log(), "Unknow Data Receved (bob: 3);Unknow Data Receved (bob: 1.5);Error Receveing Data: 6: Overflow;");
}

TEST_F(DispatcherTest, MarkRecipientAndOwnStateDecideWhatIsShown) {
  On("bob|");
  conversations.Add("one", {"bob"});
  Expect({{"bob|M/\xDEhi", "one bob: hi #0;"},
          {"bob|M/\xDFnow", "alert bob: now (0);"},
          {"bob|P/\xDEx|y|ANNA", "one bob: x|y #0;"},
          {"bob|P/\xDF|anna", "alert bob:  (1);"},
          {"bob|P/\xDEhi|carl", ""},
          {"bob|P/\xDEhi", ""},
          {"bob|P/|anna", ""},
          {"bob|P/|", ""},
          {"bob|M/psst", ""},
          {"bob|P/psst|anna", ""}});
  EXPECT_EQ(Log(), "Unknow Data Receved (bob: psst);Unknow Data Receved (bob: psst);");
  core::gStatus = 1;
  Expect({{"bob|M/\xDEhi", ""}, {"bob|M/\xDFnow", "alert bob: now (0);"}});
  core::gStatus = 2;
  Expect({{"bob|M/\xDEhi", ""}, {"bob|M/\xDFnow", ""}, {"bob|B/hello", ""}, {"bob|B/", ""}});
  ASSERT_EQ(support::Desktop().posted.size(), 2u);
  EXPECT_EQ(support::Desktop().posted[0].text, "hello");
  EXPECT_EQ(support::Desktop().posted[0].title, "bob");
  EXPECT_TRUE(support::Desktop().boxes.empty());
}

TEST_F(DispatcherTest, OwnTextsAndThoseOfTheBlockedAreNotShown) {
  for (const char* name : {"anna|", "Bob|"}) On(name);
  conversations.Add("one", {"anna"});
  roster.AddBlocked("bob");
  Expect({{"anna|M/\xDEhi", "one anna: hi #0;"}});  // own chat lines come back this way
  for (const char* packet : {"anna|M/\xDFnow", "anna|M/anna is now on the network", "anna|B/hello", "Bob|M/\xDFnow",
                             "Bob|M/\xDEhi", "Bob|M/x", "Bob|P/\xDFnow|anna", "Bob|B/hello", "Bob|C/3", "Bob|S/1"})
    EXPECT_EQ(On(packet), "") << packet;
  EXPECT_TRUE(support::Desktop().posted.empty());
  EXPECT_EQ(Log(), "");
  EXPECT_EQ(Row("Bob").foreColour, 3) << "the roster is still updated";
  EXPECT_EQ(Row("Bob").subText, "Alerts Only");
}

TEST_F(DispatcherTest, EveryWindowOfTheSenderShowsTheLineElseANewOneOpens) {
  On("bob|C/5");
  const auto first = conversations.Add("one", {"bob"});
  conversations.Add("two", {"carl"});
  conversations.Add("three", {"(All)"});
  roster.lblStat.ShowHelp("help");
  EXPECT_EQ(On("bob|M/\xDEhi"), "one bob: hi #5;three bob: hi #5;");
  EXPECT_NE(roster.lblStat.Caption(), "help");
  On("_carl|X/");
  EXPECT_EQ(std::pair(first->refreshedIcons, first->refreshedNames), std::pair(1, 1)) << "by every packet that counts";
  conversations.windows.resize(2);
  EXPECT_EQ(On("dora|P/\xDEhi|anna"), kAnswer + std::string("open |dora;new dora: hi #0;"));
  EXPECT_EQ(Log(), "New chat window opened;");
}

TEST_F(DispatcherTest, ALineWithoutAWindowIsShownInABoxOrLoggedOncePerSenderAndMinute) {
  conversations.onOpen = [] { throw core::RuntimeError(core::Err::OutOfMemory); };
  On("dora|M/\xDEno window");
  EXPECT_EQ(support::Desktop().posted.at(0).title + ": " + support::Desktop().posted[0].text, "dora: no window");
  conversations = {};
  conversations.refuses = true;
  for (const int minute : {0, 1}) {
    support::Desktop().ticks = minute * 60000;
    for (const char* packet : {"emma|M/\xDEhi", "fred|P/\xDEhi|anna", "emma|M/\xDEhi"}) On(packet);
    EXPECT_TRUE(conversations.shown.empty());
  }
  const std::string lost = "Chat line lost, too many chat windows are open (";
  EXPECT_EQ(Log(), "Error Receveing Data: 7: Out of memory;" + lost + "emma);" + lost + "fred);" + lost + "emma);" +
                       lost + "fred);");
  support::Desktop().ticks = 120000;
  for (std::size_t i = 0; i < Dispatcher::kMaxLossesNoted + 10; ++i) On(std::to_string(i) + "|M/\xDEhi");
  EXPECT_EQ(std::ranges::count(folder.Get("Log.txt"), '\n'), 5 + static_cast<int>(Dispatcher::kMaxLossesNoted));
}

TEST_F(DispatcherTest, DatagramsThatArriveDuringADispatchFollowInOrder) {
  std::string buffer = "bob|M/\xDEhi";
  conversations.onOpen = [&] {
    core::Guarded([] { throw std::out_of_range("timer"); });  // must not block the dispatch with a message box
    for (const char* line : {"bob|M/\xDEone", "bob|M/\xDEtwo", "bob|L/"}) {
      buffer = line;  // the socket reuses the buffer during the dispatch
      dispatcher.DataArrived(buffer);
    }
  };
  EXPECT_EQ(On(buffer),
            kAnswer + std::string("open |bob;new bob: hi #0;new bob: one #0;new bob: two #0;new without bob;"));
  ASSERT_EQ(support::Desktop().posted.size(), 1u);
  EXPECT_EQ(support::Desktop().posted[0].text, "Run-time error '51':\r\n\r\nInternal error (timer)");
  support::Desktop().onBox = [](const core::Box&) { core::Guarded([] { throw std::bad_alloc(); }); };
  core::Guarded([] { throw std::bad_alloc(); });
  EXPECT_EQ(support::Desktop().events.back(), "box Run-time error '7':\r\n\r\nOut of memory");
  EXPECT_EQ(support::Desktop().posted.size(), 2u) << "not a second box over the first";
  core::Guarded([] { throw std::bad_alloc(); });
  EXPECT_EQ(support::Desktop().boxes.size(), 2u) << "a later failure is reported again";

  conversations.onOpen = [&] {
    for (std::size_t i = 0; i < Dispatcher::kMaxWaiting + 5; ++i)
      dispatcher.DataArrived("carl" + std::to_string(i) + "|M/");
  };
  On("dora|M/\xDEhi");
  EXPECT_EQ(roster.lvUsers.Count(), Dispatcher::kMaxWaiting + 2) << "the last five are lost";

  // The queue's limit in bytes applies to what is queued at present.
  for (const std::string name : {"emma", "fay"}) {
    conversations.onOpen = [&] {
      for (int i = 0; i < 400; ++i) dispatcher.DataArrived(name + "|M/\xDE" + std::string(60000, 'x') + "last");
    };
    On(name + "|M/\xDEhi");
    EXPECT_EQ(std::ranges::count_if(conversations.shown, [](const auto& line) { return line.ends_with("last #0"); }),
              Dispatcher::kMaxWaitingBytes / 60012);
    conversations.windows.clear();
  }
}

constexpr std::size_t kFew = kLimits.fewNames, kMany = 200;  // 200 names: a delay of 450 ms

class AnswerBudgetTest : public testing::Test {
 protected:
  AnswerBudgetTest() { budget.Begin(true, 1, now); }

  // Lets time pass until there is something to do, at most for the given time; returns the milliseconds.
  std::uint32_t Pass(std::uint32_t most = 10000) {
    const std::uint32_t wait = std::min(budget.Wait(now).value_or(most), most);
    now = core::TicksAfter(now, wait);
    return wait;
  }

  void ForgetTheJoining() {
    Pass(kLimits.repetition.max);
    budget.Settle(now);
  }

  std::int32_t now = INT_MAX - 700;  // the clock wraps around in each of these tests
  AnswerBudget budget{kLimits};
};

TEST_F(AnswerBudgetTest, EverybodyIsAnsweredAtOnceUpToAFlood) {
  const struct {
    std::size_t names, atOnce;
    double later;  // in ten seconds of questions
  } kRows[] = {{kFew, kLimits.maxAtOnce, 160}, {20, 4, 160}, {85, 1, 60}, {86, 0, 60}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.names);
    budget.End();
    now = core::TicksAfter(now, 60000);
    for (std::size_t i = 0; i < row.atOnce; ++i) EXPECT_EQ(budget.Ask(true, row.names, now), Answer::Now);
    EXPECT_EQ(budget.Ask(true, row.names, now), Answer::Owed);
    EXPECT_EQ(budget.Ask(true, row.names, now), Answer::Coalesced);
    int later = 0;
    for (const std::int32_t end = core::TicksAfter(now, 10000); now != end; now = core::TicksAfter(now, 1))
      later += budget.Settle(now) || budget.Ask(true, row.names, now) == Answer::Now;
    EXPECT_NEAR(later, row.later, 3);
  }
}

TEST_F(AnswerBudgetTest, InALargeSegmentOneAnswerServesAllAndIsRepeatedOnce) {
  ForgetTheJoining();
  EXPECT_EQ(budget.Wait(now), std::nullopt);
  for (int round = 0; round < 50; ++round) {  // each in place of the repetition of the one before
    Pass(budget.Wait(now).value_or(1) - 1);
    EXPECT_EQ(budget.Ask(true, kMany, now), Answer::Owed);
    EXPECT_EQ(budget.Ask(false, kMany, now), Answer::Coalesced);
    EXPECT_FALSE(budget.Settle(now));
    const std::uint32_t wait = Pass();
    EXPECT_GE(wait, 150u);
    EXPECT_LE(wait, 450u);
    EXPECT_TRUE(budget.Settle(now));
    EXPECT_FALSE(budget.Settle(now));
  }
  const std::uint32_t wait = Pass();
  EXPECT_GE(wait, kLimits.repetition.min);
  EXPECT_LE(wait, kLimits.repetition.max);
  EXPECT_TRUE(budget.Settle(now));
  EXPECT_EQ(budget.Ask(true, kFew, now), Answer::Now);
  EXPECT_EQ(budget.Wait(now), std::nullopt);
  EXPECT_EQ(budget.Ask(true, kFew + 1, now), Answer::Now);
  EXPECT_GE(Pass(), kLimits.repetition.min);
  EXPECT_TRUE(budget.Settle(now)) << "an immediate answer is repeated too";
}

TEST_F(AnswerBudgetTest, HiddenNewcomersGetNoRepetition) {
  ForgetTheJoining();
  for (int i = 0; i < 2; ++i) budget.Ask(false, kMany, now);
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

TEST_F(AnswerBudgetTest, RepeatsTheJoinInLargeSegments) {
  for (const std::size_t names : {kFew, kFew + 1}) {
    budget.Begin(true, 1, now);
    if (budget.Ask(false, names, now) == Answer::Owed) {
      Pass();
      EXPECT_TRUE(budget.Settle(now));
    }
    EXPECT_GE(Pass(), 1u);
    EXPECT_EQ(budget.Settle(now), names > kFew);
  }
  budget.Begin(true, 1, now);  // on another segment, where nobody was heard yet
  Pass();
  EXPECT_FALSE(budget.Settle(now));
  budget.End();
  EXPECT_EQ(budget.Wait(now), std::nullopt);
}

// Sleep and resume: an answer owed before is sent within two seconds of the user's time.
TEST_F(AnswerBudgetTest, AJumpOfTheClockNeitherSilencesNorFloods) {
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
