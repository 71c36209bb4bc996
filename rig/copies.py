"""Copies of Quillon on the private segment, each with its own host, Windows installation, program folder and probe."""

import contextlib
import functools
import os
import pathlib
import subprocess
import time

from . import ids, probe, wine, wire

_ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
WINDOWS_BUILD = os.environ.get("QUILLON_BUILD", _ROOT + "/build/windows-x86")
PROGRAM_FOLDER = WINDOWS_BUILD + "/Quillon"
PROBE = WINDOWS_BUILD + "/rig/probe.exe"
SCREENSHOTS = _ROOT + "/build/screenshots"



class Rig(wine.Machine):
    """The private machine with a listener on its network; one per test program."""

    def __init__(self, tray=True, size="1024x768"):
        super().__init__(size, tray)
        self._copies = []
        self.wire = wire.Wire(describe=lambda: "".join("\n" + copy.state() for copy in self._copies))

    def copy(self, user="anna", host=None, on_screen=None, **options):
        """A copy of the program for the user with this logon name, not started yet."""
        self._copies.append(Copy(self.system, user, host or self.segment, on_screen or self.screen, **options))
        return self._copies[-1]


class Copy:
    """One installed copy of Quillon. Its files are in `folder`."""

    def __init__(self, system, user, host, on_screen, dpi=96, locale=None, environment=()):
        self.user = user
        self.host = host
        self.prefix = wine.Prefix(system, host, on_screen, user=user, dpi=dpi, locale=locale)
        self.folder = self.prefix.install(PROGRAM_FOLDER)
        self._environment = environment
        self.process = None
        self._wine_errors = pathlib.Path(self.prefix.drive_c, "wine-errors.txt")

    @functools.cached_property
    def probe(self):
        return probe.Probe(self.prefix, PROBE)

    def start(self, *arguments):
        """Starts the program; returns the copy itself."""
        if not self.process:
            probe.wait(self._has_desktop, complaint=f"{self.user} has no desktop")
        self.process = self.start_another(*arguments)
        return self

    def _has_desktop(self):
        # A process gives up after ten seconds if Wine's desktop is not ready, and then never has windows.
        self.probe.windows()  # keeps the desktop
        ready = self.prefix.start(PROBE, "desktop").wait() == 0
        if not ready:
            time.sleep(1)
        return ready

    def start_another(self, *arguments):
        folder = "C:" + self.folder.removeprefix(self.prefix.drive_c).replace("/", "\\")
        with open(self._wine_errors, "ab") as errors:
            return self.prefix.start(folder + "\\Quillon.exe", *arguments, environment=self._environment,
                                     stdout=subprocess.DEVNULL, stderr=errors)

    def state(self):
        """What is known of the copy, for the report of a failure. Does not ask Wine, which may hang."""
        log = pathlib.Path(self.folder, "Log.txt")
        return (f"{self.user}: exit status {self.process and self.process.poll()}, "
                f"log {log.read_bytes()[-400:] if log.is_file() else 'missing'}, "
                f"windows {self.prefix.screen.titles()}, "
                f"Wine's errors {self._wine_errors.read_bytes()[-500:] if self._wine_errors.exists() else ''}")

    def write_settings(self, name=None, colour=0, position=4, sound="(S)", run_at_logon=0, blocked=(), groups=()):
        """Writes a User.ini as the program does."""
        lines = ['"English"', "0", "300,300,2505,4605",
                 f'"{name or self.user}",{colour},{position},"{sound}",{run_at_logon}',
                 "0,0,0,0", str(len(blocked)), *(f'"{entry}"' for entry in blocked),
                 str(len(groups)), *(f'"{entry}"' for entry in groups)]
        self.write("User.ini", "".join(line + "\r\n" for line in lines))

    def write(self, name, text):
        pathlib.Path(self.folder, name).write_bytes(text.encode("latin-1"))

    def read(self, name):
        return pathlib.Path(self.folder, name).read_bytes().decode("latin-1")

    def log(self):
        """The texts of the log, without their dates and quotes."""
        if not os.path.exists(f"{self.folder}/Log.txt"):
            return []
        records = self.read("Log.txt").split("\r\n")[:-1]
        # A record begins with the short date and the long time: 11/21/2026 12:00:00 PM in Wine's English.
        return [record.strip('"').split(" ", 3)[-1] for record in records]

    def main(self):
        """The main window, visible or hidden."""
        return self.probe.wait_for("frmMain", visible=False)

    def wait_for_box(self):
        """Waits for a message box; returns it, still open, and its text."""
        box = self.probe.wait_for_box()
        return box, self.probe.box_text(box)

    def roster(self):
        """The rows of the main window's list. Shows the window, because a hidden one does not update its list."""
        main = self.probe.show(self.main())
        roster = self.probe.children(main, "SysListView32")[0]
        probe.wait(lambda: self.probe.count(roster) > 0)
        return self.probe.rows(roster)

    def names(self):
        """The names in the main window's list."""
        return {row[0] for row in self.roster()}

    def say(self, chat, line):
        """Types a line into a chat window and presses Enter."""
        self.type(chat, line)
        self.probe.post(self._text_box(chat), probe.WM_KEYDOWN, probe.VK_RETURN)
        probe.wait(lambda: self._text_box(chat).text == "")

    def said(self, chat):
        """The text of the conversation that a chat window displays."""
        return self.probe.children(chat, "RichEdit20A")[0].text

    def show_main(self):
        """Shows the main window by a double click on the icon in the notification area."""
        main = self.main()

        def shown():
            self.prefix.screen.click_tray(times=2)
            with contextlib.suppress(TimeoutError):  # the icon may not have been there yet
                return probe.wait(lambda: any(window.handle == main.handle for window in self.probe.foreground()), 10)

        if not main.visible:
            probe.wait(shown)
        return self.probe.wait_for("frmMain")

    def open_options(self):
        """Chooses Options in the main window's menu; returns the dialog."""
        self.probe.command(self.main(), ids.MAIN.mnuOpts)
        return self.probe.wait_for("frmOpt")

    def open_composer(self, recipient):
        """Selects a row of the main window and clicks Alert; returns the composer."""
        self._click_with(recipient, ids.MAIN.tbAlert)
        return self.probe.wait_for("frmCom")

    def open_chat(self, participant):
        """Selects a row of the main window and clicks Chat; returns the chat window."""
        self._click_with(participant, ids.MAIN.tbChat)
        return self.probe.wait_for("frmChat")

    def block(self, name):
        """Selects a row of the main window and clicks Block."""
        self._click_with(name, ids.MAIN.tbBlock)

    def _click_with(self, name, tool):
        probe.wait(lambda: name in self.names(), self.probe.timeout, f"{name} is not listed")
        row = [text for text, _ in self.roster()].index(name)
        self.probe.select_only(self.probe.children(self.main(), "SysListView32")[0], row)
        self.probe.click_tool(self.main(), tool)

    def _text_box(self, window):
        return self.probe.children(window, "Edit")[0]

    def type(self, window, text):
        """Types into the first text box of a window, key by key."""
        self.probe.type(self._text_box(window), text.replace("\r\n", "\r"))
        probe.wait(lambda: self._text_box(window).text == text)

    def send_alert(self, recipient, text):
        """Writes and sends an alert to a row of the main window, as the user would."""
        composer = self.open_composer(recipient)
        self.type(composer, text)
        self.probe.click_tool(composer, ids.COMPOSER.tbSend)
        self.probe.wait_gone(composer)

    def popup_at_rest(self):
        """The popup and its texts, once it has stopped moving (the window manager moves new windows too)."""

        def rested():
            before = self.probe.wait_for("frmPop")
            time.sleep(0.3)
            return before if before == self.probe.wait_for("frmPop") else None

        popup = probe.wait(rested)
        return popup, [child.text for child in self.probe.children(popup, "Static") if child.text.endswith("\r\n")]

    def close(self):
        """Closes the main window, as its X button does, and waits for the process to end."""
        self.probe.post(self.main(), probe.WM_CLOSE)
        return self.process.wait(probe.TIMEOUT)

    def runs(self):
        return self.process.poll() is None
