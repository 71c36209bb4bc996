"""Plays rare events of a desk's life: sleep, unplugged cables, changed addresses, routes and desktops, logoffs, full
disks, and kills during a save. Real copies on the private segment; prints a line for each story.

usage: script/soak life [STORY ...]    only those whose name contains one of these words
The last line is "N passed, N failed".
"""

import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT))

from rig import copies, network, private_machine, probe, screen  # noqa: E402

GREETING = "is now on the network"
SLEEP = 60  # seconds
KILLS = 1000  # of a saving program

WM_QUERYENDSESSION, WM_ENDSESSION = 0x0011, 0x0016
FONT_OR_THEME_CHANGED = (0x001D, 0x031A)  # WM_FONTCHANGE, WM_THEMECHANGED
HIDE, ABOUT, STATUS, SEND_TO_ALL = 1009, 1018, 1100, 1003
EXPORT_TEXT, SAVE = 202, 1
NAME_BOX = 160
SLIDE_STEP = 4  # pixels of an alert's last step, at 96 dpi


class Failure(Exception):
    """A copy behaved incorrectly."""


def check(condition, complaint):
    if not condition:
        raise Failure(complaint)


class Desks:
    """Anna and Bob, each on a separate host, and Berta, who is logged on to Anna's machine too."""

    def __init__(self):
        self.rig = copies.Rig()
        self.wire = self.rig.wire
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


def the_default_route_gone_and_back(desks):
    def route(*words):
        subprocess.run(desks.bob.host.command("ip", "route", *words), check=True)

    _lines_of_an_outage(desks, lambda: route("del", "default"), lambda: route("add", "default", "dev", "eth0"))


def another_address(desks):
    def ip(*words):
        subprocess.run(desks.bob.host.command("ip", *words), check=True)

    ip("addr", "flush", "dev", "eth0")
    ip("addr", "add", "10.99.0.77/24", "brd", "+", "dev", "eth0")
    ip("route", "add", "default", "dev", "eth0")
    start = desks.wire.mark()
    desks.answers(desks.bob, "after the lease")
    check({packet.source for packet in desks.wire.packets("bob", start)} == {"10.99.0.77"}, "the old address is used")


def a_new_desktop_with_every_window_open(desks):
    """The screen's size, colours and fonts really change, in a desktop window of Wine."""
    copy = desks.rig.copy("carla", network.Host(), on_screen=screen.Screen())
    for key, value in (("Explorer", "Default"), ("Explorer\\Desktops", "1024x768")):
        _run(copy, "reg", "add", "HKCU\\Software\\Wine\\" + key, "/f", "/d", value, "/v",
             "Default" if "\\" in key else "Desktop")
    copy.write_settings()
    start = desks.wire.mark()
    copy.start()
    desks.wire.wait_for(f"carla|M/carla {GREETING}", start)
    try:
        _change_the_desktop(desks, copy)
        desks.answers(copy, "after new colours")
    finally:
        copy.close()


def _change_the_desktop(desks, copy):
    before = _open_every_window(desks, copy)

    def forms():
        return [w for w in copy.probe.windows() if w.class_name.startswith("frm") and w.visible]

    def change(*words, screen_size=(1024, 768)):
        _run(copy, copies.WINDOWS_BUILD + "/soak/desktop.exe", *words)
        time.sleep(2)
        check({w.handle for w in forms()} == {w.handle for w in before}, f"{words}: a window is gone")
        width, height = screen_size
        lost = [w for w in forms() if w.left >= width or w.top >= height or w.right <= 0 or w.top < 0]
        popup = copy.probe.wait_for("frmPop")
        in_corner = popup.left >= 0 and popup.right == width and height - SLIDE_STEP < popup.bottom <= height
        check(in_corner and not lost, f"{words}: off the screen: {lost}, {popup}")
        check(not copy.probe.windows("#32770"), f"{words}: a message box is shown")
        copy.prefix.screen.save(f"{copies.PICTURES}/desktop-{words[0]}-{words[1]}.png")

    change("move", "frmChat", "850", "600")
    change("size", "640", "480", screen_size=(640, 480))
    change("size", "1024", "768")
    change("colours", "203040")
    change("font", "24")
    for message in FONT_OR_THEME_CHANGED:
        for window in before:
            copy.probe.post(window, message)
    copy.probe.close(copy.probe.wait_for("frmOpt"))


def _run(copy, *command):
    check(copy.prefix.start(*command, stdout=subprocess.DEVNULL).wait() == 0, f"{command} failed")


