// Simulates starts, changes and hostile hosts on segments of two to a thousand copies (support/memory_segment.h), each
// row in its own process. Prints a table of the traffic, the load, and the time until everybody is on every list. Exit
// status 1 when a row exceeds its limits.
//
// usage: segment_simulation [LARGEST [CONDITIONS]]    only segments up to this size, only these conditions
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <numeric>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "core/globals.h"
#include "core/language.h"
#include "support/memory_segment.h"
#include "support/program_folder.h"
#include "support/recording_desktop.h"

namespace {

using support::Desk;
using support::MemorySegment;
using support::Time;
using namespace std::chrono_literals;

constexpr int kSizes[] = {2, 5, 10, 20, 50, 100, 200, 500, 1000};
constexpr int kMaxSize = kSizes[std::size(kSizes) - 1];
constexpr Time kBegin = 10s;      // the running copies have settled
constexpr Time kStartTime = 12s;  // from a start until everybody must know everybody: ten of listening and two more
constexpr Time kStep = 50ms;      // between two checks of the rosters
constexpr int kInventedNames = 10000;

constexpr Time kTogether = 90us;

constexpr net::AnswerLimits kNoLimits{.fewNames = std::numeric_limits<std::size_t>::max(),
                                      .maxAtOnce = std::numeric_limits<std::uint32_t>::max()};

struct Setting {
  const char* name;
  support::Conditions conditions;
  bool limited = true;
  int largest = kMaxSize;  // larger segments are covered by other conditions
  int smallest = 0;
};
const Setting kSettings[] = {
    {"", {.together = kTogether}},
    {"1 %", {.loss = 0.01, .together = kTogether}, true, 200},
    {"old machines", {.perPacket = 60us, .buffer = 64 << 10, .together = kTogether}, true, 200},
    {"1 %, old machines", {.loss = 0.01, .perPacket = 60us, .buffer = 64 << 10, .together = kTogether}},
    {"3 segments", {.segments = 3, .together = kTogether}, true, kMaxSize, kMaxSize},
    {"no limits", {.limits = kNoLimits, .together = kTogether}, false},
    {"no limits, 1 %, old",
     {.loss = 0.01, .perPacket = 60us, .buffer = 64 << 10, .limits = kNoLimits, .together = kTogether},
     false},
};

struct Result {
  double packets = 0, perStart = 0, worstSecond = 0;
  double busiest = 0;    // seconds of processor time within one second, of one desk
  double complete = -1;  // seconds until everybody knew everybody; -1 = never
  double missing = 0;    // pairs of desks where one does not know the other in time
};

// The time of the last start, and the number of starts.
struct Starts {
  Time last = kBegin;
  int count = 1;
};

class Simulation {
 public:
  Simulation(int size, const Setting& setting) : segment_(setting.conditions) {
    for (int i = 0; i < size; ++i)
      segment_.Add("user" + std::to_string(i), 1 + 7 * i, static_cast<std::int16_t>(i % 3));
  }

  Starts StartOne() {
    segment_.StartSettled();
    segment_.Add("newcomer", 77, 1);
    At(kBegin, [this] { segment_.Desks().back().Start(); });
    return {};
  }
  Starts StartAllWithin(Time span) {
    Starts starts{kBegin, static_cast<int>(segment_.Desks().size())};
    for (Desk& desk : segment_.Desks()) {
      const Time time = kBegin + Time(std::uniform_int_distribution<Time::rep>(0, span.count())(random_));
      starts.last = std::max(starts.last, time);
      At(time, [&desk] { desk.Start(); });
    }
    return starts;
  }
  // Without a start, everybody must know everybody two seconds later.
  Starts Accept() {
    segment_.StartSettled();
    At(kBegin, [this] { segment_.Desks().front().Accept("renamed", 88); });
    return {kBegin - 10s, 1};
  }
  Starts RestartOne() {
    segment_.StartSettled();
    At(kBegin, [this] { Restart(segment_.Desks().front()); });
    return {};
  }
  Starts RestartAll() {
    segment_.StartSettled();
    for (Desk& desk : segment_.Desks()) desk.Kill();
    return StartAllWithin(100ms);
  }
  Starts Flood() {
    segment_.StartSettled();
    for (int i = 0; i < kInventedNames; ++i)
      At(kBegin + i * Time(1s) / kInventedNames, [this, i] { segment_.Broadcast("evil" + std::to_string(i) + "|M/"); });
    return {kBegin - 10s, 1};
  }

