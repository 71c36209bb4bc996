"""Confirms the simulated segments with real copies: copies of the program under Wine beside native ones made of its net
code, a hundred desks in all, on a private network. Prints a table: what, limit, measured. Exit status 1 when a limit
is passed.

usage: crowd.py [WINE [NATIVE]]    numbers of copies (20, 80)
"""

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
_WITHIN = 60  # seconds in which all desks start


class NativeDesk:
    """A copy without windows; its output tells how many it lists."""

    def __init__(self, rig, number, folder):
        self._rig, self._name = rig, f"native{number}"
        self._output = pathlib.Path(folder, self._name)
        self._process = None

    def start(self):
        with open(self._output, "w", encoding="ascii") as output:
            command = self._rig.segment.command(_PARTNER, "--name", self._name, "--listen")
            self._process = subprocess.Popen(command, stdout=output)

    def kill(self):
        self._process.kill()
        self._process.wait()

    def users(self):
        counts = re.findall(r"roster  (\d+) user", self._output.read_text("ascii"))
        return int(counts[-1]) if counts else 0


class WineDesk:
    """A real copy. Its Windows installation keeps running when it is killed."""

    def __init__(self, rig, number):
        self._copy = rig.copy(f"wine{number}")
        self._copy.write_settings()
        self._copy.probe.windows()

    def start(self):
        self._copy.start()

    def kill(self):
        self._copy.process.kill()
        self._copy.process.wait()

    def users(self):
        return users_online(self._copy)
