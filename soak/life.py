"""Plays rare events of a desk's life: sleep, unplugged cables, changed addresses, routes, clocks and desktops, logoffs,
full disks, and kills during a save. Real copies on the private segment; prints a line for each story.

usage: script/soak life [STORY ...]    only those whose name contains one of these words
The last line is "N passed, N failed".
"""

import contextlib
import os
import pathlib
import signal
import struct
import subprocess
import sys
import tempfile
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT))

from rig import copies, network, private_machine, probe  # noqa: E402
from desks import Desks, accept, boxes_of, check  # noqa: E402
from desktop_stories import a_new_desktop_with_every_window_open, logoff_cancelled  # noqa: E402
from disk_stories import (a_folder_that_cannot_be_written, files_held_by_another_program,  # noqa: E402
                          folders_in_place_of_files, killed_while_it_saves, killed_while_it_saves_under_wine)

SLEEP = 60  # seconds
DAY = 24 * 60 * 60  # seconds


def two_users_of_one_machine(desks):
    names = {"(All)", "anna", "berta", "bob"}
    for copy in desks.all:
        probe.wait(lambda copy=copy: names <= copy.names(), complaint=f"{copy.user} does not list all")
    desks.bob.send_alert("berta", "Only for one of the two")
    check(desks.berta.popup_at_rest()[1] == ["Only for one of the two\r\n"], "no alert")
    check(not desks.anna.probe.windows("frmPop"), "the alert is shown to the other user")


def twenty_copies_on_one_segment(desks):
    """Seventeen more start at once: everybody lists everybody, and a line to all reaches all."""
    more = [desks.rig.copy(f"desk{n}", network.Host(), on_screen=desks.bob.prefix.screen) for n in range(17)]
    for copy in more:
        copy.write_settings()
        copy.start()
    try:
        everybody = (*desks.all, *more)
        names = {"(All)", *(copy.user for copy in everybody)}
        for copy in everybody:
            probe.wait(lambda copy=copy: names <= copy.names(), complaint=f"{copy.user} does not list all")
        desks.bob.say(desks.bob.open_chat("(All)"), "To all twenty")
        for copy in everybody:
            chat = copy.probe.wait_for("frmChat")
            probe.wait(lambda copy=copy, chat=chat: "To all twenty" in copy.said(chat), complaint=f"{copy.user} lost it")
    finally:
        for copy in more:
            copy.close()


def asleep_with_a_flood_waiting(desks):
    os.kill(desks.anna.process.pid, signal.SIGSTOP)
    begin = time.monotonic()
    for number in range(5000):
        desks.wire.send((f"night{number % 20}|S/1", f"night{number % 20}|P/\xdfWake up|anna")[number % 250 == 0])
    time.sleep(max(0, SLEEP - (time.monotonic() - begin)))
    os.kill(desks.anna.process.pid, signal.SIGCONT)
    desks.answers(desks.anna, "morning")
    check(not desks.anna.probe.windows("#32770"), "a message box is shown")
    for number in range(20):
        desks.wire.send(f"night{number}|L/")
    probe.wait(lambda: not any(name.startswith("night") for name in desks.anna.names()), 60, "the names stay listed")


def _lines_of_an_outage(desks, begin, end):
    """Types chat lines while nothing can be sent: one line in the log, no message box, and all are sent afterwards."""
    chat = desks.bob.open_chat("(All)")
    logged, start = len(desks.bob.log()), desks.wire.mark()
    begin()
    lines = [f"line {number}" for number in range(5)]
    for line in lines:
        desks.bob.say(chat, line)
    time.sleep(2)
    check(desks.wire.texts("bob", start) == [], "something was sent")
    end()
    desks.wire.wait_for("bob|M/\xdeline 4", start=start)
    check(desks.wire.texts("bob", start) == [f"bob|M/\xde{line}" for line in lines], "lost or out of order")
    check(desks.bob.log()[logged:] == ["Unable to send: 10051: Network is unreachable"], desks.bob.log()[logged:])
    check(not desks.bob.probe.windows("#32770"), "a message box is shown")
    desks.answers(desks.bob, f"after outage {start}")


def the_cable_out_and_in(desks):
    _lines_of_an_outage(desks, desks.bob.host.unplug, desks.bob.host.plug)


def _route(desks, *words):
    subprocess.run(desks.bob.host.command("ip", "route", *words), check=True)


def the_default_route_gone_and_back(desks):
    _lines_of_an_outage(desks, lambda: _route(desks, "del", "default"),
                        lambda: _route(desks, "add", "default", "dev", "eth0"))


