"""Scripted users of real copies: one who does office work, and a monkey that clicks and types at random."""

import collections
import os
import time

from boxes import Boxes
from rig import copies, ids, probe

# Window messages.
CB_SETCURSEL, WM_GETTEXTLENGTH, WM_CANCELMODE = 0x014E, 0x000E, 0x001F

_CAREFUL_DAYS = 11  # of a monkey, before one on which it may close the program
_CAPTION, _MENU_ROW = 30, 30  # pixels, generously

_PERMANENT = {"frmMain", "frmSplash", "TrayIcon"}  # windows that stay
_OURS = ("frm", "TrayIcon", "#32770", "#32768")


class Failure(Exception):
    """A copy failed or behaved incorrectly."""


class Operator:
    """The common part of both users: handles message boxes and windows. `random` makes a run repeatable."""

    own_faults = ()  # errors that the file names typed by this user into a save dialog may cause

    def __init__(self, copy, name, random):
        self.copy = copy
        self.name = name
        self.random = random
        self.probe = copy.probe
        self.probe.timeout = 10  # a window may be closed by a concurrent action, so do not wait long
        self.errors, self.latencies = [], []  # failed actions; seconds from a posted letter to its display
        self.tried, self.done = collections.Counter(), collections.Counter()  # by the kind of action
        self.days = self.starts = 0
        self.unread = 0  # message boxes that were closed before they could be read
        self._boxes = Boxes(copy)

    def windows(self):
        """The visible windows of the copy, including message boxes and menus."""
        return [w for w in self.probe.windows() if w.visible and w.class_name.startswith(_OURS)]

    def check_boxes(self):
        """Fails if a message box has reported an error since the last call, even one that has been closed meanwhile."""
        for saving, text in self._boxes.take():
            self.unread += text.endswith(": ")
            if "Run-time error" in text and not (saving and text.endswith(self.own_faults)):
                self.copy.prefix.screen.save(copies.SCREENSHOTS + "/soak-error.png")
                raise Failure(f"{self.name} shows {text!r}")

    def await_reports(self):
        """Waits until the boxes that are shown have been recorded, and checks them."""
        probe.wait(lambda: {w.handle for w in self.probe.windows("#32770") if w.visible} <= self._boxes.seen,
                   complaint="a message box is not recorded")
        self.check_boxes()

    def answer_boxes(self):
        self.await_reports()
        for box in self.probe.windows("#32770"):
            buttons = self.probe.children(box, "Button")
            if box.visible and buttons:
                self.probe.post(self.random.choice(buttons), probe.BM_CLICK)

    def keep_running(self):
        if not self.copy.runs():
            raise Failure(f"{self.name} has ended: {self.copy.log()[-3:]}")

    def tidy(self, boxes_only):
        """Closes all windows but the permanent ones; returns whether there were any. A window that hangs or reopens
        keeps the segment from becoming idle."""
        self.keep_running()
        try:
            self.answer_boxes()
            left = [] if boxes_only else [w for w in self.windows() if w.class_name not in _PERMANENT]
            for window in left:
                self._close(window)
            return bool(left)
        except LookupError:  # a window closed meanwhile
            return True

    def _close(self, window):
        if window.class_name == "#32768":
            for owner in self.windows():
                if owner.class_name.startswith("frm"):
                    self.probe.post(owner, WM_CANCELMODE)
        elif window.class_name.startswith("frm") and window.enabled:
            self.probe.post(window, probe.WM_CLOSE)

    def work(self, seconds):
        """Performs random actions for this time."""
        self.days += 1
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            try:
                self.answer_boxes()
                self._perform(self.choose())
            except (LookupError, TimeoutError, StopIteration, ValueError) as error:
                # A message box interrupted the action, or the recipient has left.
                self.errors.append(f"{type(error).__name__} {error}"[:120])

    def _perform(self, action):
        kind = action.__name__.strip("_")
        self.tried[kind] += 1
        action()
        self.done[kind] += 1