def _open_every_window(desks, copy):
    """Opens the windows that can be open together, with an alert as wide as the screen; returns them."""
    copy.open_chat("(All)")
    main = copy.probe.wait_for("frmMain")
    copy.probe.command(main, SEND_TO_ALL)
    copy.probe.wait_for("frmCom")
    copy.probe.command(main, ABOUT)
    copy.probe.wait_for("frmAbout")
    desks.wire.send("eve|M/\xdf" + "Hello " * 200)
    copy.probe.wait_for("frmPop")
    copy.open_options()
    windows = [w for w in copy.probe.windows() if w.class_name.startswith("frm") and w.visible]
    check(len(windows) == 6, f"not every window is open: {windows}")
    return windows


def logoff_asked_and_refused(desks):
    main = desks.anna.probe.wait_for("frmMain", visible=False)
    for message, ending in ((WM_QUERYENDSESSION, 0), (WM_ENDSESSION, 0), (WM_QUERYENDSESSION, 0)):
        answer = desks.anna.probe.send(main, message, ending)
        check(message != WM_QUERYENDSESSION or answer == 1, "the copy refuses the logoff")
    desks.answers(desks.anna, "who stays")
    check(desks.anna.log()[-1] != "Quillon unloaded", "the copy has unloaded")


def a_folder_that_cannot_be_written(desks):
    """A full disk, then a read-only one: one message box at a time, the old settings are kept, and all works again
    afterwards."""
    copy, start = desks.rig.copy("dora", desks.bob.host, on_screen=desks.bob.prefix.screen), desks.wire.mark()
    copy.write_settings()
    files = shutil.copytree(copy.folder, tempfile.mkdtemp(), dirs_exist_ok=True)
    subprocess.run(["mount", "-t", "tmpfs", "-o", "size=8m", "tmpfs", copy.folder], check=True)
    shutil.copytree(files, copy.folder, dirs_exist_ok=True)
    shutil.rmtree(files)
    copy.start()
    desks.wire.wait_for(f"dora|M/dora {GREETING}", start)
    desks.wire.send("dorian|M/\xdeTo be kept")
    chat = copy.probe.wait_for("frmChat")
    remount = ["mount", "-o", "remount,{}", copy.folder]
    for kind, break_folder, repair in (("full", lambda: _fill(copy.folder), lambda: os.remove(copy.folder + "/filler")),
                              ("read-only", lambda: subprocess.run([w.format("ro") for w in remount], check=True),
                               lambda: subprocess.run([w.format("rw") for w in remount], check=True))):
        before = copy.read("User.ini")
        break_folder()
        boxes = _boxes_of(copy, lambda: _accept(copy, "Dora2"))
        boxes += _boxes_of(copy, lambda: _export(copy, chat, "C:\\Quillon\\kept.txt"))
        check(len(boxes) >= 2, f"{kind}: an error was not reported; message boxes: {boxes}")
        check(copy.read("User.ini") == before, f"{kind}: the settings have changed")
        left = {name for name in os.listdir(copy.folder) if name not in ("filler", "Log.txt")}
        check(left == set(os.listdir(copies.PROGRAM_FOLDER)) | {"User.ini"}, f"{kind}: the folder contains {left}")
        repair()
        check(copy.runs(), "the copy has ended")
        check(not _boxes_of(copy, lambda: _accept(copy, "dora")), "an error is reported after the folder was repaired")
    desks.answers(copy, "after the disk")
    copy.close()


def folders_in_place_of_files(desks):
    """The log and the settings report it and are written again once the folder is gone; the save dialog opens it."""
    copy = desks.bob
    chat = copy.open_chat("(All)")
    for name, action in (("Log.txt", lambda: desks.wire.send("eve|M/unmarked")),
                         ("User.ini", lambda: _accept(copy, "bob"))):
        path = f"{copy.folder}/{name}"
        os.rename(path, path + "~")
        os.mkdir(path)
        boxes = _boxes_of(copy, action)
        check(len(boxes) == 1, f"{name}: message boxes {boxes}")
        os.rmdir(path)
        os.rename(path + "~", path)
        before = copy.read(name)
        check(not _boxes_of(copy, action), f"{name}: an error is reported though the folder is gone")
        check(name != "Log.txt" or len(copy.read(name)) > len(before), "nothing is logged")
    os.mkdir(f"{copy.folder}/folder.txt")
    boxes = _boxes_of(copy, lambda: _export(copy, chat, "C:\\Quillon\\folder.txt"))
    check(not boxes, f"the save dialog reports {boxes}")
    check(os.listdir(f"{copy.folder}/folder.txt") == [] and copy.runs(), "something was exported")
    os.rmdir(f"{copy.folder}/folder.txt")


