#include "support/memory_segment.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "core/globals.h"
#include "core/start_up.h"
#include "support/recording_desktop.h"

namespace support {
namespace {

constexpr Time kMinDelay = 100us, kMaxDelay = 1ms;  // of a packet from its sender to everybody

// Buffer space of a small datagram, including the system's overhead.
constexpr std::size_t kBufferPerPacket = 256;

constexpr int kMaxTimerDelay = 15;  // milliseconds by which a timer may be late: the resolution of Windows' clock

// The tick count wraps around while desks start.
constexpr std::uint32_t kFirstTick = std::numeric_limits<std::int32_t>::max() - 12000u;

template <class Counts>
auto& BySecond(Counts& counts, Time time) {
  const auto second = static_cast<std::size_t>(time / 1s);
  if (second >= counts.size()) counts.resize(second + 1);
  return counts[second];
}

Time Between(Time least, Time most, std::minstd_rand& random) {
  return Time(std::uniform_int_distribution<Time::rep>(least.count(), most.count())(random));
}

}  // namespace

// Lends the program's globals to one desk.
class Desk::Seat {
 public:
  explicit Seat(Desk& desk) : desk_(desk) { Swap(); }
  ~Seat() { Swap(); }
  Seat(const Seat&) = delete;
  Seat& operator=(const Seat&) = delete;

