// Shifts the time of day of a 32-bit Linux process, here Wine with a copy: built and preloaded by life.py. The machine
// has one clock for all, and setting that would disturb everything else.
//
// SHIFT_FILE holds the shift in seconds (64 bits). It is read at each call, so that the clock of a running copy can be
// set.

// Declared here because a 64-bit machine usually has no headers of the 32-bit C library.
extern "C" {
int open(const char* path, int flags, ...);
int read(int file, void* bytes, unsigned size);
int close(int file);
int syscall(int number, ...);
}

namespace {

constexpr int kClockGettime64 = 403;
constexpr int kTimeOfDay = 0;        // CLOCK_REALTIME
constexpr int kCoarseTimeOfDay = 5;  // CLOCK_REALTIME_COARSE

struct Timespec {
  long long seconds;
  int nanoseconds;
  int padding;
};

struct Timeval {
  long long seconds, microseconds;
};

long long Shift() {
  long long seconds = 0;
  const int file = open(SHIFT_FILE, 0);
  if (read(file, &seconds, sizeof seconds) != sizeof seconds) seconds = 0;
  close(file);
  return seconds;
}

}  // namespace

// The names by which glibc exports clock_gettime and gettimeofday with 64-bit times.
extern "C" int __clock_gettime64(int clock, Timespec* time) {
  const int result = syscall(kClockGettime64, clock, time);
  if (result == 0 && (clock == kTimeOfDay || clock == kCoarseTimeOfDay)) time->seconds += Shift();
  return result;
}

extern "C" int __gettimeofday64(Timeval* time, void*) {
  Timespec now;
  const int result = __clock_gettime64(kTimeOfDay, &now);
  *time = {now.seconds, now.nanoseconds / 1000};
  return result;
}
