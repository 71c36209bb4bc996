"""The options dialog in whole copies: new settings reach the network and the other windows, and a taken name is settled
at start-up."""

import os
import unittest

from rig import copies, network, probe, screen
from .test_start_up import GREETING

OPTIONS_COMMAND, CHAT_WITH_ALL_COMMAND = 1006, 1002
ACCEPT, CLOSE, SECURITY_PAGE = 110, 111, 102
NAME_BOX, BLOCK_BOX, LANGUAGE_BOX, BLOCK_ENTER = 160, 161, 165, 163
CB_SETCURSEL = 0x014E
RED = 12

TAKEN = "That screen name is already in use. Please choose another one."
TAKEN_AT_START = "Your screen name is already in use on the network. Please choose another one."


class Dialog:
    """The options dialog of a copy."""

    def __init__(self, copy):
        self.copy = copy
        self.probe = copy.probe
        self.window = self.probe.wait_for("frmOpt")

    def control(self, number):
        return next(c for c in self.probe.children(self.window) if c.id == number)

    def name(self, text):
        self.probe.set_text(self.control(NAME_BOX), text)

    def press(self, command):
        self.probe.post(self.window, probe.WM_COMMAND, command)

    def refused(self):
        """Presses Accept and returns what the box says that refuses it."""
        self.press(ACCEPT)
        box, text = self.copy.wait_for_box()
        self.probe.answer(box)
        return text

    def accept(self):
        self.press(ACCEPT)
        self.probe.wait_gone(self.window)


def open_options(copy):
    copy.probe.post(copy.probe.wait_for("frmMain", visible=False), probe.WM_COMMAND, OPTIONS_COMMAND)
    return Dialog(copy)


class NewSettings(unittest.TestCase):
    """Two copies; one of them changes its settings."""

    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.anna = cls.rig.copy("anna", network.Host())
        cls.bob = cls.rig.copy("bob", network.Host(), on_screen=screen.Screen())
        cls.anna.write_settings("Anna", groups=["Friends|bob|", "Rest|dora|"])
        for copy in (cls.anna, cls.bob):
            copy.start()
        for name in ("Anna", "bob"):
            cls.wire.wait_for(f"{name}|M/{name} {GREETING}", 40)
        probe.wait(lambda: cls.anna.names() == {"(All)", "Anna", "bob"} == cls.bob.names())

    def test_1_names_of_others_are_refused(self):
        dialog = open_options(self.anna)
        dialog.name("BOB")
        self.assertEqual(dialog.refused(), TAKEN)
        dialog.name("???")
        self.assertIn("letter or digit", dialog.refused())
        dialog.press(CLOSE)
        self.anna.probe.wait_gone(dialog.window)
        self.assertIn('"Anna",0,4', self.anna.read("User.ini"))

    def test_2_name_and_colour_reach_the_other_copy(self):
        start = self.wire.mark()
        dialog = open_options(self.anna)
        dialog.name("  Carla ")
        swatches = next(c for c in self.anna.probe.children(dialog.window, "SysListView32"))
        self.anna.probe.select_only(swatches, RED)
        self.anna.prefix.screen.save(copies.PICTURES + "/options.png")
        dialog.accept()
        self.wire.wait_for(f"Carla|M/Carla {GREETING}", start=start)
        self.assertEqual([p for p in self.wire.texts(start=start) if p.startswith(("Anna|", "Carla|"))][:4],
                         ["Anna|L/", "Carla|C/ 255", "Carla|S/0", f"Carla|M/Carla {GREETING}"])
        probe.wait(lambda: self.bob.names() == {"(All)", "Carla", "bob"})
        # The groups have their rows now, below the users.
        probe.wait(lambda: self.anna.names() == {"(All)", "Carla", "bob", "(Friends)", "(Rest)"})
        self.assertIn('"Carla",255,4,"(S)",0', self.anna.read("User.ini"))
        # An alert to a group goes to each of its members who is present.
        self.anna.send_alert("(Friends)", "Who joins?")
        self.wire.wait_for("Carla|P/\xdfWho joins?|bob", start=start)
        popup, texts = self.bob.popup_at_rest()
        self.assertEqual(texts, ["Who joins?\r\n"])
        self.bob.probe.post(popup, probe.WM_CLOSE)

    def test_3_a_language_is_taken_over_by_every_window(self):
        composer = self.anna.open_composer("(All)")
        self.anna.probe.post(self.anna.probe.wait_for("frmMain", visible=False), probe.WM_COMMAND, CHAT_WITH_ALL_COMMAND)
        chat = self.anna.probe.wait_for("frmChat")
        self.wire.send("eve|M/\xdfHello!")
        popup, _ = self.anna.popup_at_rest()
        dialog = open_options(self.anna)
        self.assertEqual([w.enabled for w in self._windows(("frmMain", "frmCom", "frmChat", "frmPop"))], [False] * 4)
        self.anna.probe.send(dialog.control(LANGUAGE_BOX), CB_SETCURSEL, 2)
        dialog.press(ACCEPT)
        box, text = self.anna.wait_for_box()
        self.assertEqual((box.text, text),
                         ("Language", "M\xf6chten Sie die Sprache jetzt \xe4ndern?\r\n\r\n"
                                      "Do you want to change the language now?"))
        self.anna.probe.answer(box, "Yes")
        self.anna.probe.wait_gone(dialog.window)
        self.assertEqual([(w.text, w.enabled) for w in self._windows(("frmCom", "frmChat", "frmPop"))],
                         [("Nachricht senden - Quillon", True), ("Chat - Quillon", True), ("Quillon", True)])
        self.assertTrue(self.anna.read("User.ini").startswith('"Deutsch"\r\n'))
        for window in (composer, chat, popup):
            self.anna.probe.post(window, probe.WM_CLOSE)
            self.anna.probe.wait_gone(window)
        self.assertEqual(self._reopened_caption(), "Optionen - Quillon")

    def test_4_no_keeps_the_language_until_the_next_start(self):
        dialog = open_options(self.anna)
        self.anna.probe.send(dialog.control(LANGUAGE_BOX), CB_SETCURSEL, 0)
        dialog.press(ACCEPT)
        box, text = self.anna.wait_for_box()
        self.assertEqual(text, "Do you want to change the language now?")
        self.anna.probe.answer(box, "No")
        self.anna.probe.wait_gone(dialog.window)
        self.assertTrue(self.anna.read("User.ini").startswith('"English"\r\n'))
        self.assertEqual(self._reopened_caption(), "Optionen - Quillon")

    def _windows(self, class_names):
        return [self.anna.probe.windows(name)[0] for name in class_names]

    def _reopened_caption(self):
        dialog = open_options(self.anna)
        dialog.press(CLOSE)
        self.anna.probe.wait_gone(dialog.window)
        return dialog.window.text

    def test_5_whom_the_dialog_blocks_is_not_heard(self):
        dialog = open_options(self.anna)
        dialog.press(SECURITY_PAGE)
        self.anna.probe.set_text(dialog.control(BLOCK_BOX), "BOB")
        dialog.press(BLOCK_ENTER)
        dialog.accept()
        probe.wait(lambda: "bob" in self.anna.names())
        self.assertIn('1\r\n"Bob"\r\n', self.anna.read("User.ini"))
        start = self.wire.mark()
        self.wire.send("bob|M/\xdfHello?")
        self.wire.send("eve|M/\xdfHello!")
        popup, texts = self.anna.popup_at_rest()
        self.assertEqual(texts, ["Hello!\r\n"])
        self.assertEqual(len(self.anna.probe.windows("frmPop")), 1)
        self.assertIn("eve|M/\xdfHello!", self.wire.texts(start=start))

    def test_6_settings_that_cannot_be_saved_are_told(self):
        dialog = open_options(self.anna)
        dialog.name("Dora")
        saved = self.anna.read("User.ini")
        os.remove(f"{self.anna.folder}/User.ini")
        os.mkdir(f"{self.anna.folder}/User.ini")
        self.assertEqual(dialog.refused(), "Run-time error '75':\r\n\r\nPath/File access error")
        self.assertTrue(self.anna.probe.windows("frmOpt"))
        os.rmdir(f"{self.anna.folder}/User.ini")
        self.anna.write("User.ini", saved)
        dialog.accept()
        self.assertIn('"Dora",255', self.anna.read("User.ini"))


