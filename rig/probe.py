"""Reads and operates the windows of one Windows installation, through probe.exe, which keeps running there."""

import subprocess
import time
from collections import namedtuple

WM_CLOSE = 0x0010
WM_KEYDOWN = 0x0100
WM_COMMAND = 0x0111
BM_CLICK = 0x00F5
VK_RETURN = 0x0D
LVM_GETITEMCOUNT = 0x1004

# Default timeout of a wait, seconds: on a busy machine, half a minute may pass for what usually takes a moment.
TIMEOUT = 90


def _hex(text):
    return text.encode("latin-1").hex()


def _text(digits):
    return bytes.fromhex(digits).decode("latin-1")


class Window(namedtuple("Window", "handle class_name process visible enabled left top right bottom id text")):
    """A window's state. All fields are integers except class_name and text."""

    @property
    def width(self):
        return self.right - self.left

    @property
    def height(self):
        return self.bottom - self.top


def _window(line):
    handle, class_name, *numbers, text = line.split("\t")
    return Window(int(handle), class_name, *map(int, numbers), _text(text))


class Probe:
    """Reads and operates all windows of the programs in one Wine prefix."""

    def __init__(self, prefix, program):
        self.timeout = TIMEOUT  # of wait_for and wait_gone
        self._process = prefix.start(program, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                     encoding="ascii")

    def ask(self, *fields):
        """Sends one command; returns the lines of the answer."""
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

    def windows(self, class_name=""):
        """All top-level windows, or those of one class."""
        return [_window(line) for line in self.ask("windows", 0, class_name)]

    def foreground(self):
        """A list of the foreground window, or an empty one."""
        return [_window(line) for line in self.ask("foreground")]

    def children(self, window, class_name=""):
        """All descendants of a window, or those of one class (ignoring case, as Windows does)."""
        return [_window(line) for line in self.ask("windows", window.handle, class_name)]

    def control(self, window, number):
        """The control of a window with this id."""
        return next(child for child in self.children(window) if child.id == number)

    def wait_for(self, class_name, visible=True):
        """Waits for a top-level window of a class, visible or (visible=False) any; returns the first one."""
        return wait(lambda: next((w for w in self.windows(class_name) if w.visible or not visible), None),
                    self.timeout, f"no window {class_name}")

    def wait_gone(self, window):
        wait(lambda: all(w.handle != window.handle for w in self.windows(window.class_name)), self.timeout,
             f"{window.class_name} stays")

    def set_text(self, window, text):
        self.ask("settext", window.handle, _hex(text))

    def type(self, window, text):
        self.ask("type", window.handle, _hex(text))

    def post(self, window, message, wparam=0, lparam=0):
        self.ask("post", window.handle, message, wparam, lparam)

    def command(self, window, number):
        """Posts the command of a menu item or toolbar button to a window."""
        self.post(window, WM_COMMAND, number)

    def close(self, window):
        self.post(window, WM_CLOSE)
        self.wait_gone(window)

    def send(self, window, message, wparam=0, lparam=0):
        return int(self.ask("send", window.handle, message, wparam, lparam)[0])

    def show(self, window):
        """Shows a hidden window and waits until it is visible."""
        self.ask("show", window.handle)
        return self.wait_for(window.class_name)

    def click_tool(self, window, command):
        """Clicks the toolbar button with this command id."""
        self.post(window, WM_COMMAND, command, self.children(window, "ToolbarWindow32")[0].handle)

    def rows(self, list_view):
        """The rows of a list view, two texts each."""
        return [tuple(map(_text, line.split("\t"))) for line in self.ask("rows", list_view.handle)]

    def count(self, list_view):
        return self.send(list_view, LVM_GETITEMCOUNT)

    def select_only(self, list_view, row):
        """Selects this row of a list view and no other."""
        self.ask("select", list_view.handle, -1, 0)
        self.ask("select", list_view.handle, row, 1)

    def wait_for_box(self):
        """Waits for a message box and returns it."""
        return self.wait_for("#32770")

    def box_text(self, box):
        """The text of a message box. Its icon is a Static control too, without a text."""
        return "".join(child.text for child in self.children(box, "Static"))

    def answer(self, box, button=None):
        """Clicks the button with this caption, or the first one, of a message box."""
        buttons = self.children(box, "Button")
        chosen = next(b for b in buttons if button is None or b.text.replace("&", "") == button)
        self.post(chosen, BM_CLICK)
        self.wait_gone(box)


def wait(condition, seconds=TIMEOUT, complaint="it did not happen"):
    """Waits until condition() is true and returns its value. `complaint` is a text, or a function returning one."""
    deadline = time.monotonic() + seconds
    while True:
        if value := condition():
            return value
        if time.monotonic() > deadline:
            raise TimeoutError(f"{complaint() if callable(complaint) else complaint} (waited {seconds} s)")
        time.sleep(0.05)
