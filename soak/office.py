"""Plays office days, one a minute, on a private segment: three real copies under Wine, two with scripted users and one
with a monkey test, among sixty scripted desks. Prints a line a day: the packets on the segment, and for each copy the
packets that it read and the resources that it holds when idle: private memory, handles, GDI objects, USER objects (of
the whole Windows installation), threads. Exit status 1 when a copy fails, reports an error, grows, or has a wrong list,
or when users tried one kind of action in vain for days.

usage: soak [MINUTES] [--seed N]    1 minute; without a seed a random one, which is printed
"""

import argparse
import collections
import concurrent.futures
import itertools
import pathlib
import random
import statistics
import sys
import time
from typing import NamedTuple

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT))

from rig import copies, network, private_machine, probe, screen, wine  # noqa: E402
from crowd import Crowd  # noqa: E402
from gauge import Figures, Gauge  # noqa: E402
from user import Failure, Monkey, Worker  # noqa: E402

_DAY = 40  # seconds; becoming idle and measuring take the rest of the minute
_IDLE_TIMEOUT = 600  # seconds; the machine may be busy with other things
_ENOUGH = 3  # days in which each kind of action must succeed once


class Limits(NamedTuple):
    """Limits of growth after the warm-up, when cached objects, such as fonts and pictures, exist. A heap keeps its peak
    size, so one unusual day, with more open windows than ever, raises the memory for good. In Wine, one chat line of
    30,000 random characters takes 14 MB. A leak raises the memory on most days."""

    warm_up: int  # days
    margin: Figures


_SHORT = Limits(3, Figures(memory=32, handles=40, gdi=60, user=120, threads=4))
_LONG = Limits(7, Figures(memory=32, handles=10, gdi=10, user=10, threads=1))
_LONG_RUN = 10  # days; longer ones have the narrow limits
_TREND_DAYS, _MAX_TREND = 10, 0.1  # the median growth of memory, in MB a day


class Watched:
    """A copy with its user, and its resources over time."""

    def __init__(self, user, limits):
        self.user = user
        self._limits = limits
        self.gauge = Gauge(user.copy)
        self.figures = None
        self._base, self._memory, self._starts = None, [], 0  # the memory of each day since the start
        self._datagrams = self.gauge.datagrams()
        self.read = self.lost = 0  # datagrams since the last count
        self.joined = 0  # how often it had joined when its list was compared

    def measure(self):
        """Measures the idle copy; returns descriptions of excessive growth."""
        self.figures = self.gauge.figures()
        if self.user.starts != self._starts:
            self._starts, self._memory = self.user.starts, []
        self._memory.append(self.figures.memory)
        if len(self._memory) <= self._limits.warm_up:
            self._base = self.figures
            return []
        grown = [f"{self.user.name} has grown: {name} from {getattr(self._base, name):.0f} to {value:.0f}"
                 for name, value in vars(self.figures).items()
                 if value > getattr(self._base, name) + getattr(self._limits.margin, name)]
        if (self.trend() or 0) > _MAX_TREND:
            grown.append(f"{self.user.name} grows by {self.trend():.2f} MB a day")
        return grown

    def trend(self):
        """The median growth of memory in MB a day; None before enough days."""
        days = self._memory[self._limits.warm_up:]
        return statistics.median(b - a for a, b in itertools.pairwise(days)) if len(days) > _TREND_DAYS else None

    def count_datagrams(self):
        before, self._datagrams = self._datagrams, self.gauge.datagrams()
        self.read, self.lost = (now - then for now, then in zip(self._datagrams, before))

    def column(self):
        f = self.figures
        return f"{self.user.name} read {self.read} {f.memory:.1f} MB {f.handles} h {f.gdi} g {f.user} u {f.threads} t"


