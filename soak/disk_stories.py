"""Stories of files: folders that cannot be written, files that another program holds, and kills during a save."""

import contextlib
import os
import pathlib
import random
import shutil
import subprocess
import tempfile
import time

from desks import GREETING, accept, boxes_of, check, export
from rig import copies, network, probe, wine

KILLS = 1000  # of a saving program under Wine; a tenth of them natively
NO_TEXTS = "Error reading language files. Cannot find code 8209"  # the settings name the language

_ROOT = pathlib.Path(__file__).resolve().parent.parent


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
        for action in (lambda: accept(copy, "Dora2"), lambda: export(copy, chat, "C:\\Quillon\\kept.txt")):
            boxes = boxes_of(copy, action, at_least=1)
            check(any(box.startswith("Run-time error") for box in boxes), f"{kind}: message boxes {boxes}")
        check(copy.read("User.ini") == before, f"{kind}: the settings have changed")
        left = {name for name in os.listdir(copy.folder) if name not in ("filler", "Log.txt")}
        check(left == set(os.listdir(copies.PROGRAM_FOLDER)) | {"User.ini"}, f"{kind}: the folder contains {left}")
        repair()
        check(copy.runs(), "the copy has ended")
        check(not boxes_of(copy, lambda: accept(copy, "dora")), "an error is reported after the folder was repaired")
    desks.answers(copy, "after the disk")
    copy.close()


def folders_in_place_of_files(desks):
    """The log and the settings report it and are written again once the folder is gone; the save dialog opens it."""
    copy = desks.bob
    chat = copy.open_chat("(All)")
    for name, action in (("Log.txt", lambda: desks.wire.send("eve|M/unmarked")),
                         ("User.ini", lambda: accept(copy, "bob"))):
        path = f"{copy.folder}/{name}"
        os.rename(path, path + "~")
        os.mkdir(path)
        boxes = boxes_of(copy, action, at_least=1)
        check(len(boxes) == 1, f"{name}: message boxes {boxes}")
        os.rmdir(path)
        os.rename(path + "~", path)
        before = copy.read(name)
        check(not boxes_of(copy, action), f"{name}: an error is reported though the folder is gone")
        check(name != "Log.txt" or len(copy.read(name)) > len(before), "nothing is logged")
    os.mkdir(f"{copy.folder}/folder.txt")
    boxes = boxes_of(copy, lambda: export(copy, chat, "C:\\Quillon\\folder.txt"))
    check(not boxes, f"the save dialog reports {boxes}")
    check(os.listdir(f"{copy.folder}/folder.txt") == [] and copy.runs(), "something was exported")
    os.rmdir(f"{copy.folder}/folder.txt")


PERMISSION_DENIED = "Run-time error '70':\r\n\r\nPermission denied"


def files_held_by_another_program(desks):
    copy = desks.newcomer("hedda")
    _log_held(desks, copy)
    _export_held(copy)
    _settings_held(desks, copy)


def _log_held(desks, copy):
    """Each record that is lost is reported, in one message box at a time; logging goes on afterwards."""
    before = copy.log()
    with _held(copy, "Log.txt"):
        boxes = boxes_of(copy, lambda: [desks.wire.send("eve|M/unmarked") for _ in range(20)],
                         at_least=20)
        check(len(boxes) == 20 and all(box.startswith("Error writing to Log file.") for box in boxes), boxes)
    check(copy.log() == before, "the log has changed")
    desks.wire.send("eve|M/unmarked")
    probe.wait(lambda: len(copy.log()) == len(before) + 1, complaint="logging does not go on")


def _export_held(copy):
    """The target stays as it is, and is replaced afterwards."""
    chat = copy.open_chat("(All)")
    copy.say(chat, "To be kept")
    copy.write("held.txt", "old")
    export_it = lambda: export(copy, chat, "C:\\Quillon\\held.txt")  # noqa: E731
    with _held(copy, "held.txt"):
        boxes = boxes_of(copy, export_it, at_least=1)
        check(boxes == [PERMISSION_DENIED], f"export: message boxes {boxes}")
        check(copy.read("held.txt") == "old", "the export's target has changed")
    check(not boxes_of(copy, export_it) and "To be kept" in copy.read("held.txt"), "the export fails afterwards")


def _settings_held(desks, copy):
    """While the copy runs, ends and starts, it is reported each time, and the settings stay as they are."""
    before = copy.read("User.ini")
    with _held(copy, "User.ini"):
        for action, expected in ((lambda: accept(copy, "Hedda2"), [PERMISSION_DENIED]),
                                 (lambda: copy.probe.post(copy.main(), probe.WM_CLOSE), [PERMISSION_DENIED]),
                                 (copy.start, [": & 70: Permission denied", NO_TEXTS])):
            boxes = boxes_of(copy, action, at_least=len(expected))
            check(boxes == expected, f"settings: message boxes {boxes}, not {expected}")
            check(copy.read("User.ini") == before, "the settings have changed")
        copy.process.wait(probe.TIMEOUT)
    start = desks.wire.mark()
    copy.start()
    desks.wire.wait_for(f"hedda|M/hedda {GREETING}", start)
    copy.close()


@contextlib.contextmanager
def _held(copy, name):
    holder = copy.prefix.start(copies.WINDOWS_BUILD + "/soak/holder.exe", "C:\\Quillon\\" + name,
                               stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    check(holder.stdout.readline(), f"{name} cannot be held")
    try:
        yield
    finally:
        holder.communicate()


def _fill(folder):
    with open(folder + "/filler", "wb", buffering=0) as file:
        try:
            while True:
                file.write(b"x" * 4096)
        except OSError:
            pass


def killed_while_it_saves(_):
    with tempfile.TemporaryDirectory() as folder:
        saver = f"{_ROOT}/build/native/soak/saver"
        print("   ", _kill_savers(folder, KILLS // 10, lambda path: [saver, folder, path], subprocess.Popen))


def killed_while_it_saves_under_wine(desks):
    prefix = wine.Prefix(desks.rig.system, desks.rig.segment, desks.rig.screen)
    probe.Probe(prefix, copies.PROBE).windows()  # keeps Wine's server, which must not end between two kills
    folder = prefix.drive_c + "/saves"
    os.mkdir(folder)
    saver = copies.WINDOWS_BUILD + "/soak/saver.exe"
    print("   ", _kill_savers(folder, KILLS, lambda _: [saver, "C:\\saves", "C:\\saves\\User.ini"],
                              lambda command, **options: prefix.start(*command, **options)))


def _kill_savers(folder, kills, command, start):
    """Kills a saver at random moments: the file must be complete, and the last one reported or its successor.

    The next start deletes the temporary files that are left, once they are old.
    """
    saves, path = 0, folder + "/User.ini"
    for _ in range(kills):
        saver = start(command(path), stdout=subprocess.PIPE, text=True)
        check(saver.stdout.readline() == "1\n", "the saver does not start")
        time.sleep(random.uniform(0, 0.02))
        saver.kill()
        last = int(([line for line in saver.stdout if line.endswith("\n")] or ["1"])[-1])
        saver.wait()
        with open(path, encoding="latin-1", newline="") as file:
            *lines, end = file.read().split("\r\n")
        number = int(lines[0]) if lines and lines[0].isascii() and lines[0].isdigit() else -1
        check(number in (last, last + 1) and end == "end" and lines == [lines[0]] * (number * 37 % 200 + 1),
              f"torn after {last}: {lines[:2]} ... {end[-20:]!r}")
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