 private:
  void Swap() {
    core::gCurName.swap(desk_.curName_);
    std::swap(core::gColour, desk_.colour_);
    std::swap(core::gStatus, desk_.status_);
    std::swap(core::gStarting, desk_.starting_);
  }
  Desk& desk_;
};

Desk::Desk(MemorySegment& segment, int place, std::string name, std::int32_t colour, std::int16_t status)
    : segment_(segment), place_(place), userName_(std::move(name)), colour_(colour), status_(status) {}

void Desk::Start() {
  copy_ = std::make_unique<Copy>(*this, segment_.conditions_.limits);
  const Seat seat(*this);
  core::gStarting = -1;
  core::gCurName = "_" + userName_;
  copy_->users.ClearlvUsers();
  copy_->messenger.OpenSocket();
  Later(std::chrono::milliseconds(core::kListenTime), [this] {
    const Seat again(*this);
    core::gStarting = 0;
    Rejoin(userName_);
  });
}

void Desk::Join(const std::deque<Desk>& known) {
  copy_ = std::make_unique<Copy>(*this, segment_.conditions_.limits);
  const Seat seat(*this);
  core::gCurName = userName_;
  copy_->users.ClearlvUsers();
  copy_->messenger.OpenSocket();
  for (const Desk& desk : known) {
    copy_->users.AddUser(desk.userName_);
    copy_->users.SetColour(desk.userName_, &desk == this ? core::gColour : desk.colour_);
    const auto status = static_cast<std::size_t>(&desk == this ? core::gStatus : desk.status_);
    copy_->users.SetStateText(desk.userName_, core::gStateNames[status]);
  }
}

void Desk::Rejoin(std::string name) {
  copy_->messenger.CloseSocket();
  copy_->users.ClearlvUsers();
  core::gCurName = std::move(name);
  copy_->messenger.OpenSocket();
}

void Desk::Accept(std::string name, std::int32_t colour) {
  const Seat seat(*this);
  userName_ = std::move(name);
  core::gColour = colour;
  Rejoin(userName_);
}

void Desk::Leave() {
  const Seat seat(*this);
  copy_->messenger.CloseSocket();
}

void Desk::Kill() {
  ++kills_;
  open_ = false;
  copy_.reset();
}

// Calls the copy immediately, but with the clock at the time when the processor is free; its packets are sent at that
// time.
void Desk::Hear(std::string_view packet) {
  if (!open_) return;
  const Time perPacket = segment_.conditions_.perPacket, begin = std::max(segment_.now_, busyUntil_);
  const auto waiting = static_cast<std::size_t>((begin - segment_.now_) / perPacket);
  if (waiting * kBufferPerPacket > segment_.conditions_.buffer) return;
  BySecond(busy_, begin) += perPacket;
  busyUntil_ = begin + perPacket;
  MemorySegment::SetClock(begin);
  const Seat seat(*this);
  copy_->dispatcher.DataArrived(packet);
}

bool Desk::Knows(const Desk& other) const {
  const toolkit::ListRow* row = copy_->users.lvUsers.FindText(other.userName_);
  return row && row->foreColour == other.colour_ &&
         row->subText == core::gStateNames[static_cast<std::size_t>(other.status_)];
}

Time Desk::BusiestSecond() const { return busy_.empty() ? Time(0) : *std::ranges::max_element(busy_); }

void Desk::Later(Time after, std::function<void()> action) {
  segment_.At(segment_.now_ + after, [this, kills = kills_, action = std::move(action)] {
    if (kills == kills_) action();
  });
}

// Packets of one sender stay in order.
void Desk::Send(std::string_view packet) {
  if (open_) lastArrival_ = segment_.Broadcast(std::string(packet), std::max(busyUntil_, lastArrival_), this);
}

void Desk::WakeIn(std::uint32_t milliseconds) {
  const Time late = Between(0ms, std::chrono::milliseconds(kMaxTimerDelay), segment_.delays_);
  Later(std::chrono::milliseconds(milliseconds) + late, [this, wake = ++wakes_] {
    if (!open_ || wake != wakes_) return;
    const Seat seat(*this);
    copy_->messenger.SendOwed();
  });
}

MemorySegment::MemorySegment(const Conditions& conditions) : conditions_(conditions) {
  const relay::RateLimit limit(conditions.relayRate, {});
  relays_.assign(static_cast<std::size_t>(conditions.segments), {.out = limit, .in = limit});
}

void MemorySegment::Add(std::string name, std::int32_t colour, std::int16_t status) {
  const int place = static_cast<int>(desks_.size() % relays_.size());
  desks_.emplace_back(*this, place, std::move(name), colour, status);
}

void MemorySegment::StartSettled() {
  settling_ = true;
  for (Desk& desk : desks_) desk.Join(desks_);
  RunUntil(now_ + 5s);
  settling_ = false;
}

void MemorySegment::At(Time time, std::function<void()> action) { Push({time, eventCount_++, std::move(action)}); }

void MemorySegment::Push(Event event) {
  events_.push_back(std::move(event));
  std::ranges::push_heap(events_, IsLater);
}

MemorySegment::Event MemorySegment::Pop() {
  std::ranges::pop_heap(events_, IsLater);
  Event event = std::move(events_.back());
  events_.pop_back();
  return event;
}

void MemorySegment::RunUntil(Time end) {
  const auto isNext = [this](Time last) { return !events_.empty() && events_.front().time <= last; };
  while (isNext(end)) {
    Event event = Pop();
    now_ = event.time;
    SetClock(now_);
    if (event.action) {
      event.action();
      continue;
    }
    std::vector<Event> arrivals;
    arrivals.push_back(std::move(event));
    while (isNext(std::min(now_ + conditions_.together, end)) && !events_.front().action) arrivals.push_back(Pop());
    Deliver(arrivals);
  }
  now_ = end;
  SetClock(now_);
}

Time MemorySegment::Broadcast(std::string packet, Time after, const Desk* sender) {
  if (settling_) return now_;
  ++BySecond(packets_, now_);
  if (transcript) transcript->push_back(packet);
  const Time arrival = std::max(now_ + Between(kMinDelay, kMaxDelay, ways_), after + 1us);
  const int place = sender ? sender->Place() : 0;
  if (relays_.size() > 1) Cross(packet, arrival, place);
  Push({arrival, eventCount_++, {}, std::move(packet), sender, place});
  return arrival;
}

void MemorySegment::Cross(const std::string& packet, Time arrival, int from) {
  const relay::Clock::time_point now{arrival};
  if (!relays_[static_cast<std::size_t>(from)].out.Take(now)) return;
  for (int place = 0; place < conditions_.segments; ++place)
    if (place != from && relays_[static_cast<std::size_t>(place)].in.Take(now))
      Push({arrival + conditions_.crossing, eventCount_++, {}, packet, nullptr, place});
}

void MemorySegment::Deliver(const std::vector<Event>& arrivals) {
  std::bernoulli_distribution isLost(conditions_.loss);
  for (Desk& desk : desks_) {
    for (const Event& arrival : arrivals) {
      if (desk.Place() != arrival.place) continue;
      now_ = arrival.time;
      if (&desk == arrival.sender || conditions_.loss == 0 || !isLost(losses_)) desk.Hear(arrival.packet);
    }
  }
}

void MemorySegment::SetClock(Time time) {
  Desktop().ticks = static_cast<std::int32_t>(kFirstTick + static_cast<std::uint32_t>(time / 1ms));
}

}  // namespace support
