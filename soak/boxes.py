"""Records the message boxes of a copy as they appear, through boxes.exe, even if they are closed at once."""

import queue
import subprocess
import threading

from rig import copies

_BOXES = copies.WINDOWS_BUILD + "/soak/boxes.exe"


class Boxes:
    def __init__(self, copy):
        self._process = copy.prefix.start(_BOXES, stdout=subprocess.PIPE, text=True, encoding="ascii")
        if self._process.stdout.readline().strip() != "ready":
            raise ChildProcessError("boxes.exe cannot watch")
        self.seen = set()  # handles of all boxes so far
        self._new = queue.SimpleQueue()
        threading.Thread(target=self._listen, daemon=True).start()

    def _listen(self):
        for line in self._process.stdout:
            handle, saving, digits = line.rstrip("\r\n").split("\t")
            self._new.put((saving == "1", bytes.fromhex(digits).decode("latin-1")))
            self.seen.add(int(handle))

    def take(self):
        """The boxes since the last call: whether a save dialog was open just before, and "caption: text"."""
        if self._process.poll() is not None:
            raise ChildProcessError("boxes.exe has ended")
        return [self._new.get() for _ in range(self._new.qsize())]
