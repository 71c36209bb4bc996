"""Desks for the stories: real copies of three users on the private segment, and what their users do."""

import subprocess
import time

from rig import copies, ids, network, probe, screen
from user import Failure

GREETING = "is now on the network"


def run(copy, *command):
    """Runs a Windows program in the installation of a copy; fails if the program does."""
    check(copy.prefix.start(*map(str, command), stdout=subprocess.DEVNULL).wait() == 0, f"{command} failed")


def check(condition, complaint):
    if not condition:
        raise Failure(complaint)


class Desks:
    """Anna and Bob, each on a separate host, and Berta, who is logged on to Anna's machine too. Their copies run after
    start()."""

    def __init__(self):
        self.rig = copies.Rig()
        self.wire = self.rig.wire
        self.all, self._joined = (), False

    def start(self):
        """Starts the copies and waits until all have joined; does nothing if they have been started."""
        if self.all:
            check(self._joined, "the copies did not start")
            return
        host = network.Host()
        self.anna = self.rig.copy("anna", host)
        self.berta = self.rig.copy("berta", host, on_screen=screen.Screen())
        self.bob = self.rig.copy("bob", network.Host(), on_screen=screen.Screen())
        self.all = (self.anna, self.berta, self.bob)
        for copy in self.all:
            copy.write_settings()
            copy.start()
        for copy in self.all:
            self.wire.wait_for(f"{copy.user}|M/{copy.user} {GREETING}")
        self._joined = True

    def newcomer(self, user, host=None, **options):
        """Starts one more copy, on a host and a screen of its own; returns it once it has greeted."""
        copy, start = self.rig.copy(user, host or network.Host(), on_screen=screen.Screen(), **options), self.wire.mark()
        copy.write_settings()
        copy.start()
        self.wire.wait_for(f"{user}|M/{user} {GREETING}", start)
        return copy

    def close_windows(self):
        for copy in self.all:
            for name in ("frmPop", "frmChat", "frmCom"):
                for window in copy.probe.windows(name):
                    copy.probe.close(window)

    def answers(self, copy, stranger):
        """Checks that a newcomer is answered and listed. Repeats its packet, which may be lost while a flood fills the
        receive buffer."""

        def admitted():
            self.wire.send(f"{stranger}|C/0")
            time.sleep(2)
            return stranger in copy.names()

        start = self.wire.mark()
        probe.wait(admitted, 120, f"{copy.user} does not list {stranger}")
        self.wire.wait_for(f"{copy.user}|S/0", start=start)


def accept(copy, name):
    dialog = copy.probe.windows("frmOpt")
    dialog = dialog[0] if dialog else copy.open_options()
    copy.probe.set_text(copy.probe.control(dialog, ids.OPTIONS.kNameBox), name)
    copy.probe.command(dialog, ids.OPTIONS.kAcceptButton)


def export(copy, chat, path):
    copy.probe.command(chat, ids.CHAT.mnuExportT)
    dialog = copy.probe.wait_for("frmSave")
    copy.probe.set_text(copy.probe.children(dialog, "Edit")[0], path)
    copy.probe.command(dialog, ids.SAVE.kSave)


def boxes_of(copy, action, at_least=0):
    """Answers the message boxes that an action causes, waiting for `at_least` so many, and closes dialogs that stay
    open; returns the boxes' texts."""
    action()
    boxes, quiet, deadline = [], 0, time.monotonic() + probe.TIMEOUT
    while quiet < 4 or (len(boxes) < at_least and time.monotonic() < deadline):
        shown = copy.probe.windows("#32770")
        check(len(shown) < 2, "two message boxes at once")
        for box in shown:
            boxes.append(copy.probe.box_text(box))
            copy.probe.answer(box)
        quiet = 0 if shown else quiet + 1
        time.sleep(0.5)
    for name in ("frmSave", "frmOpt"):
        for window in copy.probe.windows(name):
            copy.probe.close(window)
    return boxes
