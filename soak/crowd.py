"""Sixty scripted desks on the private segment, and hostile hosts. One process sends for all of them, and computes the
list that each real copy should have."""

import heapq
import re
import socket
import threading
import time

from rig import network, wire

_SO_RCVBUFFORCE = 33  # Python's socket module does not name it
CHAT, ALERT = "\xde", "\xdf"
_GREETING = "is now on the network"
_PRIVATE_LINE = re.compile(r"\|P/\xde(.*)\|([^|]*)$", re.DOTALL)


class Roster:
    """The users that a listener lists, by the rules of the protocol. Names keep their original case."""

    def __init__(self):
        self._names = {}

    def hear(self, text):
        sender, _, rest = text.partition("|")
        if sender.startswith("_"):
            return
        if self._names.setdefault(sender.lower(), sender) != sender:
            return  # listed in different case: ignored
        if rest[:2].upper() == "L/":
            del self._names[sender.lower()]

    def clear(self):
        self._names.clear()

    def names(self):
        return set(self._names.values())


class Desk:
    """One scripted user. `present`: it answers and sends; a desk that vanished is still listed, but not present."""

    def __init__(self, number, random):
        self._base = f"desk{number:02}"
        self.name = self._base
        self.colour = random.choice((0, 255, 8388608, 32768, 16711680))
        self.state = 0
        self.present = self.vanished = False
        self._renames = 0

    def rename(self):
        self._renames += 1
        self.name = f"{self._base}{'abcdefgh'[self._renames % 8]}"

    def presence(self):
        return [f"{self.name}|M/", f"{self.name}|C/ {self.colour}", f"{self.name}|S/{self.state}"]

    def joining(self):
        return [*self.presence()[1:], f"{self.name}|M/{self.name} {_GREETING}"]


