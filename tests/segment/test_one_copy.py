"""One copy, from its first start in a fresh folder to its end, and started once more: the wire, files, windows, icon,
and floods. The tests run in the order of their numbers."""

import time
import unittest

from rig import copies, ids, probe

GREETING = "is now on the network"

# How the file begins; settings of later versions follow. tests/core/files_test.cpp contains all of it.
DEFAULT_SETTINGS = '"English"\r\n0\r\n0,0,2505,4605\r\n"{0}","0","4","(B)","0"\r\n0,0,0,0\r\n"0"\r\n""\r\n"0"\r\n""\r\n'

COUNTS = " 1 user online (-0)"


class OneCopy(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.copy = cls.rig.copy("anna").start()
        cls.probe = cls.copy.probe
        cls.greeting = cls.wire.wait_for(f"anna|M/anna {GREETING}")
        cls.wire.wait_for("anna|S/0", start=cls.wire.texts().index(cls.greeting.text))
        time.sleep(0.5)

    def _main(self):
        return self.probe.windows("frmMain")[0]

    def _command(self, command):
        self.probe.command(self._main(), command)

    def _wait_hidden(self):
        probe.wait(lambda: not self._main().visible, complaint="the main window stays")

    def _wait_status_line(self, text):
        probe.wait(lambda: self.probe.children(self._main(), "Static")[-1].text == text, complaint=f"no {text!r}")

    def _wait_menu(self, count):
        probe.wait(lambda: sum(menu.visible for menu in self.probe.windows("#32768")) == count,
                   complaint=f"there are not {count} menus open")

    def _wait_popups(self, count):
        probe.wait(lambda: len(self.probe.windows("frmPop")) == count, complaint=f"there are not {count} popups")
        return self.probe.windows("frmPop")

    def _wait_answer(self, stranger):
        """A newcomer is answered within a few seconds, even after a flood."""
        start = self.wire.mark()

        def answered():
            self.wire.send(stranger + "|C/0")  # again: a full receive buffer drops it
            time.sleep(1)
            return "Anna|S/0" in self.wire.texts(start=start)

        probe.wait(answered, complaint="no answer")

    def test_01_joins_under_a_hidden_name_then_under_its_own(self):
        # It receives its own first packets, so it answers itself once under each name.
        quiet = ["_anna|C/ 0", "_anna|S/0", "_anna|M/", "_anna|C/ 0", "_anna|S/0", "_anna|L/"]
        joined = ["anna|C/ 0", "anna|S/0", self.greeting.text, "anna|M/", "anna|C/ 0", "anna|S/0"]
        self.assertEqual(self.wire.texts(), quiet + joined)
        first, leave = self.wire.packets("_anna")[0], self.wire.packets("_anna")[-1]
        self.assertGreater(leave.time - first.time, 9.9)

    def test_02_writes_default_settings_and_waits_in_the_notification_area(self):
        self.assertTrue(self.copy.read("User.ini").startswith(DEFAULT_SETTINGS.format("anna")))
        self.assertEqual(self.copy.log(), ["Quillon loaded", "  > Settings and language loaded"])
        for class_name in ("frmMain", "frmSplash"):
            self.assertEqual([window.visible for window in self.probe.windows(class_name)], [False])

    def test_03_the_icon_shows_it_and_hide_hides_it(self):
        before = self.copy.show_main()
        self.rig.screen.save(copies.SCREENSHOTS + "/main.png")
        self._command(ids.MAIN.mnuHide)
        self._wait_hidden()
        after = self.copy.show_main()
        self.assertEqual((after.left, after.top, after.width, after.height),
                         (before.left, before.top, before.width, before.height))

    def test_04_menus_show_their_help_texts(self):
        self.rig.screen.keys("alt+q", "Down")
        self._wait_menu(1)
        self._wait_status_line("Send an alert to every one")
        self.rig.screen.keys("Escape", "Escape")
        self._wait_menu(0)
        self._wait_status_line(COUNTS)

    def test_05_a_state_is_set_from_the_icons_menu(self):
        start = self.wire.mark()
        self.rig.screen.click_tray(button=3)
        self._wait_menu(1)
        self.rig.screen.keys("s")
        self._wait_menu(2)
        self.rig.screen.keys("Down", "Return")
        self.wire.wait_for("anna|S/1", start=start)
        self._wait_menu(0)
        self._command(ids.MAIN.mnuStat)
        self.wire.wait_for("anna|S/0", start=start)

    def test_06_the_icon_reappears_when_the_shell_restarts(self):
        self._command(ids.MAIN.mnuHide)
        self._wait_hidden()
        self.probe.ask("loseicon", self.probe.windows("TrayIcon")[0].handle)
        time.sleep(0.5)
        self.rig.screen.click_tray(times=2)
        time.sleep(0.5)
        self.assertFalse(self._main().visible, "the icon is still there")
        self.probe.ask("broadcast", "TaskbarCreated")
        time.sleep(0.5)
        self.assertTrue(self.copy.show_main().visible)

    def test_07_refuses_a_second_copy(self):
        second = self.copy.start_another()
        box, text = self.copy.wait_for_box()
        self.assertEqual((box.text, text), ("Quillon", "Previous Instance"))
        self.probe.answer(box)
        second.wait(probe.TIMEOUT)
        self.assertTrue(self.copy.runs())

    def test_08_leaves_properly(self):
        start = self.wire.mark()
        self.copy.close()
        self.wire.wait_for("anna|L/", start=start)
        self.assertEqual(self.wire.texts(start=start), ["anna|L/"])
        self.assertEqual(self.copy.log()[-1], "Quillon unloaded")

    def test_09_starts_again_with_its_settings_and_plain_menus(self):
        self.copy.write_settings("Anna", colour=255)
        start = self.wire.mark()
        self.copy.start("SaFe")
        self.wire.wait_for(f"Anna|M/Anna {GREETING}", start)
        self.assertIn("Anna|C/ 255", self.wire.texts(start=start))
        time.sleep(0.5)
        self.copy.show_main()
        self.rig.screen.keys("alt+q", "Down")
        self._wait_menu(1)
        self.rig.screen.save(copies.SCREENSHOTS + "/safe-mode.png")
        self._wait_status_line(COUNTS)
        self.rig.screen.keys("s", "Down", "Down", "Return")
        self.wire.wait_for("Anna|S/2", start=start)
        self._wait_menu(0)
        self._command(ids.MAIN.mnuStat)
        self.wire.wait_for("Anna|S/0", start=self.wire.texts().index("Anna|S/2"))

    def test_10_alerts_by_the_thousand(self):
        for number in range(3000):
            self.wire.send(f"crier|M/\xdfAlert {number}")
        self._wait_answer("after alerts")
        # At most this many are open; when one closes, the next one opens.
        popups = self._wait_popups(31)
        time.sleep(1)
        self.assertEqual(len(self._wait_popups(31)), 31)
        self.probe.close(popups[0])
        self._wait_popups(31)

    def test_11_notices_are_shown_one_at_a_time(self):
        for number in range(500):
            self.wire.send(f"crier|B/Notice {number}")
        self._wait_answer("after notices")
        for text in ("Notice 0", "Notice 1"):
            box, shown = self.copy.wait_for_box()
            self.assertEqual((box.text, shown), ("crier", text))
            self.assertEqual(len(self.probe.windows("#32770")), 1)
            self.probe.answer(box)
