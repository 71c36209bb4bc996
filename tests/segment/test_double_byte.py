"""Two copies on Japanese systems (code page 932), whose characters have two bytes: the second is a bar, a backslash or a
Latin letter in the names here."""

import unittest

from rig import copies, ids, network, probe, screen
from test_one_copy import GREETING

MAX_NAME = 2751  # bytes


def _bytes(text):
    """The bytes of a text on such a system, one character each."""
    return text.encode("cp932").decode("latin-1")


POCHI, AYA = _bytes("\u30dd\u30c11"), _bytes("\u30a2\u30e41")  # 83 7C 83 60, 83 41 83 84
OTHER = _bytes("\u30c2\u30e41")  # 83 61 83 84: AYA in lower case, if bytes were characters
GROUP = _bytes("\u30bd")  # 83 5C
LINE = _bytes("\u30bd|\u30dd\u30bd")


class DoubleByte(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.pochi = cls.rig.copy("pochi", network.Host(), locale="ja_JP")
        cls.aya = cls.rig.copy("aya", network.Host(), on_screen=screen.Screen(), locale="ja_JP")
        cls.pochi.write_settings(POCHI, groups=[f"{GROUP}|{AYA}|", "Rest|nobody|"])
        cls.aya.write_settings(AYA)
        for copy, name in ((cls.pochi, POCHI), (cls.aya, AYA)):
            copy.start()
        for name in (POCHI, AYA):
            cls.wire.wait_for(f"{name}|M/{name} {GREETING}")

    def test_1_an_alert_to_a_group(self):
        self.wire.send(f"{OTHER}|C/255")
        for copy in (self.pochi, self.aya):
            probe.wait(lambda copy=copy: copy.names() == {"(All)", POCHI, AYA, OTHER})
        dialog = self.pochi.open_options()
        name = self.pochi.probe.control(dialog, ids.OPTIONS.kNameBox)
        # The input limit counts bytes, and leaves room for any character.
        kana = LINE[:2] * (MAX_NAME // 2 - 1)
        self.pochi.probe.set_text(name, kana)
        self.pochi.probe.type(name, "ab" + LINE)
        probe.wait(lambda: self.pochi.probe.control(dialog, ids.OPTIONS.kNameBox).text == "ab" + kana)
        self.pochi.probe.set_text(name, POCHI)
        self.pochi.probe.command(dialog, ids.OPTIONS.kAcceptButton)  # adds the group's row
        probe.wait(lambda: {f"({GROUP})", AYA} <= self.pochi.names())
        start = self.wire.mark()
        self.pochi.send_alert(f"({GROUP})", LINE)
        self.wire.wait_for(f"{POCHI}|P/\xdf{LINE}|{AYA}", start=start)
        popup, texts = self.aya.popup_at_rest()
        self.assertEqual(texts, [LINE + "\r\n"])
        self.aya.prefix.screen.save(copies.SCREENSHOTS + "/double-byte-alert.png")
        self.aya.probe.close(popup)

    def test_2_a_private_conversation(self):
        at_aya = self.aya.open_chat(POCHI)
        self.aya.say(at_aya, LINE)
        at_pochi = self.pochi.probe.wait_for("frmChat")
        probe.wait(lambda: self.pochi.said(at_pochi) == f"{AYA}:\t{LINE}\r\n")
        self.pochi.say(at_pochi, LINE)
        probe.wait(lambda: self.aya.said(at_aya) == f"{POCHI}:\t{LINE}\r\n")
        self.aya.prefix.screen.save(copies.SCREENSHOTS + "/double-byte-chat.png")
