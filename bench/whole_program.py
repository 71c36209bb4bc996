"""Compares the whole program under Wine with a bare receiver of the same packets, on a private network. Prints a table
of limits and measurements. Exit status 1 when a limit is exceeded."""

import os
import pathlib
import signal
import statistics
import subprocess
import sys
import threading
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT))

from rig import copies, ids, network, private_machine, probe, wine, wire  # noqa: E402

_BARE = copies.WINDOWS_BUILD + "/bench/bare_receiver.exe"
_MEGABYTE = 1 << 20
_BARE_COUNT = 0x8001  # window message: the bare receiver returns the number of senders heard
_WM_GETTEXTLENGTH = 0x0E


def process_ids(name):
    """The ids of this private machine's processes that run a program."""
    found = []
    for entry in os.listdir("/proc"):
        try:
            with open(f"/proc/{entry}/cmdline", "rb") as file:
                command = file.read().split(b"\0")[0].decode("latin-1")
        except (OSError, ValueError):
            continue
        if entry.isdigit() and command.lower().endswith(name.lower()):
            found.append(int(entry))
    return found


def _cpu(process):
    """The processor time of a process so far, seconds."""
    return time.clock_gettime(~process << 3 | 2)


def _private_bytes(process):
    with open(f"/proc/{process}/smaps_rollup", encoding="ascii") as file:
        return 1024 * sum(int(line.split()[1]) for line in file if line.startswith("Private_"))


