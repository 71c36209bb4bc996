// The cost of one packet in the dispatcher and the roster, relative to the system's cost of receiving it: "of_bare" is
// that time as a share of the bare receive, measured in the same run. Exit status 1 when a packet of
// a known user costs more than the bare receive, or more among 50,000 users than one and a half times what it costs
// among ten.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/bare_receive.h"
#include "core/globals.h"
#include "core/language.h"
#include "net/dispatcher.h"
#include "support/program_folder.h"
#include "support/recording_desktop.h"
#include "ui/main/user_roster.h"

namespace {

class SilentPort : public net::DatagramPort {
 public:
  void Open(int) override {}
  void Close() override {}
  void WakeIn(std::uint32_t) override {}
  void Send(std::string_view bytes) override { benchmark::DoNotOptimize(bytes.size()); }
};

// Refreshes like the real chat window: checks the counters first, and its participants only when they have changed.
class CountingChat : public net::ChatWindow {
 public:
  explicit CountingChat(const mainwindow::UserRoster& users) : users_(users) {}

  bool AddMsg(std::string_view, std::string_view, std::int32_t) override { return false; }
  void RemoveUser(std::string_view) override {}
  void RefUserList() override {
    const toolkit::ListRows& rows = users_.lvUsers;
    if (rows.MembershipRevision() == drawnSet_ && rows.IconRevision() == drawnIcons_) return;
    drawnSet_ = rows.MembershipRevision();
    drawnIcons_ = rows.IconRevision();
    for (const char* participant : {"user1", "user2", "user3"}) benchmark::DoNotOptimize(rows.FindKey(participant));
  }
  void RefListOfUsers() override {
    if (users_.lvUsers.MembershipRevision() == listedSet_) return;
    listedSet_ = users_.lvUsers.MembershipRevision();
  }

 private:
  const mainwindow::UserRoster& users_;
  std::uint64_t drawnSet_ = 0, drawnIcons_ = 0, listedSet_ = 0;
};

class OpenWindows : public net::Conversations {
 public:
  std::vector<std::shared_ptr<net::ChatWindow>> windows;

  const std::vector<std::shared_ptr<net::ChatWindow>>& ChatWindows() const override { return windows; }
  std::shared_ptr<net::ChatWindow> OpenChat(std::string_view) override { return nullptr; }
  void ShowAlert(std::string_view, std::string_view, int) override {}
};

// One packet of each sender, in random order: the worst case for the processor's caches. In one block, since a real
// packet is in the socket's buffer.
class Packets {
 public:
  Packets(std::size_t users, const char* command) : packets_(users) {
    for (std::size_t i = 0; i < users; ++i) {
      const std::string packet = "user" + std::to_string(i + 1) + "|" + command;
      packet.copy(packets_[i].data(), kSize - 1);
    }
    std::shuffle(packets_.begin(), packets_.end(), std::mt19937(1));
  }
  std::string_view Next() {
    if (next_ == packets_.size()) next_ = 0;
    return packets_[next_++].data();
  }

 private:
  static constexpr std::size_t kSize = 16;
  std::vector<std::array<char, kSize>> packets_;
  std::size_t next_ = 0;
};

struct Copy {
  Copy() {
    core::gCurName = "anna";
    users.ClearlvUsers();
  }
  void Hear(Packets& packets, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) dispatcher.DataArrived(packets.Next());
  }

  mainwindow::UserRoster users;
  SilentPort port;
  OpenWindows conversations;
  net::Messenger messenger{port};
  net::Dispatcher dispatcher{users, conversations, messenger};
};

constexpr char kOfBare[] = "of_bare";

void CompareWithBareReceive(benchmark::State& state) {
  using benchmark::Counter;
  state.counters[kOfBare] = Counter(bench::BareReceive(), Counter::kIsIterationInvariantRate | Counter::kInvert);
}

void BareReceive(benchmark::State& state) {
  while (state.KeepRunningBatch(bench::kMaxWaiting))
    state.SetIterationTime(bench::ReceiveDatagrams(bench::kMaxWaiting));
  CompareWithBareReceive(state);
}
BENCHMARK(BareReceive)->Name("receive one datagram, nothing else")->UseManualTime();

