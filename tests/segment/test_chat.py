"""Conversations of three copies on three hosts."""

import unittest

from rig import copies, network, probe, screen
from .test_start_up import GREETING


class Conversations(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.anna = cls.rig.copy("anna", network.Host())
        cls.bob = cls.rig.copy("bob", network.Host(), on_screen=screen.Screen())
        cls.carla = cls.rig.copy("carla", network.Host(), on_screen=screen.Screen())
        cls.everybody = (cls.anna, cls.bob, cls.carla)
        cls.anna.write_settings("anna", colour=0x0000FF)
        for copy in cls.everybody:
            copy.start()
        for copy in cls.everybody:
            cls.wire.wait_for(f"{copy.user}|M/{copy.user} {GREETING}", 60)
        names = {"(All)", "anna", "bob", "carla"}
        for copy in cls.everybody:
            probe.wait(lambda copy=copy: copy.names() == names, 20)

    def tearDown(self):
        """Every test begins without chat windows."""
        for copy in self.everybody:
            if copy.runs():
                for window in copy.probe.windows("frmChat"):
                    copy.probe.post(window, probe.WM_CLOSE)
                    copy.probe.wait_gone(window)

    @staticmethod
    def _wait_for_text(copy, window, text):
        probe.wait(lambda: copy.said(window) == text, 10, f"{copy.user} does not see {text!r}")

    @staticmethod
    def _participants(copy, window):
        return [name for name, _ in copy.probe.rows(copy.probe.children(window, "SysListView32")[0])]

    def test_1_in_public_and_in_private(self):
        start = self.wire.mark()
        from_anna = self.anna.open_chat("(All)")
        self.anna.say(from_anna, "Who has the keys?")
        self.wire.wait_for("anna|M/\xdeWho has the keys?", start=start)
        line = "anna:\tWho has the keys?\r\n"
        self._wait_for_text(self.anna, from_anna, line)
        at_bob, at_carla = (copy.probe.wait_for("frmChat") for copy in (self.bob, self.carla))
        for copy, window in ((self.bob, at_bob), (self.carla, at_carla)):
            self._wait_for_text(copy, window, line)
            self.assertEqual(window.text, "Chating - Quillon")
            self.assertEqual(self._participants(copy, window), ["anna"])
            self.assertEqual(copy.log()[-2:], ["anna Added to chat window", "New chat window opened"])

        # The answer goes to its participant alone, whose window takes everybody's lines.
        self.bob.say(at_bob, "Not I, {\\b sorry}")
        self.wire.wait_for("bob|P/\xdeNot I, {\\b sorry}|anna", start=start)
        self._wait_for_text(self.anna, from_anna, line + "bob:\tNot I, {\\b sorry}\r\n")
        self.anna.prefix.screen.save(copies.PICTURES + "/chat.png")
        self.assertEqual(self.bob.said(at_bob), line)
        self.assertEqual(self.carla.said(at_carla), line)
        self.assertEqual([len(copy.probe.windows("frmChat")) for copy in self.everybody], [1, 1, 1])

    def test_2_twenty_lines_back_to_back(self):
        self.wire.send("dora|C/255")
        for number in range(20):
            self.wire.send(f"dora|M/\xdeline {number}")
        expected = "".join(f"dora:\tline {number}\r\n" for number in range(20))
        for copy in self.everybody:
            self._wait_for_text(copy, copy.probe.wait_for("frmChat"), expected)
            self.assertEqual(len(copy.probe.windows("frmChat")), 1)

    def test_3_a_closed_window_opens_anew_where_it_was(self):
        self.anna.open_chat("bob")
        window = self.anna.at_rest("frmChat")
        self.anna.probe.post(window, probe.WM_CLOSE)
        self.anna.probe.wait_gone(window)
        self.wire.send("bob|P/\xdeStill there?|anna")
        again = self.anna.at_rest("frmChat")
        self._wait_for_text(self.anna, again, "bob:\tStill there?\r\n")
        self.assertEqual((again.left, again.top, again.right, again.bottom),
                         (window.left, window.top, window.right, window.bottom))

    def test_4_who_leaves_leaves_the_conversation(self):
        at_anna = self.anna.open_chat("carla")
        self.anna.say(at_anna, "Have a nice evening")
        at_carla = self.carla.probe.wait_for("frmChat")
        self._wait_for_text(self.carla, at_carla, "anna:\tHave a nice evening\r\n")
        self.carla.close()
        probe.wait(lambda: self._participants(self.anna, at_anna) == [])
        self.assertEqual(self.anna.log()[-1], "carla Removed from chat window")
        # Nobody is left to say something to.
        start = self.wire.mark()
        self.anna.say(at_anna, "Hello?")
        self.assertEqual(self.wire.texts("anna", start), [])