  Result Run(const Starts& starts) {
    Result result;
    const Time due = starts.last + kStartTime;
    std::vector<std::size_t> known(segment_.Desks().size());
    for (Time time = starts.last + 10s; time <= due + 3s; time += kStep) {
      segment_.RunUntil(time);
      if (result.complete < 0 && AllKnow(known)) result.complete = Seconds(time - kBegin);
      if (time - kStep < due && time >= due) result.missing = MissingPairs();
    }
    const auto& packets = segment_.PacketsBySecond();
    for (const std::uint32_t each : packets) result.packets += each;
    result.perStart = result.packets / starts.count;
    result.worstSecond = *std::ranges::max_element(packets);
    for (const Desk& desk : segment_.Desks()) result.busiest = std::max(result.busiest, Seconds(desk.BusiestSecond()));
    return result;
  }

 private:
  static double Seconds(Time time) { return std::chrono::duration<double>(time).count(); }

  static void Restart(Desk& desk) {
    desk.Kill();
    desk.Start();
  }

  void At(Time time, std::function<void()> action) { segment_.At(time, std::move(action)); }

  static bool Know(const Desk& one, const Desk& other) { return one.IsUp() && other.IsUp() && one.Knows(other); }

  // Continues from the last check: `known` is the number of known desks for each desk.
  bool AllKnow(std::vector<std::size_t>& known) {
    auto& desks = segment_.Desks();
    bool all = true;
    for (std::size_t i = 0; i < desks.size(); ++i) {
      while (known[i] < desks.size() && Know(desks[i], desks[known[i]])) ++known[i];
      all = all && known[i] == desks.size();
    }
    return all;
  }

  double MissingPairs() {
    auto& desks = segment_.Desks();
    double missing = 0;
    for (const Desk& one : desks)
      missing +=
          static_cast<double>(std::ranges::count_if(desks, [&](const Desk& other) { return !Know(one, other); }));
    return missing;
  }

  MemorySegment segment_;
  std::minstd_rand random_{5};
};

struct Case {
  const char* name;
  Starts (*begin)(Simulation&);
  int largestWithoutLimits;  // larger segments take minutes
  int largest = kMaxSize;
  bool packetsLimited = false, paceLimited = false, timeLimited = false, floodLimited = false;
};
const Case kCases[] = {
    {.name = "one desk starts",
     .begin = [](Simulation& s) { return s.StartOne(); },
     .largestWithoutLimits = 100,
     .packetsLimited = true},
    {.name = "all start within one second",
     .begin = [](Simulation& s) { return s.StartAllWithin(1s); },
     .largestWithoutLimits = 50,
     .timeLimited = true},
    {.name = "all start within one minute",
     .begin = [](Simulation& s) { return s.StartAllWithin(60s); },
     .largestWithoutLimits = 50,
     .paceLimited = true},
    {.name = "one accepts new options", .begin = [](Simulation& s) { return s.Accept(); }, .largestWithoutLimits = 200},
    {.name = "one is killed and starts again",
     .begin = [](Simulation& s) { return s.RestartOne(); },
     .largestWithoutLimits = 100,
     .packetsLimited = true},
    {.name = "all are killed and start again",
     .begin = [](Simulation& s) { return s.RestartAll(); },
     .largestWithoutLimits = 50,
     .timeLimited = true},
    {.name = "a host sends 10,000 names",
     .begin = [](Simulation& s) { return s.Flood(); },
     .largestWithoutLimits = 20,
     .largest = 500,  // a thousand desks with 10,000 rows each take gigabytes
     .floodLimited = true},
};

struct Row {
  const Case& what;
  int desks;
  const Setting& setting;
};

// The limit that the row exceeds, or an empty text.
const char* Complaint(const Row& row, const Result& result) {
  const bool lossless = row.setting.conditions.loss == 0;
  const int n = row.desks;
  if (!row.setting.limited) return "";
  if (row.what.packetsLimited && n >= 10 && result.packets > (n >= 1000 ? 15 : n >= 100 ? 35 : 60) * n)
    return "TOO MANY PACKETS";
  if (row.what.paceLimited && (result.worstSecond > 5000 || result.busiest > 0.5)) return "TOO BUSY";
  if (row.what.floodLimited && result.packets - kInventedNames > 100 * n) return "TOO MANY ANSWERS";
  if (row.what.timeLimited && lossless && (result.complete < 0 || result.complete > 13)) return "TOO LATE";
  // A small segment has so few pairs that a single loss would exceed the share.
  if (lossless ? result.missing > 0 : n >= 10 && result.missing > 0.001 * n * n) return "TOO MANY MISSING";
  return "";
}

std::vector<Row> Rows(int largest, std::string_view only) {
  std::vector<Row> rows;
  for (const Case& what : kCases)
    for (const int desks : kSizes)
      for (const Setting& setting : kSettings)
        if ((only.empty() || only == setting.name) && desks >= setting.smallest &&
            desks <= std::min({largest, setting.largest, setting.limited ? what.largest : what.largestWithoutLimits}))
          rows.push_back({what, desks, setting});
  return rows;
}

// The relative time that a row takes: it is proportional to the packets received. In starts within a minute, many
// copies are already up and answer.
double Work(const Row& row) {
  return 1.0 * row.desks * row.desks * (row.what.paceLimited ? 100 : 10) * (row.setting.limited ? 1 : row.desks);
}

Result Simulate(const Row& row) {
  support::ResetDesktop();
  core::LoadLang();
  Simulation simulation(row.desks, row.setting);
  return simulation.Run(row.what.begin(simulation));
}

unsigned Processors() { return std::max(1u, std::thread::hardware_concurrency()); }

// Simulates each row in its own process, the longest first, with as many processes at a time as there are processors.
class Workers {
 public:
  explicit Workers(const std::vector<Row>& rows) : rows_(rows), order_(rows.size()) {
    const std::size_t bytes = rows.size() * sizeof(Result);
    void* shared = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED) std::abort();
    results_ = {static_cast<Result*>(shared), rows.size()};
    std::iota(order_.begin(), order_.end(), 0u);
    std::ranges::stable_sort(order_, std::greater<>(), [&](std::size_t i) { return Work(rows[i]); });
  }