class Subject:
    """A program under test, on its own host and in its own Windows installation."""

    def __init__(self, rig, program, first_packet, folder=None):
        """`program` is a path, or a file name in `folder`, which is then installed."""
        self._rig = rig
        self._first_packet = first_packet
        self._exe = os.path.basename(program)
        self.prefix = wine.Prefix(rig.system, network.Host(), rig.screen, user="anna")
        self._path = program
        if folder:
            self.prefix.install(folder)
            self._path = f"C:\\{os.path.basename(folder)}\\{program}"
        # A running probe keeps the installation's services alive between starts.
        self.probe = probe.Probe(self.prefix, copies.PROBE)
        self.probe.windows()
        self.process = None

    def start(self):
        """Starts the program; returns the seconds until its first packet."""
        start = self._rig.wire.mark()
        known = set(process_ids(self._exe))
        began = time.time()
        self.prefix.start(self._path, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        arrived = self._rig.wire.wait_for(self._first_packet, start).time
        self.process = next(iter(set(process_ids(self._exe)) - known))
        return arrived - began

    def end(self):
        time.sleep(0.5)  # Wine's server may crash when a program is killed while it starts
        os.kill(self.process, signal.SIGKILL)
        time.sleep(0.5)

    def cpu(self):
        return _cpu(self.process)


def _start_times(subjects, rounds=9):
    """Median seconds until each subject's first packet; the subjects are started alternately."""
    times = [[] for _ in subjects]
    for _ in range(rounds):
        for subject, own in zip(subjects, times):
            own.append(subject.start())
            subject.end()
    return [statistics.median(own) for own in times]


def _send_evenly(rig, texts, per_second=1000):
    """Sends packets at a constant rate."""
    begin = time.monotonic()
    for number, text in enumerate(texts):
        ahead = begin + number / per_second - time.monotonic()
        if ahead > 0:
            time.sleep(ahead)
        rig.wire.send(text)


def settle(rig, silence=1.0):
    """Waits until no more packets arrive, so that all answers have been sent."""
    heard = -1
    while heard != rig.wire.mark():
        heard = rig.wire.mark()
        time.sleep(silence)


def users_online(window_probe):
    """The user count that a copy's main window displays, even while hidden."""
    texts = [child.text for child in window_probe.children(window_probe.wait_for("frmMain", visible=False), "Static")]
    return next(int(text.split()[0]) for text in texts if "online" in text)


def _costs(rig, subjects, texts, batches=6):
    """Processor microseconds per packet of each subject, all receiving the same packets at the same time. The median of
    several batches, because other programs on the machine disturb some of them."""
    size = len(texts) // batches
    costs = [[] for _ in subjects]
    for batch in range(batches):
        settle(rig, 0.5)
        before = [subject.cpu() for subject in subjects]
        _send_evenly(rig, texts[batch * size:(batch + 1) * size])
        settle(rig, 0.5)
        for cost, subject, start in zip(costs, subjects, before):
            cost.append((subject.cpu() - start) / size * 1e6)
    return [statistics.median(cost) for cost in costs]


class Table:
    def __init__(self):
        self.passed = True

    def row(self, what, limit, measured, good):
        self.passed = self.passed and good
        print(f"{what:<58} {limit:>16} {measured:>30}  {'' if good else 'TOO MUCH'}", flush=True)

    def compare(self, what, unit, mine, bare, factor=1.5, digits=0):
        self.row(what, f"<= {factor} x bare", f"{mine:.{digits}f} {unit} (bare {bare:.{digits}f})", mine <= factor * bare)


def _measure(table):
    rig = copies.Rig(tray=True)
    quillon = Subject(rig, "Quillon.exe", "_anna|C/ 0", copies.PROGRAM_FOLDER)
    bare = Subject(rig, _BARE, "bare|M/")
    size = os.path.getsize(f"{copies.PROGRAM_FOLDER}/Quillon.exe")
    table.row("program file", "< 1.5 MB", f"{size / _MEGABYTE:.2f} MB", size < 1.5 * _MEGABYTE)
    table.compare("start to the first packet, median", "ms", *(1e3 * took for took in _start_times((quillon, bare))))
    _measure_running(table, rig, quillon, bare)


def _measure_running(table, rig, quillon, bare):
    bare.start()
    quillon.start()
    rig.wire.wait_for("anna|M/anna is now on the network")
    time.sleep(1)
    mine, least = _private_bytes(quillon.process), _private_bytes(bare.process)
    table.row("private memory, hidden", "<= bare + 4 MB", f"{mine / _MEGABYTE:.1f} MB (bare {least / _MEGABYTE:.1f} MB)",
              mine <= least + 4 * _MEGABYTE)
    _measure_idle(table, quillon, "hidden")
    main = quillon.probe.show(quillon.probe.wait_for("frmMain", visible=False))
    _measure_idle(table, quillon, "shown")
    quillon.probe.post(main, probe.WM_COMMAND, ids.MAIN.mnuHide)
    _measure_packets(table, rig, quillon, bare)
    bare.end()
    _measure_burst(table, rig, quillon)
    _measure_chat_flood(table, rig, quillon.probe)
    _measure_newcomers(table, rig, quillon, bare)


def _measure_idle(table, quillon, state):
    time.sleep(1)
    before = quillon.cpu()
    time.sleep(60)
    idle = quillon.cpu() - before
    table.row(f"processor time of 60 s idle and {state}", "<= 0.1 s", f"{idle:.2f} s", idle <= 0.1)


def _measure_packets(table, rig, quillon, bare):
    known = 0
    for users in (1000, 5000):
        _send_evenly(rig, [f"user{number}|S/0" for number in range(known, users)], 1000)
        known = users
        packets = [f"user{number % users}|S/{number % 3}" for number in range(3000)]
        newcomers = [f"new{users}-{number}|S/0" for number in range(3000)]
        leaving = [f"new{users}-{number}|L/" for number in range(3000)]
        for name, texts in (("known users", packets), ("newcomers", newcomers)):
            mine, least = _costs(rig, (quillon, bare), texts)
            table.compare(f"a packet, {name}, {users} users", "us", mine, least)
        _send_evenly(rig, leaving, 1000)


def _measure_burst(table, rig, quillon):
    count = 5000
    settle(rig)
    before = users_online(quillon.probe)
    for number in range(count):
        rig.wire.send(f"burst{number}|S/0")
    settle(rig)
    listed = users_online(quillon.probe) - before
    table.row(f"burst of {count} packets of {count} senders, listed", f"{count}", f"{listed}", listed == count)


def _quillon_users(quillon):
    return users_online(quillon.probe)


def _bare_users(bare):
    return bare.probe.send(bare.probe.wait_for("BareReceiver", visible=False), _BARE_COUNT)


def _kept(rig, subject, users, count, rounds=3):
    """The median number of users that a subject lists after a burst of `count` newcomers, sent at full speed."""
    kept = []
    for number in range(rounds):
        settle(rig)
        before = users(subject)
        for packet in [f"{subject.process}-{number}-{newcomer}|S/0" for newcomer in range(count)]:
            rig.wire.send(packet)
        settle(rig)
        kept.append(users(subject) - before)
    return statistics.median(kept)


def _measure_newcomers(table, rig, quillon, bare):
    """Each subject alone on the segment, with the largest receive buffer that the system allows."""
    count = 20000
    mine = _kept(rig, quillon, _quillon_users, count)
    quillon.end()
    bare.start()
    least = _kept(rig, bare, _bare_users, count)
    table.row(f"burst of {count} newcomers, listed", ">= 1.5 x bare", f"{mine} (bare {least})", mine >= 1.5 * least)


def _measure_chat_flood(table, rig, window_probe):
    """Types into a chat window while one sender floods it; measures the longest delay until a typed letter appears."""
    count = 2000

    def say(number):
        rig.wire.send(f"flood|P/\xdeline {number}|anna")

    say(0)
    chat = window_probe.wait_for("frmChat")
    typed = window_probe.children(chat, "Edit")[0]
    time.sleep(1)

    def flood_chat():
        for number in range(count):
            say(number)
        rig.wire.send("flood|P/\xdfEnd of the flood|anna")

    flood = threading.Thread(target=flood_chat)
    flood.start()
    worst, letters = 0, 0
    while not window_probe.windows("frmPop"):
        begin, letters = time.monotonic(), letters + 1
        window_probe.type(typed, "x")
        while window_probe.send(typed, _WM_GETTEXTLENGTH) < letters:
            pass
        worst = max(worst, time.monotonic() - begin)
    window_probe.close(window_probe.windows("frmPop")[0])
    flood.join()
    table.row(f"chat flood of {count} lines, slowest of {letters} letters", "<= 100 ms", f"{1e3 * worst:.0f} ms",
              worst <= 0.1)


def main():
    table = Table()
    print(f"{'':<58} {'limit':>16} {'measured':>30}")
    _measure(table)
    return 0 if table.passed else 1


if __name__ == "__main__":
    sys.exit(private_machine.run(main))
