"""The segment's packets, with the time of their arrival; and packets of the tests' own."""

import select
import socket
import struct
import subprocess
import threading
from dataclasses import dataclass

from .probe import PATIENCE, wait

PORT = 1414

_SO_TIMESTAMPNS = 35  # Python's socket module does not name it


@dataclass(frozen=True)
class Packet:
    time: float  # seconds since the epoch, as the kernel noted them
    source: str  # address of the sender
    text: str  # one character a byte


class Wire:
    """Hears everything that is broadcast on the segment, from its start to its close, and can speak itself."""

    def __init__(self, port=PORT):
        self._socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        for option in (socket.SO_REUSEADDR, socket.SO_BROADCAST):
            self._socket.setsockopt(socket.SOL_SOCKET, option, 1)
        self._socket.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 8 << 20)
        self._socket.setsockopt(socket.SOL_SOCKET, _SO_TIMESTAMPNS, 1)
        self._socket.bind(("0.0.0.0", port))
        self._port = port
        self._packets = []
        self._lock = threading.Lock()
        threading.Thread(target=self._listen, daemon=True).start()

    def _listen(self):
        while True:
            select.select([self._socket], [], [])
            self._take()

    def _take(self):
        """Takes what has arrived; whoever asks for packets does it too, as the thread may be late on a busy machine."""
        with self._lock:
            while True:
                try:
                    data, notes, _, (source, _) = self._socket.recvmsg(65535, 64, socket.MSG_DONTWAIT)
                except BlockingIOError:
                    return
                # The kernel's time of arrival.
                seconds, nanoseconds = struct.unpack("qq", notes[0][2])
                self._packets.append(Packet(seconds + nanoseconds / 1e9, source, data.decode("latin-1")))

    def send(self, text):
        """Broadcasts a packet, given as its text (or its bytes)."""
        data = text if isinstance(text, bytes) else text.encode("latin-1")
        self._socket.sendto(data, ("255.255.255.255", self._port))

    def packets(self, sender=None, start=0):
        """What was heard, all or of one sender (the name in front of the bar), from packet number `start` on."""
        self._take()
        return [packet for packet in self._packets[start:] if sender is None or packet.text.split("|")[0] == sender]

    def texts(self, sender=None, start=0):
        return [packet.text for packet in self.packets(sender, start)]

    def mark(self):
        """The number of packets so far, to be given as `start` later."""
        self._take()
        return len(self._packets)

    def wait_for(self, text, start=0):
        """Waits for a packet with exactly this text and returns it."""
        return wait(lambda: next((packet for packet in self._packets[start:] if packet.text == text), None), PATIENCE,
                    lambda: f"{text!r} not heard, only {self.texts(start=start)}")


def hold_port(host, port=PORT):
    """Takes the port on a host for itself alone, as a program that shares it with nobody does."""
    program = ("import socket, time; s = socket.socket(socket.AF_INET, socket.SOCK_DGRAM); "
               f"s.bind(('0.0.0.0', {port})); print('held', flush=True); time.sleep(3600)")
    holder = subprocess.Popen(host.command("/usr/bin/python3", "-c", program), stdout=subprocess.PIPE)
    holder.stdout.readline()
    return holder