class Worker(Operator):
    def __init__(self, copy, name, random, crowd):
        super().__init__(copy, name, random)
        self._crowd = crowd
        self._exports = 0

    def choose(self):
        time.sleep(self.random.uniform(0, 0.4))
        return self.random.choice((self._alert, self._chat, self._chat, self._export, self._status, self._rename,
                                   self._block, self._language, self._move, self._hide_and_open_about,
                                   self._tidy_up, self._type))

    def _must(self, condition, complaint):
        """Waits for it, and answers message boxes, which suspend the code that opened them."""
        try:
            probe.wait(lambda: self.answer_boxes() or condition())
        except TimeoutError as error:
            raise Failure(f"{self.name}: {complaint}") from error

    def _someone(self):
        return self.random.choice([desk.name for desk in self._crowd.present()] + ["(All)"])

    def _alert(self):
        self.copy.send_alert(self._someone(), "Tea is ready\r\nin the kitchen")

    def _chat(self):
        chats = self.probe.windows("frmChat")
        chat = self.random.choice(chats) if chats else self.copy.open_chat(self._someone())
        for number in range(self.random.randrange(1, 4)):
            self.copy.say(chat, f"line {number} of {self.name}")
        self.probe.command(chat, self.random.choice((ids.CHAT.mnuTime, ids.CHAT.mnuCLS, ids.CHAT.mnuExportC)))

    def _export(self):
        # In a busy state lines are not shown, and an empty conversation is exported as an empty file.
        chat = next(chat for chat in self.probe.windows("frmChat") if self.copy.said(chat))
        self.probe.command(chat, ids.CHAT.mnuExportT)
        dialog = self.probe.wait_for("frmSave")
        self._exports += 1
        self.probe.set_text(self.probe.children(dialog, "Edit")[0], f"C:\\chat{self._exports}")
        self.probe.command(dialog, ids.SAVE.kSave)
        self.probe.wait_gone(dialog)
        path = f"{self.copy.prefix.drive_c}/chat{self._exports}.txt"
        self._must(lambda: os.path.exists(path), f"{path} was not exported")
        self._must(lambda: os.path.getsize(path) > 0, f"{path} is empty")

    def _status(self):
        # Usually Available, which shows everything.
        self.probe.command(self.probe.windows("frmMain")[0], ids.MAIN.mnuStat + self.random.choice((0, 0, 0, 1, 2)))

    def _in_options(self, number, choose):
        dialog = self.copy.open_options()
        choose(self.probe.control(dialog, number))
        self.probe.command(dialog, ids.OPTIONS.kAcceptButton)
        return dialog

    def _rename(self):
        self.name = f"{self.copy.user}{self.random.randrange(100)}"
        self.probe.wait_gone(self._in_options(ids.OPTIONS.kNameBox, lambda box: self.probe.set_text(box, self.name)))
        probe.wait(lambda: self.name in self._crowd.roster.names(), self.probe.timeout, f"{self.name} is not heard")

    def _language(self):
        for number in (self.random.randrange(1, 4), 0):
            dialog = self._in_options(ids.OPTIONS.kLanguageBox,
                                      lambda box, n=number: self.probe.send(box, CB_SETCURSEL, n))
            yes, _ = probe.wait(self._question, self.probe.timeout, "no question")
            self.probe.post(yes, probe.BM_CLICK)
            self.probe.wait_gone(dialog)
            self._must(lambda n=number: self.copy.read("User.ini").startswith('"English"') == (n == 0),
                       f"the settings do not have language {number}")

    def _question(self):
        """The buttons of the message box that asks for Yes or No; others have one button."""
        buttons = [self.probe.children(box, "Button") for box in self.probe.windows("#32770")]
        return next((two for two in buttons if len(two) == 2), None)

    def _block(self):
        name = self._someone()
        for _ in range(2):  # the second click unblocks
            self.copy.block(name)

    def _move(self):
        self.probe.command(self.probe.windows("frmMain")[0], ids.MAIN.mnuMoveSub + self.random.randrange(4))

    def _hide_and_open_about(self):
        main = self.probe.windows("frmMain")[0]
        self.probe.command(main, ids.MAIN.mnuHide)
        self.probe.command(main, ids.MAIN.mnuAbout)
        self.probe.close(self.probe.wait_for("frmAbout"))

    def _tidy_up(self):
        for window in self.probe.windows("frmPop") + self.probe.windows("frmChat")[5:]:
            self.probe.post(window, probe.WM_CLOSE)

    def _type(self):
        """Measures the time from a posted letter to its display."""
        composer = self.copy.open_composer("(All)")
        text = self.probe.children(composer, "Edit")[0]
        for number in range(1, 11):
            begin = time.monotonic()
            self.probe.type(text, "x")
            while self.probe.send(text, WM_GETTEXTLENGTH) < number and time.monotonic() < begin + 5:
                pass
            self.latencies.append(time.monotonic() - begin)
        self.probe.post(composer, probe.WM_CLOSE)