class Office:
    def __init__(self, seed, limits):
        self._random = random.Random(seed)
        network.set_up()
        screen.set_up()
        system = wine.WineSystem()
        self._crowd = Crowd(self._random)
        self.compared = 0  # lists
        segment_copies = [copies.Copy(system, name, network.Host(), screen.Screen("1024x768", tray=True))
                          for name in ("anna", "bob", "carla")]
        for copy in segment_copies:
            copy.write_settings()
            copy.start()
        for copy in segment_copies:
            probe.wait(lambda copy=copy: self._crowd.joined.get(copy.host.address), 90,
                       lambda copy=copy: f"does not join: {copy.state()}")
        kinds = (Worker, Worker, Monkey)
        self._watched = [Watched(kind(copy, copy.user, random.Random(f"{seed} {copy.user}"), self._crowd), limits)
                         for kind, copy in zip(kinds, segment_copies)]

    def day(self, number):
        """Plays one day and waits until the copies are idle; returns descriptions of failures."""
        heard = self._crowd.heard
        users = [watched.user for watched in self._watched]
        self._crowd.play_day(_DAY, lambda: [user.name for user in users])
        with concurrent.futures.ThreadPoolExecutor() as pool:
            for done in [pool.submit(user.work, _DAY) for user in users]:
                done.result()
        self._wait_until_idle()
        for watched in self._watched:
            watched.count_datagrams()
        failures = self._compare()
        for watched in self._watched:
            failures += watched.measure()
        self._print(number, self._crowd.heard - heard)
        return failures

    def _wait_until_idle(self):
        """Waits until no packet is unread, no action is pending and no window is left to close."""
        deadline, heard, active = time.monotonic() + _IDLE_TIMEOUT, -1, True
        while active:
            if time.monotonic() > deadline:
                raise Failure(f"still active after {_IDLE_TIMEOUT} s; unread bytes: {self._backlog()}")
            busy = heard != self._crowd.heard or not self._crowd.idle() or self._backlog() > 0
            heard = self._crowd.heard
            # While packets are unread, they may open new windows, so only message boxes are closed.
            closed = [watched.user.tidy(boxes_only=busy) for watched in self._watched]
            active = busy or any(closed)
            time.sleep(0.5)

    def _backlog(self):
        return sum(watched.gauge.waiting() for watched in self._watched)

    def _compare(self):
        """Compares the copies' lists with the expected ones, unless datagrams were lost. A copy that joined today may
        lack vanished desks: it did not hear their last packets while its socket was closed, and no others follow."""
        failures, vanished = [], {desk.name for desk in self._crowd.desks if desk.vanished}
        for watched in self._watched:
            copy = watched.user.copy
            listed = {name for name in copy.names() if not name.startswith("(")}
            heard, joined = (self._crowd.rosters[copy.host.address].names(), self._crowd.joined[copy.host.address])
            missing = heard - listed - (vanished if joined != watched.joined else set())
            watched.joined = joined
            self.compared += watched.lost == 0
            if watched.lost == 0 and (missing or listed - heard):
                failures.append(f"{watched.user.name} does not list {missing}, but lists {listed - heard}")
        return failures

    def _print(self, number, packets):
        latencies = sorted(l for w in self._watched for l in w.user.latencies)
        key = f"{1e3 * latencies[len(latencies) // 2]:.0f}/{1e3 * latencies[-1]:.0f}" if latencies else "-"
        errors = sum(len(w.user.errors) for w in self._watched)
        lost = sum(w.lost for w in self._watched)
        print(f"{number:3} segment {packets} lost {lost} listed {len(self._crowd.roster.names())} key {key} ms "
              f"errors {errors} | " + " | ".join(watched.column() for watched in self._watched), flush=True)
        for watched in self._watched:
            watched.user.errors.clear()
            watched.user.latencies.clear()

    def summary(self, days):
        """Prints how often each kind of action succeeded; returns those that never did, after enough days."""
        tried, done = (sum((getattr(w.user, name) for w in self._watched), collections.Counter())
                       for name in ("tried", "done"))
        trends = ((w.user.name, w.trend()) for w in self._watched)
        print("median growth, MB a day: " + ", ".join(f"{n} {'-' if t is None else f'{t:.2f}'}" for n, t in trends))
        print(f"message boxes closed unread: {sum(w.user.unread for w in self._watched)}")
        print("done/tried: " + ", ".join(f"{kind} {done[kind]}/{tried[kind]}" for kind in sorted(tried)), flush=True)
        return [f"never succeeded: {kind}" for kind in tried if not done[kind]] if days >= _ENOUGH else []


def _soak(minutes, seed):
    limits = _LONG if minutes > _LONG_RUN else _SHORT
    print(f"seed {seed}; margins after {limits.warm_up} days: {limits.margin}", flush=True)
    end, number, failures = time.monotonic() + 60 * minutes, 0, []
    try:
        office = Office(seed, limits)
        while not failures and (number == 0 or time.monotonic() + _DAY / 2 < end):
            number += 1
            failures = office.day(number)
        if not office.compared:
            failures.append("datagrams were lost every day: no list was compared")
        failures += office.summary(number)
    except (Failure, TimeoutError) as error:
        failures = [f"day {number}: {error}"]
    print("\n".join(failures) if failures else f"{number} days without a failure", flush=True)
    print(f"{0 if failures else 1} passed, {1 if failures else 0} failed")
    return 1 if failures else 0


def main():
    parser = argparse.ArgumentParser(prog="soak", description="Plays office days on a private segment, one a minute.")
    parser.add_argument("minutes", type=int, nargs="?", default=1)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(10**6))
    options = parser.parse_args()
    return private_machine.run(lambda: _soak(options.minutes, options.seed))


if __name__ == "__main__":
    sys.exit(main())
