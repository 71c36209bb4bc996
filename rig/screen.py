"""A screen of the private machine, with a window manager and, optionally, a notification area."""

import os
import socket
import subprocess
import time

from .private_machine import mount
from .probe import wait

_SOCKETS = "/tmp/.X11-unix"
_TRAY_WIDTH, _TRAY_HEIGHT = 200, 24


def set_up():
    """Hides the machine's own X displays. Call once, before the first Screen and before WineSystem."""
    os.makedirs(_SOCKETS, mode=0o1777, exist_ok=True)
    mount("-t", "tmpfs", "-o", "mode=1777", "tmpfs", _SOCKETS)


class Screen:
    """One Xvfb screen. `name` is the value for DISPLAY, `environment` contains it."""

    _count = 0

    def __init__(self, size="1024x768", tray=False):
        Screen._count += 1
        self.name = f":{Screen._count}"
        self.environment = dict(os.environ, DISPLAY=self.name)
        self._size = tuple(map(int, size.split("x")))
        # By default the server starts anew when its last client ends, and drops clients that connect meanwhile.
        self._start("Xvfb", self.name, "-noreset", "-nolock", "-nolisten", "tcp", "-screen", "0", size + "x24")
        wait(self._is_up, complaint="the screen did not come up")
        self._start("openbox", "--sm-disable")
        # A window manager that starts late moves the windows that it finds.
        wait(lambda: self._run("xdotool", "get_num_desktops", check=False) not in ("", "0\n"),
             complaint="the window manager did not come up")
        self._run("display", "-window", "root", "xc:#5A7894", check=False)  # contrasts with windows in screenshots
        if tray:
            # Fixed width: a tray that resizes itself would move its icons away from the pointer.
            self._start("trayer", "--edge", "bottom", "--align", "right", "--widthtype", "pixel",
                        "--width", str(_TRAY_WIDTH), "--heighttype", "pixel", "--height", str(_TRAY_HEIGHT),
                        "--SetDockType", "true")

    def _start(self, *command):
        subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                         stderr=subprocess.DEVNULL)

    def _is_up(self):
        with socket.socket(socket.AF_UNIX) as client:
            return client.connect_ex(f"{_SOCKETS}/X{self.name[1:]}") == 0

    def wait_for_window(self):
        """Waits until a Windows program shows a window."""
        wait(lambda: self._run("xdotool", "search", "--onlyvisible", "--class", "exe$", check=False),
             complaint="no window appeared")

    def titles(self):
        """The titles and sizes of the visible windows."""
        numbers = self._run("xdotool", "search", "--onlyvisible", "--name", ".", check=False).split()
        return [" ".join(self._run("xdotool", "getwindowname", n, "getwindowgeometry", n, check=False).split())
                for n in numbers]

    def save(self, path):
        """Saves a screenshot of the whole screen."""
        os.makedirs(os.path.dirname(os.path.abspath(path)), exist_ok=True)
        self._run("import", "-window", "root", os.path.abspath(path))

    def click_tray(self, button=1, times=1):
        """Clicks the rightmost icon of the notification area, which is the first one added."""
        width, height = self._size
        middle = _TRAY_HEIGHT // 2
        self.xdotool("mousemove", str(width - middle), str(height - middle),
                     "click", "--repeat", str(times), "--delay", "50", str(button))

    def keys(self, *keys):
        """Presses keys, with a short pause after each, as a fast typist does."""
        for key in keys:
            self.xdotool("key", key)
            time.sleep(0.15)

    def xdotool(self, *arguments):
        """Runs xdotool; returns its output."""
        return self._run("xdotool", *arguments)

    def _run(self, *command, check=True):
        return subprocess.run(command, env=self.environment, check=check, text=True, timeout=60, stdout=subprocess.PIPE,
                              stderr=None if check else subprocess.DEVNULL).stdout
