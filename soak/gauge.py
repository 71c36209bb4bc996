"""Measures the resources of a copy: from the kernel, and for Windows' own objects through gauge.exe."""

import os
import subprocess
from dataclasses import dataclass

from rig import copies

_GAUGE = copies.WINDOWS_BUILD + "/soak/gauge.exe"


@dataclass(frozen=True)
class Figures:
    memory: float  # private megabytes
    handles: int
    gdi: int
    user: int  # USER objects of the whole Windows installation
    threads: int


class Gauge:
    def __init__(self, copy):
        self._copy = copy
        self._counts = copy.prefix.start(_GAUGE, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def figures(self):
        windows_id = self._copy.probe.wait_for("frmMain", visible=False).process
        self._counts.stdin.write(f"{windows_id}\n")
        self._counts.stdin.flush()
        handles, gdi, user = map(int, self._counts.stdout.readline().split())
        linux_id = self._copy.process.pid
        with open(f"/proc/{linux_id}/smaps_rollup", encoding="ascii") as file:
            private = sum(int(line.split()[1]) for line in file if line.startswith("Private_"))
        return Figures(private / 1024, handles, gdi, user, len(os.listdir(f"/proc/{linux_id}/task")))

    def _net(self, name):
        with open(f"/proc/{self._copy.process.pid}/net/{name}", encoding="ascii") as file:
            return [line.split() for line in file]

    def datagrams(self):
        """How many datagrams the host's programs have read so far, and how many it has dropped because the receive
        buffer was full."""
        names, counts = (fields for fields in self._net("snmp") if fields[0] == "Udp:")
        return tuple(int(counts[names.index(name)]) for name in ("InDatagrams", "RcvbufErrors"))

    def waiting(self):
        """The number of bytes in the receive buffer that the copy has not read."""
        return sum(int(fields[4].partition(":")[2], 16) for fields in self._net("udp")[1:])
