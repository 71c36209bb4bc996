"""The private segment: a bridge with its own address, and further hosts attached to it.

The bridge interface receives every broadcast of every host, so the tests' own sockets use it.
"""

import subprocess

ADDRESS = "10.99.0.1"
_BRIDGE = "segment"


def _ip(*arguments, on=()):
    subprocess.run([*on, "ip", *arguments], check=True, stdout=subprocess.DEVNULL)


def _configure(device, address, on=()):
    _ip("addr", "add", address + "/24", "brd", "+", "dev", device, on=on)
    _connect(device, on)


def _connect(device, on):
    _ip("link", "set", device, "up", on=on)
    # Without a default route Windows programs cannot send to 255.255.255.255: error 10051.
    _ip("route", "add", "default", "dev", device, on=on)


def set_up():
    """Creates the segment in the current network namespace."""
    _ip("link", "set", "lo", "up")
    # Without an address of its own a bridge takes the lowest of its ports' addresses; when a host with a lower one joins,
    # entries in the other hosts' ARP tables become wrong.
    _ip("link", "add", _BRIDGE, "address", "02:00:00:00:00:01", "type", "bridge")
    # A bridge has no carrier until one of its ports has.
    _ip("link", "add", "plug", "type", "veth", "peer", "name", "socket")
    _ip("link", "set", "socket", "up")
    _ip("link", "set", "plug", "master", _BRIDGE, "up")
    # The dummy port must not deliver anything a second time.
    _ip("link", "set", "plug", "type", "bridge_slave", "bcast_flood", "off", "mcast_flood", "off", "flood", "off")
    _configure(_BRIDGE, ADDRESS)


class OtherSegment:
    """A further segment, isolated from the first one. This namespace has no address on it."""

    _count = 0

    def __init__(self):
        OtherSegment._count += 1
        self.number = OtherSegment._count
        self.bridge = f"{_BRIDGE}{self.number}"
        _ip("link", "add", self.bridge, "type", "bridge")
        _ip("link", "set", self.bridge, "up")


class Host:
    """A further host with its own network namespace, which an idle process keeps alive."""

    _count = 1

    def __init__(self, other=None):
        """Attached to the segment, or to another one."""
        Host._count += 1
        self._name = f"host{Host._count}"
        self.address = f"10.99.{other.number if other else 0}.{Host._count}"
        keeper = subprocess.Popen(["unshare", "--net", "sh", "-c", "echo; exec sleep infinity"], stdout=subprocess.PIPE)
        keeper.stdout.readline()  # its namespace exists now
        self._keeper = keeper.pid
        _ip("link", "set", "lo", "up", on=self.command())
        self._join("eth0", other.bridge if other else _BRIDGE)
        _configure("eth0", self.address, on=self.command())

    def _join(self, device, bridge):
        end = f"{self._name}-{device}"
        _ip("link", "add", end, "type", "veth", "peer", "name", device, "netns", str(self._keeper))
        _ip("link", "set", end, "master", bridge, "up")

    def join_segment_too(self):
        """Gives a host of another segment a second interface; limited broadcasts are not sent on it."""
        self._join("eth1", _BRIDGE)
        _ip("addr", "add", f"10.99.0.{self.address.split('.')[3]}/24", "dev", "eth1", on=self.command())
        _ip("link", "set", "eth1", "up", on=self.command())

    def unplug(self):
        """Takes the link down, and with it the default route."""
        _ip("link", "set", "eth0", "down", on=self.command())

    def plug(self):
        _connect("eth0", self.command())

    def command(self, *arguments):
        """The command line that runs `arguments` on this host."""
        return ["nsenter", f"--net=/proc/{self._keeper}/ns/net", "--", *arguments]


class BridgeHost(Host):
    """The bridge's own address, for programs that need no separate host."""

    def __init__(self):
        self.address = ADDRESS

    def command(self, *arguments):
        return list(arguments)
