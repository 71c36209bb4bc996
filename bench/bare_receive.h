// The system's own cost of receiving one datagram: the baseline for the benchmarks.
#pragma once

#include <cstddef>

namespace bench {

// Receives small datagrams that are already queued in a UDP socket on loopback, at most kMaxWaiting; returns the
// seconds that it took.
inline constexpr std::size_t kMaxWaiting = 100;
double ReceiveDatagrams(std::size_t count);

// Seconds per datagram, measured once per run.
double BareReceive();

}  // namespace bench
