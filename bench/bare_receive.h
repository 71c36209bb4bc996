// What the system itself takes to hand over one datagram: the measure for what the program adds to it.
#pragma once

#include <cstddef>

namespace bench {

// Receives so many small datagrams from a UDP socket on loopback, where they wait already; returns the seconds that the
// receiving took. At most kMaxWaiting at a time.
inline constexpr std::size_t kMaxWaiting = 100;
double ReceiveDatagrams(std::size_t count);

// Seconds per datagram, measured once in each run.
double BareReceive();

}  // namespace bench
