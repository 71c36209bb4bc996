"""Captures the segment's packets with their time of arrival, and sends packets for tests."""

import select
import socket
import struct
import subprocess
import threading
from typing import NamedTuple

from .probe import wait

PORT = 1414

_SO_RCVBUFFORCE, _SO_TIMESTAMPNS = 33, 35  # Python's socket module does not name them


class Packet(NamedTuple):
    time: float  # kernel timestamp, seconds since the epoch
    source: str  # address of the sender
    text: str  # one character a byte


class Wire:
    """Captures everything that is broadcast on the segment from its creation on, and can broadcast itself.

    describe() returns what else is to be reported when a packet is missing, such as the state of its sender."""

    def __init__(self, port=PORT, describe=lambda: ""):
        self._socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        for option, value in ((socket.SO_REUSEADDR, 1), (socket.SO_BROADCAST, 1), (_SO_RCVBUFFORCE, 8 << 20),
                              (_SO_TIMESTAMPNS, 1)):
            self._socket.setsockopt(socket.SOL_SOCKET, option, value)
        self._socket.bind(("0.0.0.0", port))
        self._port = port
        self._packets = []
        self._describe = describe
        self._lock = threading.Lock()
        threading.Thread(target=self._capture, daemon=True).start()

    def _capture(self):
        while True:
            select.select([self._socket], [], [])
            self._read_pending()

    def _read_pending(self):
        """Reads all pending packets. Also called by every query, because the thread may lag on a busy machine."""
        with self._lock:
            while True:
                try:
                    data, ancillary, _, (source, _) = self._socket.recvmsg(65535, 64, socket.MSG_DONTWAIT)
                except BlockingIOError:
                    return
                seconds, nanoseconds = struct.unpack("qq", ancillary[0][2])
                self._packets.append(Packet(seconds + nanoseconds / 1e9, source, data.decode("latin-1")))

    def send(self, text):
        """Broadcasts a packet, given as its text (or its bytes)."""
        data = text if isinstance(text, bytes) else text.encode("latin-1")
        self._socket.sendto(data, ("255.255.255.255", self._port))

    def packets(self, sender=None, start=0):
        """The packets from number `start` on, all or those of one sender (the name before the bar)."""
        self._read_pending()
        return [packet for packet in self._packets[start:] if sender is None or packet.text.split("|")[0] == sender]

    def texts(self, sender=None, start=0):
        return [packet.text for packet in self.packets(sender, start)]

    def mark(self):
        """The number of packets so far, for use as `start` later."""
        self._read_pending()
        return len(self._packets)

    def wait_for(self, text, start=0):
        """Waits for a packet with exactly this text and returns it."""
        return wait(lambda: next((packet for packet in self.packets(start=start) if packet.text == text), None),
                    complaint=lambda: f"{text!r} not heard, only {self.texts(start=start)}{self._describe()}")


def hold_port(host, port=PORT):
    """Starts a process that binds the port on a host exclusively."""
    program = ("import socket, time; s = socket.socket(socket.AF_INET, socket.SOCK_DGRAM); "
               f"s.bind(('0.0.0.0', {port})); print('held', flush=True); time.sleep(3600)")
    holder = subprocess.Popen(host.command("/usr/bin/python3", "-c", program), stdout=subprocess.PIPE)
    holder.stdout.readline()
    return holder