def sending_refused(desks):
    """By a firewall, which may do so for ever: nothing is kept, and the log has one line."""
    chat, logged, start = desks.bob.open_chat("(All)"), len(desks.bob.log()), desks.wire.mark()
    _route(desks, "add", "prohibit", "255.255.255.255")
    for line in ("one", "two"):
        desks.bob.say(chat, line)
    _route(desks, "del", "prohibit", "255.255.255.255")
    desks.bob.say(chat, "three")
    desks.wire.wait_for("bob|M/\xdethree", start)
    check(desks.wire.texts("bob", start) == ["bob|M/\xdethree"], "a refused line was sent later")
    check(desks.bob.log()[logged:] == ["Unable to send: 10013: Permission denied"], desks.bob.log()[logged:])


def another_address(desks):
    def ip(*words):
        subprocess.run(desks.bob.host.command("ip", *words), check=True)

    ip("addr", "flush", "dev", "eth0")
    ip("addr", "add", "10.99.0.77/24", "brd", "+", "dev", "eth0")
    ip("route", "add", "default", "dev", "eth0")
    start = desks.wire.mark()
    desks.answers(desks.bob, "after the lease")
    check({packet.source for packet in desks.wire.packets("bob", start)} == {"10.99.0.77"}, "the old address is used")


def the_time_of_day_changed(desks):
    """Alerts, chats, answers and saving go on as the clock is set forward and back; the log has the new time."""
    with tempfile.TemporaryDirectory() as folder:
        shift = pathlib.Path(folder, "shift")
        shift.write_bytes(struct.pack("<q", 0))
        copy = desks.newcomer("tick", environment={"LD_PRELOAD": _shifted_clock(folder, shift)})
        chat = copy.open_chat("(All)")
        for days in (1, -400, 3650, 0):
            shift.write_bytes(struct.pack("<q", days * DAY))
            _use(desks, copy, chat)
            date = time.strftime("%-m/%-d/%Y", time.localtime(time.time() + days * DAY))
            desks.wire.send("eve|M/unmarked")
            probe.wait(lambda date=date: copy.read("Log.txt").split("\r\n")[-2].startswith(f'"{date} '),
                       complaint=f"the log does not have {date}")
        copy.close()


def _shifted_clock(folder, shift):
    """Builds the library that shifts the time of day of 32-bit processes by the seconds in the file `shift`."""
    library = folder + "/shifted_clock.so"
    subprocess.run(["g++", "-m32", "-O2", "-shared", "-fPIC", "-nostdlib", "-fno-stack-protector",
                    f'-DSHIFT_FILE="{shift}"', _ROOT / "soak/shifted_clock.cpp", "-o", library], check=True)
    return library


def _use(desks, copy, chat):
    """Says and hears a line, gets an alert, admits a newcomer, and changes the settings."""
    mark = desks.wire.mark()
    copy.say(chat, f"line {mark}")
    desks.wire.wait_for(f"{copy.user}|M/\xdeline {mark}", start=mark)
    desks.wire.send(f"eve|M/\xdeheard {mark}")
    probe.wait(lambda: f"heard {mark}" in copy.said(chat))
    desks.wire.send(f"eve|P/\xdfLook|{copy.user}")
    popup, texts = copy.popup_at_rest()
    check(texts == ["Look\r\n"], texts)
    copy.probe.close(popup)
    desks.answers(copy, f"newcomer {mark}")
    check(not boxes_of(copy, lambda: accept(copy, copy.user)), "an error is reported")


STORIES = (two_users_of_one_machine, twenty_copies_on_one_segment, asleep_with_a_flood_waiting, the_cable_out_and_in,
           the_default_route_gone_and_back, sending_refused, another_address, the_time_of_day_changed,
           a_new_desktop_with_every_window_open, logoff_cancelled, a_folder_that_cannot_be_written,
           files_held_by_another_program, folders_in_place_of_files)
WITHOUT_COPIES = (killed_while_it_saves, killed_while_it_saves_under_wine)  # the file code alone


def _run_stories(names):
    desks, failed = Desks(), 0
    every = (*STORIES, *WITHOUT_COPIES)
    stories = [story for story in every if not names or any(word in story.__name__ for word in names)]
    for story in stories:
        begin, outcome = time.monotonic(), "ok"
        try:
            if story in STORIES:
                desks.start()
            story(desks)
            desks.close_windows()
        except Exception as error:  # whatever a story stumbles on is its failure; the others still run
            failed, outcome = failed + 1, f"FAILED: {type(error).__name__}: {error}"
            with contextlib.suppress(Exception):
                for copy in desks.all:
                    copy.prefix.screen.save(f"{copies.SCREENSHOTS}/life-{copy.user}.png")
                desks.close_windows()
        print(f"{story.__name__.replace('_', ' '):<42} {time.monotonic() - begin:4.0f} s  {outcome}", flush=True)
    print(f"{len(stories) - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(private_machine.run(lambda: _run_stories(sys.argv[1:])))
