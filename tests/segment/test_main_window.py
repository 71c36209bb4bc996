"""The main window and its icon in the notification area, as a user meets them."""

import time
import unittest

from rig import copies, probe
from .test_start_up import GREETING

WM_SYSCOMMAND = 0x0112
SC_MINIMIZE = 0xF020
WS_MINIMIZE = 0x20000000

# Command ids of the main window's menus.
HIDE = 1009
STATUS = 1100
MOVE = 1110

MENU = "#32768"  # the class of every open menu
COUNTS = " 1 user online (-0)"


class _Window(unittest.TestCase):
    arguments = ()

    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.copy = cls.rig.copy("anna")
        cls.probe = cls.copy.probe
        cls.copy.write_settings("anna")
        cls.copy.start(*cls.arguments)
        cls.wire.wait_for(f"anna|M/anna {GREETING}", 30)
        time.sleep(0.5)

    def _main(self):
        return self.probe.windows("frmMain")[0]

    def _command(self, command):
        self.probe.post(self._main(), probe.WM_COMMAND, command)

    def _wait_shown(self, shown):
        probe.wait(lambda: self._main().visible == shown, complaint=f"the main window's visibility is not {shown}")

    def _status_line(self):
        return next(child.text for child in self.probe.children(self._main(), "Static"))

    def _keys(self, *keys):
        for key in keys:
            self.rig.screen.xdotool("key", key)
            time.sleep(0.15)

    def _wait_menu(self, count):
        probe.wait(lambda: sum(menu.visible for menu in self.probe.windows(MENU)) == count,
                   complaint=f"there are not {count} menus open")


class MainWindow(_Window):
    def test_1_the_icon_shows_it_and_hide_hides_it(self):
        before = self._main()
        self.assertFalse(before.visible)
        self.copy.show_main()
        self._command(HIDE)
        self._wait_shown(False)
        after = self.copy.show_main()
        self.assertEqual((after.left, after.top, after.width, after.height),
                         (before.left, before.top, before.width, before.height))

    def test_2_minimising_hides_it(self):
        before = self.copy.show_main()
        self.probe.post(before, WM_SYSCOMMAND, SC_MINIMIZE)
        self._wait_shown(False)
        self.assertTrue(self.copy.runs())
        after = self.copy.show_main()
        self.assertFalse(after.style & WS_MINIMIZE)
        self.assertEqual((after.left, after.top, after.width, after.height),
                         (before.left, before.top, before.width, before.height))

    def test_3_menus_tell_their_help_texts(self):
        self.copy.show_main()
        self._keys("alt+q", "Down")
        self._wait_menu(1)
        probe.wait(lambda: self._status_line() == "Send an alert to every one")
        self._keys("Escape", "Escape")
        self._wait_menu(0)
        probe.wait(lambda: self._status_line() == COUNTS)

    def test_4_a_state_is_set_from_the_icons_menu(self):
        start = self.wire.mark()
        self.rig.screen.click_tray(button=3)
        self._wait_menu(1)
        self._keys("s")
        self._wait_menu(2)
        self._keys("Down", "Return")
        self.wire.wait_for("anna|S/1", start=start)
        self._wait_menu(0)

    def test_5_state_2_keeps_everything_away_and_state_0_lets_it_in(self):
        start = self.wire.mark()
        self._command(STATUS + 2)
        self.wire.wait_for("anna|S/2", start=start)
        probe.wait(lambda: dict(self.copy.roster())["anna"] == "Do Not Disturb")
        self.wire.send("bob|P/\xdfnobody sees this|anna")
        self._command(STATUS)
        self.wire.wait_for("anna|S/0", start=start)
        self.wire.send("bob|P/\xdfthis is seen|anna")
        popup, texts = self.copy.popup_at_rest()
        self.assertEqual(texts, ["this is seen\r\n"])
        self.probe.post(popup, probe.WM_CLOSE)
        self.probe.wait_gone(popup)
        self.assertEqual(self.probe.windows("frmPop"), [])

    def test_6_moves_into_the_corners(self):
        self._command(MOVE + 3)
        probe.wait(lambda: (self._main().right, self._main().bottom) == (1024, 768))
        self._command(MOVE)
        probe.wait(lambda: (self._main().left, self._main().top) == (0, 0))

    def test_7_the_icon_comes_back_when_the_shell_starts_anew(self):
        self._command(HIDE)
        self._wait_shown(False)
        self.probe.lose_icon(self.probe.windows("TrayIcon")[0])
        time.sleep(0.5)
        self.rig.screen.double_click_tray()
        time.sleep(0.5)
        self.assertFalse(self._main().visible, "the icon is still there")
        self.probe.broadcast("TaskbarCreated")
        time.sleep(0.5)
        self.assertTrue(self.copy.show_main().visible)


class SafeMode(_Window):
    """Plain menus; everything can be reached all the same."""

    arguments = ("SaFe",)

    def test_menus_are_plain_and_work(self):
        self.copy.show_main()
        self._keys("alt+q", "Down")
        self._wait_menu(1)
        self.rig.screen.save(copies.PICTURES + "/safe-mode.png")
        self.assertEqual(self._status_line(), COUNTS)
        start = self.wire.mark()
        self._keys("s", "Down", "Down", "Return")
        self.wire.wait_for("anna|S/2", start=start)
        self._wait_menu(0)
        self._keys("alt+q", "h")
        self._wait_shown(False)


del _Window  # only its heirs are to be run
