"""Two copies on Japanese systems (code page 932), whose letters have two bytes: the second is a bar, a backslash or a
Latin letter in the names here."""

import os
import unittest

from rig import copies, network, probe, screen
from .test_desks import NAME_BOX, Dialog
from .test_one_copy import GREETING

OPTIONS_COMMAND, EXPORT_COMMAND = 1006, 202
MOST_OF_NAME = 2751  # bytes


def _bytes(text):
    """The bytes of a text on such a system, one character each."""
    return text.encode("cp932").decode("latin-1")


POCHI, AYA = _bytes("\u30dd\u30c11"), _bytes("\u30a2\u30e41")  # 83 7C 83 60, 83 41 83 84
OTHER = _bytes("\u30c2\u30e41")  # 83 61 83 84: AYA in small letters, if bytes were letters
GROUP = FOLDER = _bytes("\u30bd")  # 83 5C
FILE = _bytes("\u8868")  # 95 5C
LINE = _bytes("\u30bd|\u30dd\u30bd")


class Letters(unittest.TestCase):
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
            cls.wire.wait_for(f"{name}|M/{name} {GREETING}", 60)

    def test_1_names_are_listed_whole_and_each_for_itself(self):
        self.wire.send(f"{OTHER}|C/255")
        for copy in (self.pochi, self.aya):
            probe.wait(lambda copy=copy: copy.names() == {"(All)", POCHI, AYA, OTHER}, 20)

    def test_2_an_alert_to_a_group(self):
        main = self.pochi.probe.wait_for("frmMain", visible=False)
        self.pochi.probe.post(main, probe.WM_COMMAND, OPTIONS_COMMAND)
        dialog = Dialog(self.pochi)
        # The limit of what is typed counts bytes, and keeps room for any letter.
        kana = LINE[:2] * (MOST_OF_NAME // 2 - 1)
        dialog.name(kana)
        self.pochi.probe.type(dialog.control(NAME_BOX), "ab" + LINE)
        probe.wait(lambda: dialog.control(NAME_BOX).text == "ab" + kana)
        dialog.name(POCHI)
        dialog.accept()  # with which the group gets its row
        probe.wait(lambda: {f"({GROUP})", AYA} <= self.pochi.names(), 20)
        start = self.wire.mark()
        self.pochi.send_alert(f"({GROUP})", LINE)
        self.wire.wait_for(f"{POCHI}|P/\xdf{LINE}|{AYA}", start=start)
        popup, texts = self.aya.popup_at_rest()
        self.aya.prefix.screen.save(copies.PICTURES + "/letters-alert.png")
        self.assertEqual(texts, [LINE + "\r\n"])
        self.assertIn(f'Private alert sent to {AYA}"\r\n', self.pochi.read("Log.txt"))
        self.aya.probe.post(popup, probe.WM_CLOSE)

    def test_3_a_private_conversation(self):
        at_aya = self.aya.open_chat(POCHI)
        self.aya.say(at_aya, LINE)
        at_pochi = self.pochi.probe.wait_for("frmChat")
        probe.wait(lambda: self.pochi.said(at_pochi) == f"{AYA}:\t{LINE}\r\n")
        self.assertEqual(self.pochi.probe.rows(self.pochi.probe.children(at_pochi, "SysListView32")[0]), [(AYA, "")])
        self.pochi.say(at_pochi, LINE)
        probe.wait(lambda: self.aya.said(at_aya) == f"{POCHI}:\t{LINE}\r\n")
        self.aya.prefix.screen.save(copies.PICTURES + "/letters-chat.png")

    def _save(self, name):
        """Types a name in the save dialog and presses Save."""
        dialog = self.pochi.probe.wait_for("frmSave")
        self.pochi.probe.set_text(self.pochi.probe.children(dialog, "Edit")[0], name)
        self.pochi.probe.post(dialog, probe.WM_COMMAND, 1)
        return dialog

    def test_4_an_export_into_a_folder(self):
        os.mkdir(self.pochi.prefix.drive_c + "/\u30bd")
        chat = self.pochi.probe.wait_for("frmChat")
        said = self.pochi.said(chat)
        self.pochi.probe.post(chat, probe.WM_COMMAND, EXPORT_COMMAND)
        dialog = self._save("C:\\" + FOLDER)
        probe.wait(lambda: not self.pochi.probe.children(dialog, "Edit")[0].text)
        self.pochi.prefix.screen.save(copies.PICTURES + "/letters-save.png")
        self._save(FILE)
        self.pochi.probe.wait_gone(dialog)
        with open(self.pochi.prefix.drive_c + "/\u30bd/\u8868.txt", "rb") as file:
            self.assertEqual(file.read().decode("latin-1"), said)

    def test_5_blocked_by_his_alert(self):
        self.pochi.send_alert(AYA, "1")
        popup, _ = self.aya.popup_at_rest()
        options = next(button for button in self.aya.probe.children(popup, "Button") if button.text == "Options")
        self.aya.probe.post(options, probe.BM_CLICK)
        self.aya.probe.wait_for("#32768")
        for key in (probe.VK_UP, probe.VK_RETURN):  # the last entry of the menu
            self.aya.probe.post(popup, probe.WM_KEYDOWN, key)
        probe.wait(lambda: not [menu for menu in self.aya.probe.windows("#32768") if menu.visible])
        self.aya.probe.post(popup, probe.WM_CLOSE)
        self.aya.probe.wait_gone(popup)
        self.pochi.send_alert(AYA, "2")
        self.wire.send(f"{OTHER}|P/\xdf3|{AYA}")
        self.assertEqual(self.aya.popup_at_rest()[1], ["3\r\n"])