def _fill(folder):
    with open(folder + "/filler", "wb", buffering=0) as file:
        try:
            while True:
                file.write(b"x" * 4096)
        except OSError:
            pass


def _accept(copy, name):
    dialog = copy.probe.windows("frmOpt")
    dialog = dialog[0] if dialog else copy.open_options()
    copy.probe.set_text(copy.probe.control(dialog, NAME_BOX), name)
    copy.probe.command(dialog, copies.ACCEPT)


def _export(copy, chat, path):
    copy.probe.command(chat, EXPORT_TEXT)
    dialog = copy.probe.wait_for("frmSave")
    copy.probe.set_text(copy.probe.children(dialog, "Edit")[0], path)
    copy.probe.command(dialog, SAVE)


def _boxes_of(copy, action):
    """Answers the message boxes that an action causes and closes dialogs that stay open; returns the boxes' texts."""
    action()
    boxes, quiet = [], 0
    while quiet < 4:
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


def killed_while_it_saves(_):
    with tempfile.TemporaryDirectory() as folder:
        saver = f"{_ROOT}/build/native/soak/saver"
        print("   ", _kill_savers(folder, KILLS, lambda path: [saver, folder, path], subprocess.Popen))


def killed_while_it_saves_under_wine(desks):
    prefix, folder = desks.anna.prefix, desks.anna.prefix.drive_c + "/saves"
    os.mkdir(folder)
    saver = copies.WINDOWS_BUILD + "/soak/saver.exe"
    print("   ", _kill_savers(folder, KILLS // 20, lambda _: [saver, "C:\\saves", "C:\\saves\\User.ini"],
                              lambda command, **options: prefix.start(*command, **options)))


def _kill_savers(folder, kills, command, start):
    """Kills a saver at random moments: the file must be complete, and the last one reported or its successor.

    The next start deletes the temporary files that are left, once they are old.
    """
    saves, path = 0, folder + "/User.ini"
    for _ in range(kills):
        saver = start(command(path), stdout=subprocess.PIPE, text=True)
        saver.stdout.readline()
        time.sleep(random.uniform(0, 0.02))
        saver.kill()
        last = int(([line for line in saver.stdout if line.endswith("\n")] or ["1"])[-1])
        saver.wait()
        with open(path, encoding="ascii", newline="") as file:
            *lines, end = file.read().split("\r\n")
        number = int(lines[0])
        check(number in (last, last + 1) and end == "end" and lines == [lines[0]] * (number * 37 % 200 + 1),
              f"torn after {last}: {lines[:2]} ... {end!r}")
        saves += number
    left = [f"{folder}/{name}" for name in os.listdir(folder) if name != "User.ini"]
    for file in left:
        os.utime(file, (time.time() - 7200,) * 2)
    saver = start(command(path), stdout=subprocess.PIPE)
    saver.stdout.readline()
    saver.kill()
    saver.wait()
    check(not any(map(os.path.exists, left)), "old temporary files stay")
    return f"{kills} kills among {saves} saves left {len(left)} temporary files, deleted by the next start"


STORIES = (two_users_of_one_machine, twenty_copies_on_one_segment, asleep_with_a_flood_waiting, the_cable_out_and_in,
           the_default_route_gone_and_back, another_address, a_new_desktop_with_every_window_open,
           logoff_asked_and_refused, a_folder_that_cannot_be_written, folders_in_place_of_files, killed_while_it_saves,
           killed_while_it_saves_under_wine)


def _run_stories(names):
    desks, failed = Desks(), 0
    stories = [story for story in STORIES if not names or any(name in story.__name__ for name in names)]
    for story in stories:
        begin, outcome = time.monotonic(), "ok"
        try:
            try:
                story(desks)
            finally:
                desks.close_windows()
        except (Failure, TimeoutError, LookupError, OSError, StopIteration, subprocess.SubprocessError) as error:
            failed, outcome = failed + 1, f"FAILED: {type(error).__name__}: {error}"
            for copy in desks.all:
                copy.prefix.screen.save(f"{copies.PICTURES}/life-{copy.user}.png")
        print(f"{story.__name__.replace('_', ' '):<42} {time.monotonic() - begin:4.0f} s  {outcome}", flush=True)
    print(f"{len(stories) - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(private_machine.run(lambda: _run_stories(sys.argv[1:])))
