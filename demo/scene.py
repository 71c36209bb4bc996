"""The demonstration: the user's copy and two scripted partners on a private segment. See script/run.

With a display the windows open there and the demonstration lasts until the program is closed. Without one it plays a
little scene, prints the packets with their times and saves pictures of the windows.
"""

import os
import pathlib
import subprocess
import sys
import threading
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT))

from rig import copies, network, private_machine, probe, screen, wine, wire  # noqa: E402

_PARTNER = f"{_ROOT}/build/native/demo/partner"
_PICTURES = f"{_ROOT}/build/demo"
_PARTNERS = (("Berta", 0x208020, ()), ("Carl", 0xC04000, ("--public",)))  # names, colours, manners


class _UsersScreen:
    """The display that the user sits at."""

    name = os.environ.get("DISPLAY", "")


def _user():
    return os.environ.get("USER") or "you"


def _start_partners():
    for name, colour, manners in _PARTNERS:
        subprocess.Popen(network.Host().command(_PARTNER, "--name", name, "--colour", str(colour), "--chat", *manners),
                         stdout=subprocess.DEVNULL)


def _print_packets(ear):
    """Prints what is heard, as it is heard."""
    begin = time.time()

    def print_news():
        printed = 0
        while True:
            for packet in ear.packets(start=printed):
                text = packet.text.replace("\r\n", " / ")
                print(f"{packet.time - begin:8.3f} s  {packet.source:<10}  {text}", flush=True)
                printed += 1
            time.sleep(0.05)

    threading.Thread(target=print_news, daemon=True).start()


def _show():
    """On the user's display, until the program ends."""
    network.set_up()
    system = wine.WineSystem()
    _print_packets(wire.Wire())
    _start_partners()
    return _users_copy(system, network.Segment()).start().process.wait()


def _users_copy(system, host):
    authority = os.environ.get("XAUTHORITY") or os.path.expanduser("~/.Xauthority")
    return copies.Copy(system, _user(), host, _UsersScreen(), environment={"XAUTHORITY": authority})


def _play():
    """Without a display: the scene, its packets and its pictures."""
    rig = copies.Rig()
    _print_packets(rig.wire)
    copy = rig.copy(_user(), network.Host())
    copy.write_settings(colour=0x800000)
    copy.start()
    time.sleep(2)
    rig.screen.save(f"{_PICTURES}/1-splash.png")
    _start_partners()
    rig.wire.wait_for(f"{copy.user}|M/{copy.user} is now on the network", 30)
    probe.wait(lambda: {"Berta", "Carl"} <= copy.names())
    copy.show_main()
    composer = copy.open_composer("Berta")
    copy.type_alert(composer, "Shall we have lunch at noon?")
    rig.screen.save(f"{_PICTURES}/2-main-window-and-composer.png")
    copy.probe.click_tool(composer, copies.SEND_TOOL)
    copy.popup_at_rest()
    rig.screen.save(f"{_PICTURES}/3-answer.png")
    _chat(copy, "(All)", "Who has seen the stapler?", ("Berta", "Carl"))
    rig.screen.save(f"{_PICTURES}/4-chat-with-all.png")
    with_all = copy.probe.wait_for("frmChat")
    copy.probe.post(with_all, probe.WM_CLOSE)
    copy.probe.wait_gone(with_all)
    _chat(copy, "Berta", "Just between us: I have it", ("Berta",))
    rig.screen.save(f"{_PICTURES}/5-private-chat.png")
    copy.close()
    time.sleep(0.3)
    print(f"Pictures of the windows: {_PICTURES}")


def _chat(copy, participant, line, partners):
    """Opens a conversation, says a line and waits until these partners have answered it."""
    chat = copy.open_chat(participant)
    copy.say(chat, line)
    probe.wait(lambda: all(f"{name}:" in copy.said(chat) for name in partners))


def _join():
    """The user's own copy on the real network, on the user's display."""
    system = wine.WineSystem()
    return _users_copy(system, network.Segment()).start().process.wait()


def main(arguments):
    on_display = _UsersScreen.name.startswith((":", "unix:"))
    if arguments == ["--lan"]:
        if not on_display:
            sys.exit("script/run --lan: no display")
        return private_machine.run(_join, private_network=False)
    return private_machine.run(_show if on_display else _play)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