class Crowd:
    def __init__(self, random, size=60):
        self._random = random
        self.desks = [Desk(number, random) for number in range(size)]
        self.roster = Roster()
        self.heard = 0
        # By the address of a copy's host: its expected list, and how often it has joined under its own name.
        self.rosters, self.joined = {}, {}
        self._lock = threading.Lock()
        self._due = []  # heap of (time, number, function); the number keeps entries comparable
        self._number = 0
        self._socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        for option, value in ((socket.SO_REUSEADDR, 1), (socket.SO_BROADCAST, 1), (_SO_RCVBUFFORCE, 32 << 20)):
            self._socket.setsockopt(socket.SOL_SOCKET, option, value)
        self._socket.bind(("0.0.0.0", wire.PORT))
        self._asked = 0  # when the first unanswered newcomer was heard; 0 = none
        for work in (self._listen, self._work):
            threading.Thread(target=work, daemon=True).start()

    def say(self, *texts):
        for text in texts:
            self._socket.sendto(text.encode("latin-1"), ("255.255.255.255", wire.PORT))

    def _listen(self):
        while True:
            data, (source, _) = self._socket.recvfrom(65535)
            text = data.decode("latin-1")
            self.heard += 1
            if source != network.ADDRESS:
                self._consider(text, source)
            for roster in (self.roster, *list(self.rosters.values())):
                roster.hear(text)

    def _consider(self, text, source):
        """Handles a copy's packet: all present desks answer a newcomer, and the recipient answers a private line."""
        sender = text.partition("|")[0]
        private = _PRIVATE_LINE.search(text)
        if text == f"{sender}|L/":
            # A copy that leaves, to exit or to accept new options, joins again with an empty list.
            self.rosters.setdefault(source, Roster()).clear()
        joins = "|C/" in text and (sender.startswith("_") or sender not in self.roster.names())
        if joins or text.startswith(f"{sender}|M/{sender} "):
            self.joined[source] = self.joined.get(source, 0) + (not sender.startswith("_"))
            if not self._asked:
                self._asked = time.monotonic()
                self.after(0.3, self._answer)
        elif private:
            for desk in self.present():
                if desk.name == private[2] and not private[1].startswith("Re: "):
                    self.after(0.5, lambda desk=desk: self.say(f"{desk.name}|P/{CHAT}Re: {private[1][:50]}|{sender}"))

    def _answer(self):
        self._asked = 0
        for desk in self.present():
            self.say(*desk.presence())
            time.sleep(0.001)

    def after(self, seconds, action):
        with self._lock:
            self._number += 1
            heapq.heappush(self._due, (time.monotonic() + seconds, self._number, action))

    def _work(self):
        while True:
            with self._lock:
                due = heapq.heappop(self._due)[2] if self._due and self._due[0][0] <= time.monotonic() else None
            if due:
                due()
            else:
                time.sleep(0.005)

    def idle(self):
        """Whether no action is pending."""
        with self._lock:
            return not self._due

    def present(self):
        return [desk for desk in self.desks if desk.present]

    def play_day(self, seconds, people):
        """Schedules an office day: all desks join, work, and some of them leave. `people` is a function that returns
        the current names of the copies."""
        pick, uniform = self._random.choice, self._random.uniform
        for desk in self.desks:
            if not desk.present:
                self.after(uniform(0, seconds / 8), lambda desk=desk: self._join(desk))
        for _ in range(int(seconds * 8)):
            work = pick([self._state] * 4 + [self._chat] * 6 + [self._alert] * 2 + [self._rename, self._restart])
            self.after(uniform(seconds / 8, seconds), lambda work=work: work(people()))
        for _ in range(4):
            self.after(uniform(0, seconds), lambda: self._hostile(people()))
        for desk in self._random.sample(self.desks, len(self.desks) // 4):
            leave = self._vanish if self._random.random() < 0.3 else self._leave
            self.after(uniform(seconds * 0.8, seconds), lambda desk=desk, leave=leave: leave(desk))

    def _join(self, desk):
        desk.present, desk.vanished = True, False
        self.say(*desk.joining())

    def _leave(self, desk):
        if desk.present:
            desk.present = False
            self.say(f"{desk.name}|L/")

    @staticmethod
    def _vanish(desk):
        desk.vanished, desk.present = desk.vanished or desk.present, False

    def _anyone(self):
        return self._random.choice(self.present() or self.desks)

    def _state(self, _):
        desk = self._anyone()
        desk.state = self._random.randrange(3)
        self.say(f"{desk.name}|S/{desk.state}")

    def _rename(self, _):
        desk = self._anyone()
        self._leave(desk)
        desk.rename()
        self._join(desk)

    def _restart(self, _):
        """A start after a power cut: joins under the hidden name first, then under its own."""
        desk = self._anyone()
        self.say(f"_{desk.name}|C/ 0", f"_{desk.name}|S/0", f"_{desk.name}|L/", *desk.joining())
        desk.present, desk.vanished = True, False

    def _chat(self, people):
        # Only a few desks chat with the copies, because each opens a window there.
        desk = self._random.choice(self.desks[:6])
        if desk.present:
            text = CHAT + "word " * self._random.randrange(1, 40)
            self.say(f"{desk.name}|P/{text}|{self._random.choice(people)}" if self._random.random() < 0.6
                     else f"{desk.name}|M/{text}")

    def _alert(self, people):
        desk, text = self._anyone(), ALERT + "line of an alert\r\n" * self._random.randrange(1, 6)
        self.say(f"{desk.name}|P/{text}|{self._random.choice(people)}" if self._random.random() < 0.8
                 else f"{desk.name}|M/{text}")

    def _hostile(self, people):
        """A burst of packets that no copy sends. Invented names leave again, or the lists would grow without limit."""
        desk, victim = self._anyone(), self._random.choice(people)
        junk = lambda size: "".join(chr(self._random.randrange(1, 256)) for _ in range(size))  # noqa: E731
        invented = [f"evil {self._random.randrange(10**6)}" for _ in range(100)]
        bursts = (
            [f"{desk.name}|{junk(self._random.randrange(80)).replace('L', 'x').replace('l', 'x')}" for _ in range(200)],
            [f"{desk.name.upper()}|M/{CHAT}who am I" for _ in range(50)] + [f"{desk.name.upper()}|L/"],
            [f"{name}|M/" for name in invented] + [f"{name}|L/" for name in invented],
            [f"{name}|P/{CHAT}{junk(100)}|{victim}" for name in invented[:8]] + [f"{name}|L/" for name in invented[:8]],
            [f"{desk.name}|B/notice {number}" for number in range(3)],
            [f"{desk.name}|P/{CHAT}{junk(30000)}|{victim}", f"{desk.name}|P/{ALERT}{junk(20000)}|{victim}"],
            [f"{desk.name}|M/{ALERT}{'!' * number}" for number in range(1, 40)],
            [f"{desk.name}|S/{junk(5)}" for _ in range(30)] + [f"{desk.name}|C/1e{number}" for number in range(30)],
            [f"_{junk(12)}|C/" for _ in range(30)],
        )
        self.say(*self._random.choice(bursts))