class Monkey(Operator):
    """Clicks into the copy's windows and types, with the screen's mouse and keyboard."""

    _KEYS = ("Return", "Tab", "Escape", "space", "Up", "Down", "Left", "Right", "Home", "End", "Prior", "Next", "F1",
             "Delete", "BackSpace", "F10", "Menu", "shift+F10", "ctrl+a", "ctrl+c", "ctrl+v", "ctrl+x", "ctrl+z",
             "alt+q", "alt+v", "alt+h", "alt+u", "alt+s", "shift+Tab", "ctrl+Tab", *"abcxyz019")
    _KEYS_IN_MENUS = ("Escape", "Up", "Down", "Left", "Right", "Home", "End", "F10")

    # It pastes parts of conversations into the save dialog.
    own_faults = ("Path/File access error", "Path not found", "Device unavailable")

    def __init__(self, copy, name, random, crowd):
        super().__init__(copy, name, random)
        self._crowd = crowd

    def choose(self):
        self.keep_running()
        return self._click_or_type if self._windows() else self._show_main

    def _windows(self):
        return [w for w in self.windows() if w.class_name != "TrayIcon"]

    def _show_main(self):
        self.probe.show(self.probe.wait_for("frmMain", visible=False))

    def _click_or_type(self):
        for window in self._windows()[12:]:
            self._close(window)
        for _ in range(8):
            windows = self._windows()
            action = self._keys(windows) if not windows or self.random.random() < 0.5 else self._mouse(windows)
            self.await_reports()  # or this action might close an error unseen
            self.copy.prefix.screen.xdotool(*action)

    def _careful(self):
        """Whether it keeps the program running on this day, so that the growth of its copy can be measured."""
        return self.days % (_CAREFUL_DAYS + 1) != 0

    def keep_running(self):
        """Restarts the program if it has exited normally, because a monkey may close it."""
        if self.copy.runs():
            return
        if self.copy.log()[-1:] != ["Quillon unloaded"]:
            raise Failure(f"{self.name} has ended: {self.copy.log()[-3:]}")
        self.starts += 1
        before = self._crowd.joined[self.copy.host.address]
        self.copy.start()
        probe.wait(lambda: self._crowd.joined[self.copy.host.address] > before, 60, "no start")

    def _keys(self, windows):
        keys = self._KEYS
        if self._careful() and any(w.class_name == "#32768" for w in windows):
            keys = self._KEYS_IN_MENUS  # the mouse chooses from them
        return ["key", self.random.choice(keys), "sleep", "0.02"]

    def _mouse(self, windows):
        window = self.random.choice(windows)

        def point():
            for _ in range(20):
                x, y = (max(0, round(self.random.uniform(low, high)))
                        for low, high in ((window.left, window.right), (window.top, window.bottom)))
                if not (self._careful() and self._closes(windows, x, y)):
                    break
            return [str(x), str(y)]

        button = self.random.choice("11111345")
        click = self.random.choice((["click", button], ["click", "--repeat", "2", "--delay", "40", "1"],
                                    ["mousedown", "1", "mousemove", *point(), "mouseup", "1"]))
        return ["mousemove", *point(), *click, "sleep", "0.05"]

    @staticmethod
    def _closes(windows, x, y):
        """Whether a click may close the program: on the main window's caption, or on the last row of a menu."""
        places = [(w, w.top, w.top + _CAPTION) for w in windows if w.class_name == "frmMain"]
        places += [(w, w.bottom - _MENU_ROW, w.bottom) for w in windows if w.class_name == "#32768"]
        return any(w.left <= x <= w.right and top <= y <= bottom for w, top, bottom in places)