void KnownSender(benchmark::State& state, bool stateChanges) {
  const auto count = static_cast<std::size_t>(state.range(0));
  Copy copy;
  for (int i = 0; i < state.range(1); ++i)
    copy.conversations.windows.push_back(std::make_shared<CountingChat>(copy.users));
  std::array<Packets, 2> packets{Packets(count, "S/1"), Packets(count, stateChanges ? "S/2" : "S/1")};
  for (Packets& round : packets) copy.Hear(round, count);
  std::size_t heard = 0;
  for (auto _ : state) copy.dispatcher.DataArrived(packets[heard++ / count % 2].Next());
  CompareWithBareReceive(state);
}
constexpr int kFew = 10, kMany = 50000;
#define USERS_AND_WINDOWS \
  ArgNames({"users", "windows"})->ArgsProduct({{kFew, 1000, 10000, kMany}, {0, 10}})->Repetitions(7)
BENCHMARK_CAPTURE(KnownSender, same, false)->Name("S/ of a known sender, state unchanged")->USERS_AND_WINDOWS;
BENCHMARK_CAPTURE(KnownSender, other, true)->Name("S/ of a known sender, state changed")->USERS_AND_WINDOWS;

template <class Action>
void Time(benchmark::State& state, Action action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
}

// Prints the fastest repetition of each benchmark, which was disturbed least, and checks those of known senders against
// their limits.
class Judge : public benchmark::ConsoleReporter {
 public:
  Judge() : ConsoleReporter(OO_None) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    if (runs.front().run_type != Run::RT_Iteration) return;  // aggregates
    Run best = *std::ranges::min_element(runs, {}, &Run::GetAdjustedRealTime);
    best.counters.at(kOfBare).flags = benchmark::Counter::kDefaults;  // a share has no unit
    ConsoleReporter::ReportRuns({best});
    Look(best);
  }

  bool TooMuch() const { return tooMuch_; }

 private:
  void Look(const Run& run) {
    int users = 0, windows = 0;
    if (std::sscanf(run.run_name.args.c_str(), "users:%d/windows:%d", &users, &windows) != 2) return;
    double& few = ofFew_[run.run_name.function_name + std::to_string(windows)];
    if (users == kFew) few = run.GetAdjustedCPUTime();
    if (run.counters.at(kOfBare) > 1) Complain("is above the bare receive");
    if (users == kMany && run.GetAdjustedCPUTime() > 1.5 * few) Complain("is above 1.5 times that of ten users");
  }

  void Complain(const char* complaint) {
    GetOutputStream() << "TOO MUCH: the figure above " << complaint << std::endl;
    tooMuch_ = true;
  }

  std::map<std::string, double> ofFew_;
  bool tooMuch_ = false;
};

constexpr std::size_t kCrowd = 10000;

void Join(benchmark::State& state) {
  Packets joins(kCrowd, "M/");
  while (state.KeepRunningBatch(kCrowd)) {
    Copy copy;
    Time(state, [&] { copy.Hear(joins, kCrowd); });
  }
  CompareWithBareReceive(state);
}
BENCHMARK(Join)->Name("join of one of 10000 users, answered")->UseManualTime();

void Leave(benchmark::State& state) {
  Packets joins(kCrowd, "M/"), leaves(kCrowd, "L/");
  Copy copy;
  while (state.KeepRunningBatch(kCrowd)) {
    copy.Hear(joins, kCrowd);
    Time(state, [&] { copy.Hear(leaves, kCrowd); });
  }
  CompareWithBareReceive(state);
}
BENCHMARK(Leave)->Name("leave of one of 10000 users")->UseManualTime();

}  // namespace

int main(int argc, char** argv) {
  const support::ProgramFolder folder;
  folder.Put("Lang.con", "Code,English\r\n1201,user|users|online");
  support::ResetDesktop();
  core::LoadLang();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  Judge judge;
  benchmark::RunSpecifiedBenchmarks(&judge);
  return judge.TooMuch() ? 1 : 0;
}