class _Conflict:
    """Somebody else bears the configured screen name, in another case."""

    def _conflict(self):
        """A copy of "anna" that has been told so, with its dialog."""
        self.rig = copies.Rig()
        self.copy = self.rig.copy("anna").start()
        self.rig.wire.wait_for("_anna|S/0")
        self.rig.wire.send("ANNA|C/ 0")
        box, text = self.copy.wait_for_box()
        self.assertEqual((box.text, text), ("Quillon", TAKEN_AT_START))
        self.copy.probe.answer(box)
        return Dialog(self.copy)


class ConflictSettled(_Conflict, unittest.TestCase):
    def test_another_name_goes_on(self):
        dialog = self._conflict()
        self.assertEqual(dialog.refused(), TAKEN)
        start = self.rig.wire.mark()
        dialog.name("Berta")
        dialog.accept()
        self.rig.wire.wait_for(f"Berta|M/Berta {GREETING}", start=start)
        # The first joining is quiet, the greeting comes when start-up goes on.
        texts = [t for t in self.rig.wire.texts(start=start) if "|M/Berta" in t or "|L/" in t]
        self.assertEqual(texts, ["anna|L/", "Berta|L/", f"Berta|M/Berta {GREETING}"])
        self.assertIn('"Berta",0,4', self.copy.read("User.ini"))
        self.assertTrue(self.copy.runs())


class ConflictClosed(_Conflict, unittest.TestCase):
    def test_closing_the_dialog_ends_the_program(self):
        dialog = self._conflict()
        self.copy.probe.post(dialog.window, probe.WM_CLOSE)  # its X; the button is dispatched to the same place
        self.copy.process.wait(15)
        self.assertEqual(self.copy.log()[-1], "Quillon unloaded")
        self.assertEqual(self.rig.wire.texts("anna"), ["anna|L/"])
        self.assertIn('"anna",0,4', self.copy.read("User.ini"))
