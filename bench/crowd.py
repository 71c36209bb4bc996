"""Validates the segment simulation with real copies: copies of the program under Wine and native ones built from its
net code, ninety desks in all, on a private network. Prints a table of limits and measurements. Exit status 1 when a
limit is exceeded.

usage: crowd.py [WINE [NATIVE]]    numbers of copies (10, 80)
"""

import collections
import os
import pathlib
import random
import re
import signal
import subprocess
import sys
import tempfile
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT))

from rig import copies, private_machine  # noqa: E402
from whole_program import Table, process_ids, settle, users_online  # noqa: E402

_PARTNER = f"{_ROOT}/build/native/demo/partner"
_PROGRAM = "Quillon.exe"
_LISTENING = 10  # seconds for which a starting copy listens
_START_SPAN = 60  # seconds within which all desks start


class NativeDesk:
    """A copy without windows; prints the number of users that it lists."""

    def __init__(self, rig, number, folder):
        self._rig, self._name = rig, f"native{number}"
        self._output = pathlib.Path(folder, self._name)
        self._process = None

    def start(self):
        with open(self._output, "w", encoding="ascii") as output:
            command = self._rig.segment.command(_PARTNER, "--name", self._name, "--listen")
            self._process = subprocess.Popen(command, stdout=output)

    def users(self):
        counts = re.findall(r"roster  (\d+) user", self._output.read_text("ascii"))
        return int(counts[-1]) if counts else 0


class WineDesk:
    """A real copy, in its own Windows installation, which keeps running between starts."""

    def __init__(self, rig, number):
        self._copy = rig.copy(f"wine{number}")
        self._copy.write_settings()
        self._copy.probe.windows()
        self._others = set()

    def start(self):
        self._others = set(process_ids(_PROGRAM))
        self._copy.start()

    def close(self):
        self._copy.close()

    def kill(self):
        """Kills the program, so that it does not announce its end. No other copy may have started since it did."""
        process, = set(process_ids(_PROGRAM)) - self._others
        os.kill(process, signal.SIGKILL)
        time.sleep(0.5)

    def users(self):
        return users_online(self._copy.probe)


class Crowd:
    def __init__(self, table, wine_desks, native_desks, folder):
        self._table = table
        self._rig = copies.Rig(tray=False)
        self._wine = [WineDesk(self._rig, number) for number in range(wine_desks)]
        self._desks = self._wine + [NativeDesk(self._rig, number, folder) for number in range(native_desks)]

    def measure(self):
        size = len(self._desks)
        self._watch(f"{size} desks start within a minute", self._start_all, 700 * size)
        self._wine[-1].close()
        self._watch(f"one desk starts, {size - 1} run", self._wine[-1].start, 35 * size)
        self._wine[-1].kill()
        self._watch("it is killed and starts again", self._wine[-1].start, 35 * size)

    def _start_all(self):
        begin = time.monotonic()
        for desk, due in zip(self._desks, self._due_times()):
            time.sleep(max(0, begin + due - time.monotonic()))
            desk.start()

    def _due_times(self):
        random.shuffle(self._desks)
        return sorted(random.uniform(0, _START_SPAN) for _ in self._desks)

    def _watch(self, what, action, max_packets):
        """Measures the packets that an action causes, and checks everybody's list afterwards."""
        settle(self._rig)
        start = self._rig.wire.mark()
        action()
        time.sleep(_LISTENING)
        settle(self._rig, 5)
        packets = self._rig.wire.packets(start=start)
        seconds = collections.Counter(int(packet.time - packets[0].time) for packet in packets)
        busiest, known = max(seconds.values()), [desk.users() for desk in self._desks]
        size = len(self._desks)
        self._table.row(f"{what}: packets", f"<= {max_packets}", f"{len(packets)}", len(packets) <= max_packets)
        self._table.row(f"{what}: in the busiest second", "<= 5000", f"{busiest}", busiest <= 5000)
        self._table.row(f"{what}: fewest and most users listed", f"{size}", f"{min(known)} and {max(known)}",
                        set(known) == {size})


def main(wine_desks=10, native_desks=80):
    random.seed(1)
    table = Table()
    with tempfile.TemporaryDirectory() as folder:
        Crowd(table, int(wine_desks), int(native_desks), folder).measure()
    return 0 if table.passed else 1


if __name__ == "__main__":
    sys.exit(private_machine.run(lambda: main(*sys.argv[1:])))
