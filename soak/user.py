"""Scripted users of real copies: one who does office work, and a monkey that clicks and types at random."""

import time

from rig import copies, probe

# Command ids of the menus, and controls of the options dialog.
HIDE, ABOUT, STATUS, MOVE = 1009, 1018, 1100, 1110
EXPORT_TEXT, EXPORT_CLIPBOARD, CLEAR, ADD_TIME = 202, 203, 206, 208
SAVE = 1
NAME_BOX, LANGUAGE_BOX = 160, 165
CB_SETCURSEL, WM_GETTEXTLENGTH, WM_CANCELMODE = 0x014E, 0x000E, 0x001F

_PERMANENT = {"frmMain", "frmSplash", "TrayIcon"}  # windows that stay
_OURS = ("frm", "TrayIcon", "#32770", "#32768")


class Failure(Exception):
    """A copy failed or behaved incorrectly."""


class Operator:
    """The common part of both users: handles message boxes and windows. `random` makes a run repeatable."""

    own_faults = ()  # what message boxes may say of names of files that this user types

    def __init__(self, copy, name, random):
        self.copy = copy
        self.name = name
        self.random = random
        self.probe = copy.probe
        self.probe.timeout = 10  # a window may be closed by a concurrent action, so do not wait long
        self.errors, self.latencies = [], []  # failed actions; seconds from a posted letter to its display
        self.starts = 0

    def windows(self):
        """The visible windows of the copy, including message boxes and menus."""
        return [w for w in self.probe.windows() if w.visible and w.class_name.startswith(_OURS)]

    def answer_boxes(self):
        for box in self.probe.windows("#32770"):
            text = box.text + ": " + self.probe.box_text(box)
            if "Run-time error" in text and not text.endswith(self.own_faults):
                self.copy.prefix.screen.save(copies.PICTURES + "/soak-error.png")
                raise Failure(f"{self.name} shows {text!r}")
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

    def works(self, seconds):
        """Performs random actions for this time."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            try:
                self.answer_boxes()
                self.do_something()
            except (LookupError, TimeoutError, StopIteration, ValueError, IndexError) as error:
                # A message box interrupted the action, or the recipient has left.
                self.errors.append(f"{type(error).__name__} {error}"[:120])


class Worker(Operator):
    def __init__(self, copy, name, random, crowd):
        super().__init__(copy, name, random)
        self._crowd = crowd
        self._exports = 0

    def do_something(self):
        self.random.choice((self._alert, self._chat, self._chat, self._export, self._status, self._rename, self._block,
                            self._language, self._move, self._look_away, self._tidy_up, self._type))()
        time.sleep(self.random.uniform(0, 0.4))

    def _someone(self):
        return self.random.choice([desk.name for desk in self._crowd.present()] + ["(All)"])

    def _alert(self):
        self.copy.send_alert(self._someone(), "Tea is ready\r\nin the kitchen")

    def _chat(self):
        chats = self.probe.windows("frmChat")
        chat = self.random.choice(chats) if chats else self.copy.open_chat(self._someone())
        for number in range(self.random.randrange(1, 4)):
            self.copy.say(chat, f"line {number} of {self.name}")
        self.probe.command(chat, self.random.choice((ADD_TIME, CLEAR, EXPORT_CLIPBOARD)))

    def _export(self):
        chat = self.probe.windows("frmChat")[0]
        self.probe.command(chat, EXPORT_TEXT)
        dialog = self.probe.wait_for("frmSave")
        self._exports += 1
        self.probe.set_text(self.probe.children(dialog, "Edit")[0], f"C:\\chat{self._exports}")
        self.probe.command(dialog, SAVE)
        self.probe.wait_gone(dialog)

    def _status(self):
        # Usually Available, which shows everything.
        self.probe.command(self.probe.windows("frmMain")[0], STATUS + self.random.choice((0, 0, 0, 1, 2)))

    def _in_options(self, number, choose):
        dialog = self.copy.open_options()
        choose(self.probe.control(dialog, number))
        self.probe.command(dialog, copies.ACCEPT)
        return dialog

    def _rename(self):
        self.name = f"{self.copy.user}{self.random.randrange(100)}"
        self.probe.wait_gone(self._in_options(NAME_BOX, lambda box: self.probe.set_text(box, self.name)))

    def _language(self):
        for number in (self.random.randrange(1, 4), 0):
            dialog = self._in_options(LANGUAGE_BOX, lambda box, n=number: self.probe.send(box, CB_SETCURSEL, n))
            box = self.probe.wait_for_box()
            self.probe.post(self.probe.children(box, "Button")[0], probe.BM_CLICK)
            self.probe.wait_gone(dialog)

    def _block(self):
        name = self._someone()
        for _ in range(2):  # the second click unblocks
            self.copy.block(name)

    def _move(self):
        self.probe.command(self.probe.windows("frmMain")[0], MOVE + self.random.randrange(4))

    def _look_away(self):
        main = self.probe.windows("frmMain")[0]
        self.probe.command(main, HIDE)
        self.probe.command(main, ABOUT)
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

    # It pastes parts of conversations into the save dialog.
    own_faults = ("Path/File access error", "Path not found", "Device unavailable")

    def __init__(self, copy, name, random, crowd):
        super().__init__(copy, name, random)
        self._crowd = crowd

    def do_something(self):
        self.keep_running()
        windows = [w for w in self.windows() if w.class_name != "TrayIcon"]
        if not windows:
            self.probe.show(self.probe.wait_for("frmMain", visible=False))
            return
        if len(windows) > 12:
            for window in windows[12:]:
                self._close(window)
        input_events = []
        for _ in range(8):
            input_events += self._keys() if self.random.random() < 0.5 else self._mouse(self.random.choice(windows))
        self.copy.prefix.screen.xdotool(*input_events)

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

    def _keys(self):
        return ["key", "--delay", "5", *self.random.choices(self._KEYS, k=self.random.randrange(1, 6)), "sleep", "0.05"]

    def _mouse(self, window):
        def point():
            return [str(max(0, round(self.random.uniform(low, high))))
                    for low, high in ((window.left, window.right), (window.top, window.bottom))]

        button = self.random.choice("11111345")
        click = self.random.choice((["click", button], ["click", "--repeat", "2", "--delay", "40", "1"],
                                    ["mousedown", "1", "mousemove", *point(), "mouseup", "1"]))
        return ["mousemove", *point(), *click, "sleep", "0.05"]
