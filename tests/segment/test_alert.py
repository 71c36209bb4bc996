"""Alerts from desk to desk: two copies on two hosts that are joined by a bridge."""

import os
import time
import unittest

from rig import copies, network, probe, screen
from .test_start_up import GREETING


class DeskToDesk(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.anna = cls.rig.copy("anna", network.Host())
        cls.bob = cls.rig.copy("bob", network.Host(), on_screen=screen.Screen())
        cls.bob.write_settings("Bob", position=2, colour=255)
        for copy in (cls.anna, cls.bob):
            copy.start()
        for copy, name in ((cls.anna, "anna"), (cls.bob, "Bob")):
            cls.wire.wait_for(f"{name}|M/{name} {GREETING}", 40)
        probe.wait(lambda: cls.anna.names() == {"(All)", "anna", "Bob"} == cls.bob.names())

    def _dismiss(self, copy, popup):
        copy.probe.post(popup, probe.WM_CLOSE)
        copy.probe.wait_gone(popup)

    def test_1_two_listeners_do_not_answer_each_other_for_ever(self):
        quiet = [packet for packet in self.wire.packets() if packet.text.startswith("_")]
        self.assertLess(len(quiet), 25)

    def test_2_private_alert(self):
        start = self.wire.mark()
        self.anna.send_alert("Bob", "Tea is \xe0 point")
        self.wire.wait_for("anna|P/\xdfTea is \xe0 point|Bob", start=start)
        popup, texts = self.bob.popup_at_rest()
        self.bob.prefix.screen.save(copies.PICTURES + "/alert.png")
        self.assertEqual(texts, ["Tea is \xe0 point\r\n"])
        self.assertEqual(popup.text, "Quillon")
        # At rest at the top right; 2000 twips are the least width.
        self.assertEqual((popup.right, popup.width), (1024, round(2000 / 15)))
        self.assertIn(popup.top, range(0, 4))
        self.assertEqual(self.anna.probe.windows("frmPop"), [])
        self.assertEqual(self.anna.log()[-1], "Private alert sent to Bob")
        self._dismiss(self.bob, popup)

    def test_3_alert_to_all(self):
        start = self.wire.mark()
        self.bob.send_alert("(All)", "Fire drill at ten\r\nMind the stairs")
        self.wire.wait_for("Bob|M/\xdfFire drill at ten\r\nMind the stairs", start=start)
        popup, texts = self.anna.popup_at_rest()
        self.anna.prefix.screen.save(copies.PICTURES + "/alert-to-all.png")
        self.assertEqual(texts, ["Fire drill at ten\r\nMind the stairs\r\n"])
        # At rest at the bottom right, and not shown to who sent it.
        self.assertEqual(popup.right, 1024)
        self.assertIn(popup.bottom, range(768 - 4, 768 + 1))
        self.assertEqual(self.bob.probe.windows("frmPop"), [])
        self.assertEqual(self.bob.log()[-1], "alert sent to all")
        self._dismiss(self.anna, popup)

    def test_4_a_blank_alert_stays_in_the_composer(self):
        composer = self.anna.open_composer("(All)")
        start = self.wire.mark()
        self.anna.type_alert(composer, "   ")
        self.anna.probe.click_tool(composer, copies.SEND_TOOL)
        time.sleep(0.5)
        self.assertEqual(self.wire.texts(start=start), [])
        self.assertTrue(self.anna.probe.windows("frmCom"))

    def test_5_a_sender_blocked_by_his_alert_is_not_shown_again(self):
        self.wire.send("mallory|C/0")
        self.wire.send("mallory|P/\xdfBuy now!|Bob")
        popup, _ = self.bob.popup_at_rest()
        options = next(button for button in self.bob.probe.children(popup, "Button") if button.text == "Options")
        self.bob.probe.post(options, probe.BM_CLICK)
        self.bob.probe.wait_for("#32768")
        for key in (probe.VK_UP, probe.VK_RETURN):  # the last entry of the menu
            self.bob.probe.post(popup, probe.WM_KEYDOWN, key)
        probe.wait(lambda: not [menu for menu in self.bob.probe.windows("#32768") if menu.visible])
        self._dismiss(self.bob, popup)
        self.wire.send("mallory|P/\xdfReally!|Bob")
        self.wire.send("dora|P/\xdfIs it quiet now?|Bob")
        self.assertEqual(self.bob.popup_at_rest()[1], ["Is it quiet now?\r\n"])
        self.assertEqual(len(self.bob.probe.windows("frmPop")), 1)


class Flood(unittest.TestCase):
    """Whatever comes in, the copy stays usable."""

    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.copy = cls.rig.copy("anna").start()
        cls.wire.wait_for(f"anna|M/anna {GREETING}", 30)

    def _answers(self, stranger):
        """Whether a newcomer is answered within a few seconds."""
        start = self.wire.mark()
        self.wire.send(stranger + "|C/0")
        self.wire.wait_for("anna|S/0", 15, start)
        return True

    def _popups(self, count):
        """All popups if there are so many, else None."""
        popups = self.copy.probe.windows("frmPop")
        return popups if len(popups) == count else None

    def test_1_noise(self):
        for size in (0, 1, 2, 3, 100, 1400, 9000, 60000, 65507):
            for _ in range(4):
                self.wire.send(os.urandom(size))
        for text in ("|M/", "||", "noise", "noise|", "noise|X", "noise|C/9e99", "noise|S/1e400", "noise|P/",
                     "noise|P/|", "noise|M/\0\xdf", "Noise|C/1", "(All)|S/2"):
            self.wire.send(text)
        self.assertTrue(self._answers("after1"))
        self.assertTrue(self.copy.runs())

    def test_2_alerts_by_the_thousand(self):
        for number in range(3000):
            self.wire.send(f"crier|M/\xdfAlert {number}")
        self.assertTrue(self._answers("after2"))
        # Never more than fit into a crowd, and the next one comes in when one goes.
        popups = probe.wait(lambda: self._popups(31), 30)
        time.sleep(1)
        self.assertTrue(self._popups(31))
        self.copy.probe.post(popups[0], probe.WM_CLOSE)
        self.copy.probe.wait_gone(popups[0])
        probe.wait(lambda: self._popups(31))

    def test_3_notices_come_one_at_a_time(self):
        for number in range(500):
            self.wire.send(f"crier|B/Notice {number}")
        self.assertTrue(self._answers("after3"))
        box, text = self.copy.wait_for_box()
        self.assertEqual((box.text, text), ("crier", "Notice 0"))
        self.assertEqual(len(self.copy.probe.windows("#32770")), 1)
        self.copy.probe.answer(box)
        box, text = self.copy.wait_for_box()
        self.assertEqual(text, "Notice 1")
