"""The demonstration: the user's copy and two scripted partners on a private segment. See script/run.

With a display, the windows open there and the demonstration lasts until the program is closed. Without one, it plays a
short scene, prints the packets of each step and saves screenshots.
"""

import ctypes
import os
import pathlib
import subprocess
import sys
import textwrap
import threading
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT))

from rig import copies, ids, network, private_machine, probe, screen, wine, wire  # noqa: E402

_PARTNER = f"{_ROOT}/build/native/demo/partner"
_PICTURES = f"{_ROOT}/build/demo"
_PARTNERS = {"Berta": 0x208020, "Carl": 0xC04000}  # with their colours


class _UsersScreen:
    """The user's own display."""

    name = os.environ.get("DISPLAY", "")


def _user():
    return os.environ.get("USER") or "you"


def _say(text):
    print(textwrap.fill(text, 100), flush=True)


def _start_partner(name, *options):
    subprocess.Popen(network.Host().command(_PARTNER, "--name", name, "--colour", str(_PARTNERS[name]), "--chat", *options),
                     stdout=subprocess.DEVNULL)


def _print_packets(listener):
    """Prints packets as they arrive."""
    begin = time.time()

    def print_new_packets():
        printed = 0
        while True:
            for packet in listener.packets(start=printed):
                text = packet.text.replace("\r\n", " / ")
                print(f"  {packet.time - begin:8.3f} s  {packet.source:<10}  {text}", flush=True)
                printed += 1
            time.sleep(0.05)

    threading.Thread(target=print_new_packets, daemon=True).start()


def _has_notification_area():
    """Whether the user's display has a notification area."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = x11.XGetSelectionOwner.restype = ctypes.c_ulong
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    area = x11.XInternAtom(display, f"_NET_SYSTEM_TRAY_S{x11.XDefaultScreen(display)}".encode(), False)
    return x11.XGetSelectionOwner(display, ctypes.c_ulong(area)) != 0


def _show(prints_packets):
    """Runs the demonstration on the user's display, until the program ends."""
    network.set_up()
    listener = wire.Wire()
    if prints_packets:
        _print_packets(listener)
    _say("Quillon starts on a private network without other users. For ten seconds it listens for them; the small window "
         "in the corner of the screen says so.")
    copy = _users_copy(wine.WineSystem(), network.BridgeHost())
    _start_partner("Carl", "--public")
    try:
        copy.start()
        if _joined(copy, listener):
            _explain(copy)
        copy.process.wait()
    except KeyboardInterrupt:
        print()  # after the terminal's ^C
    _say("Quillon has ended, and with it the private network, Berta and Carl.")


def _joined(copy, listener):
    """Waits for the greeting of the user's copy; returns whether it came before the copy ended."""
    def greeted():
        return any(text.startswith(f"{_user()}|M/{_user()} ") for text in listener.texts(_user()))

    while copy.runs() and not greeted():
        time.sleep(0.1)
    return copy.runs()


def _explain(copy):
    copy.probe.command(copy.probe.wait_for("frmMain", visible=False), ids.MAIN.mnuShowMe)
    # Delayed, so that the user sees the main window before Berta's alert.
    _start_partner("Berta", "--alert-after", "6", "Welcome to Quillon! The arrow in this window lets you answer.", _user())
    icon = ("is now the icon in the notification area" if _has_notification_area() else
            "would now be an icon in the notification area, but this display has none")
    _say(f"Quillon has joined. It {icon}; its window has been opened for you. Berta and Carl are on the list, and Berta is about to send you an alert.")
    _say("Try it: click Berta and then Alert, write something, click Send: Berta answers. Click (All) and then Chat, write a "
         "line, press Enter: both answer.")
    _say("To end, choose Close in the Quillon menu, close the window, or press Ctrl+C here.")


def _users_copy(system, host):
    authority = os.environ.get("XAUTHORITY") or os.path.expanduser("~/.Xauthority")
    return copies.Copy(system, _user(), host, _UsersScreen(), environment={"XAUTHORITY": authority})


class _Scene:
    """The scene without a display: prints each step with its packets, and saves screenshots."""

    def __init__(self):
        self._rig = copies.Rig()
        _print_packets(self._rig.wire)
        self._copy = self._rig.copy(_user(), network.Host())
        self._copy.write_settings(colour=0x800000)

    def _announce(self, text):
        time.sleep(0.5)  # until the packets of the step before are printed
        print()
        _say(text)

    def _picture(self, name):
        self._rig.screen.save(f"{_PICTURES}/{name}.png")

    def play(self):
        self._join()
        self._alert()
        self._chats()
        self._announce("Quillon ends, and leaves the network.")
        self._copy.close()
        time.sleep(0.5)
        print()
        _say(f"The demonstration has ended. Screenshots: {_PICTURES}")

    def _join(self):
        copy = self._copy
        self._announce("Quillon starts on a private network. It listens for ten seconds under the hidden name "
                       f"_{_user()}, which nobody lists; Berta and Carl join, and all answer each other. Then it joins "
                       f"as {_user()}.")
        copy.start()
        time.sleep(2)
        self._picture("1-splash")
        _start_partner("Berta")
        _start_partner("Carl", "--public")
        self._rig.wire.wait_for(f"{copy.user}|M/{copy.user} is now on the network")
        probe.wait(lambda: {"Berta", "Carl"} <= copy.names())
        copy.show_main()

    def _alert(self):
        copy = self._copy
        self._announce("An alert to Berta, and her answer slides in.")
        composer = copy.open_composer("Berta")
        copy.type(composer, "Shall we have lunch at noon?")
        self._picture("2-main-window-and-composer")
        copy.probe.click_tool(composer, ids.COMPOSER.tbSend)
        copy.popup_at_rest()
        self._picture("3-answer")

    def _chats(self):
        copy = self._copy
        self._announce(f"A question to everybody in a chat. Berta answers only {_user()}, Carl answers everybody.")
        self._chat("(All)", "Who has seen the stapler?", ("Berta", "Carl"))
        self._picture("4-chat-with-all")
        copy.probe.close(copy.probe.wait_for("frmChat"))
        self._announce("A chat with Berta only: the packets end with her name.")
        self._chat("Berta", "Just between us: I have it", ("Berta",))
        self._picture("5-private-chat")

    def _chat(self, participant, line, partners):
        """Opens a chat, types a line and waits for the answers of these partners."""
        chat = self._copy.open_chat(participant)
        self._copy.say(chat, line)
        probe.wait(lambda: all(f"{name}:" in self._copy.said(chat) for name in partners))


def _play():
    try:
        _Scene().play()
    except KeyboardInterrupt:
        print()  # after the terminal's ^C
        _say("The demonstration has ended, and with it the private network, Berta and Carl.")


def _join_lan():
    """Runs the user's own copy on the real network and the user's display."""
    copy = _users_copy(wine.WineSystem(), network.BridgeHost()).start()
    _say("Quillon joins your real network. Ctrl+C here ends it.")
    try:
        copy.process.wait()
    except KeyboardInterrupt:
        print()
        copy.close()  # normally, so that it announces its end
    _say("Quillon has ended.")


def main(arguments):
    on_display = _UsersScreen.name.startswith((":", "unix:"))
    if "--lan" in arguments:
        if not on_display:
            sys.exit("script/run --lan: no display")
        return private_machine.run(_join_lan, private_network=False)
    if on_display:
        return private_machine.run(lambda: _show("--packets" in arguments))
    return private_machine.run(_play)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