  std::span<const Result> Run() {
    const std::size_t parallel = Processors();
    for (std::size_t i = 0; i < order_.size(); ++i) {
      if (i >= parallel) WaitForOne();
      if (::fork() == 0) {
        results_[order_[i]] = Simulate(rows_[order_[i]]);
        ::_exit(0);
      }
    }
    for (std::size_t i = 0; i < std::min(parallel, order_.size()); ++i) WaitForOne();
    return results_;
  }

 private:
  static void WaitForOne() {
    int status = 0;
    if (::wait(&status) < 0 || status != 0) std::abort();
  }

  const std::vector<Row>& rows_;
  std::vector<std::size_t> order_;
  std::span<Result> results_;
};

// The time that all rows take on an otherwise idle machine.
double MinutesTaken() {
  rusage usage{};
  ::getrusage(RUSAGE_CHILDREN, &usage);
  const auto seconds = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec);
  return seconds / 60 / Processors();
}

void Print(const Row& row, const Result& result, const char* complaint) {
  std::printf("%-30s %5d %-19s %9.0f %9.0f %7.1f %8.0f %7.3f ", row.what.name, row.desks, row.setting.name,
              result.packets, result.perStart, result.perStart / row.desks, result.worstSecond, result.busiest);
  if (result.complete < 0)
    std::printf("%8s", "-");
  else
    std::printf("%8.2f", result.complete);
  std::printf(" %8.0f  %s\n", result.missing, complaint);
}

}  // namespace

int main(int argc, char** argv) {
  const support::ProgramFolder folder;
  folder.Put("Lang.con", "Code,English\r\n1201,user|users|online\r\n10201,is now on the network");
  if (::symlink("/dev/null", folder.Path("Log.txt").c_str()) != 0) return 2;  // each greeting is a line of each log
  const std::vector<Row> rows = Rows(argc > 1 ? std::atoi(argv[1]) : kMaxSize, argc > 2 ? argv[2] : "");
  const std::span<const Result> results = Workers(rows).Run();
  std::printf("%-30s %5s %-19s %9s %9s %7s %8s %7s %8s %8s\n", "case", "desks", "conditions", "packets", "a start",
              "x desks", "a second", "busy s", "known s", "missing");
  bool passed = true;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const char* complaint = Complaint(rows[i], results[i]);
    passed = passed && *complaint == '\0';
    Print(rows[i], results[i], complaint);
  }
  const double took = MinutesTaken();
  std::printf("%.1f minutes of processor time for each processor, at most 5  %s\n", took, took > 5 ? "TOO LONG" : "");
  return passed && took <= 5 ? 0 : 1;
}
