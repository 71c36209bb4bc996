"""The tests' eyes and hands inside one Windows installation: talks to probe.exe, which keeps running there."""

import re
import subprocess
import time
from dataclasses import dataclass

WM_CLOSE = 0x0010
WM_KEYDOWN = 0x0100
WM_CHAR = 0x0102
WM_COMMAND = 0x0111
BM_CLICK = 0x00F5
VK_RETURN, VK_UP = 0x0D, 0x26
LVM_GETITEMCOUNT = 0x1004


def _escape(text):
    return "".join(chr(b) if 0x20 <= b <= 0x7E and b != 0x5C else f"\\x{b:02X}" for b in text.encode("latin-1"))


def _unescape(text):
    return re.sub(r"\\x(..)", lambda match: chr(int(match[1], 16)), text)


@dataclass(frozen=True)
class Window:
    handle: int
    class_name: str
    process: int
    visible: bool
    enabled: bool
    left: int
    top: int
    right: int
    bottom: int
    id: int
    text: str

    @property
    def width(self):
        return self.right - self.left

    @property
    def height(self):
        return self.bottom - self.top


def _window(line):
    fields = line.split("\t", 10)
    numbers = [int(field) for field in fields[2:10]]
    numbers[1:3] = [numbers[1] != 0, numbers[2] != 0]
    return Window(int(fields[0]), fields[1], *numbers, _unescape(fields[10]))


class Probe:
    """Sees and operates all windows of the programs of one Wine prefix."""

    def __init__(self, prefix, program):
        self._process = prefix.start(program, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                     encoding="ascii")

    def ask(self, *fields):
        """One command; returns the lines of the answer."""
        self._process.stdin.write("\t".join(map(str, fields)) + "\n")
        self._process.stdin.flush()
        lines = []
        for line in self._process.stdout:
            line = line.rstrip("\r\n")
            if line == "ok":
                return lines
            if line.startswith("error\t"):
                raise LookupError(f"{str(fields):.200}: {line[6:]}")
            lines.append(line)
        raise ConnectionError("the probe has ended")

    def windows(self, class_name=None):
        """All top-level windows, or those of one class."""
        return [_window(line) for line in self.ask("windows", *([class_name] if class_name else []))]

    def foreground(self):
        """The window that has the keyboard, or none."""
        return [_window(line) for line in self.ask("foreground")]

    def children(self, window, class_name=None):
        """All descendants of a window, or those of one class (told ignoring case, as Windows does)."""
        found = [_window(line) for line in self.ask("children", window.handle)]
        return [child for child in found if not class_name or child.class_name.lower() == class_name.lower()]

    def control(self, window, number):
        """The control of a window with this number."""
        return next(child for child in self.children(window) if child.id == number)

    def wait_for(self, class_name, visible=True, seconds=10):
        """The first top-level window of a class, as soon as there is a visible one (or one at all)."""
        return wait(lambda: next((w for w in self.windows(class_name) if w.visible or not visible), None), seconds,
                    f"no window {class_name}")

    def wait_gone(self, window, seconds=10):
        wait(lambda: all(w.handle != window.handle for w in self.windows(window.class_name)), seconds,
             f"{window.class_name} stays")

    def set_text(self, window, text):
        self.ask("settext", window.handle, _escape(text))

    def type(self, window, text):
        self.ask("type", window.handle, _escape(text))

    def post(self, window, message, wparam=0, lparam=0):
        self.ask("post", window.handle, message, wparam, lparam)

    def command(self, window, number):
        """Gives a window the command of a menu or toolbar."""
        self.post(window, WM_COMMAND, number)

    def close(self, window):
        self.post(window, WM_CLOSE)
        self.wait_gone(window)

    def send(self, window, message, wparam=0, lparam=0):
        return int(self.ask("send", window.handle, message, wparam, lparam)[0])

    def show(self, window):
        """Shows a hidden window and waits until it is there."""
        self.ask("show", window.handle)
        return self.wait_for(window.class_name)

    def click_tool(self, window, command):
        """Clicks the toolbar button with this command id."""
        self.post(window, WM_COMMAND, command, self.children(window, "ToolbarWindow32")[0].handle)

    def rows(self, list_view):
        """The rows of a list view: two texts each."""
        return [tuple(map(_unescape, line.split("\t"))) for line in self.ask("rows", list_view.handle)]

    def count(self, list_view):
        return self.send(list_view, LVM_GETITEMCOUNT)

    def select_only(self, list_view, row):
        """Selects this row of a list view and no other."""
        self.ask("select", list_view.handle, -1, 0)
        self.ask("select", list_view.handle, row, 1)

    def broadcast(self, message_name):
        """Posts a registered message (TaskbarCreated, say) to all windows."""
        self.ask("broadcast", message_name)

    def lose_icon(self, owner):
        """Takes the icon of a window out of the notification area, as a shell that breaks down does."""
        self.ask("loseicon", owner.handle)

    def wait_for_box(self, seconds=10):
        """The message box that is up, as soon as there is one."""
        return self.wait_for("#32770", seconds=seconds)

    def box_text(self, box):
        """The text of a message box (its icon is a Static control too, without a text)."""
        return "".join(child.text for child in self.children(box, "Static"))

    def answer(self, box, button=None):
        """Clicks a button of a message box, the first one if not told by its caption."""
        buttons = self.children(box, "Button")
        chosen = next(b for b in buttons if button is None or b.text.replace("&", "") == button)
        self.post(chosen, BM_CLICK)
        self.wait_gone(box)


def wait(condition, seconds=10, complaint="it did not happen"):
    """Waits until condition() is true and returns its value."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise TimeoutError(f"{complaint} (waited {seconds} s)")
        time.sleep(0.05)
