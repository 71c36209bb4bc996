"""Three copies on three hosts of one segment: alerts, conversations, and new settings."""

import filecmp
import os
import random
import subprocess
import unittest

from rig import copies, ids, network, probe, screen
from test_one_copy import GREETING

CB_SETCURSEL = 0x014E
RED = 12


class Desks(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.anna = cls.rig.copy("anna", network.Host())
        cls.bob = cls.rig.copy("bob", network.Host(), on_screen=screen.Screen())
        cls.carla = cls.rig.copy("carla", network.Host(), on_screen=screen.Screen())
        cls.everybody = (cls.anna, cls.bob, cls.carla)
        cls.anna.write_settings("Anna")
        cls.bob.write_settings("Bob", position=2, colour=255)
        for copy in cls.everybody:
            copy.start()
        names = ("Anna", "Bob", "carla")
        for name in names:
            cls.wire.wait_for(f"{name}|M/{name} {GREETING}")
        for copy in cls.everybody:
            probe.wait(lambda copy=copy: copy.names() == {"(All)", *names})

    def tearDown(self):
        """Closes all popups and chat windows."""
        for copy in self.everybody:
            for window in copy.probe.windows("frmPop") + copy.probe.windows("frmChat") if copy.runs() else ():
                copy.probe.close(window)

    @staticmethod
    def _wait_said(copy, window, text):
        probe.wait(lambda: copy.said(window) == text, complaint=f"{copy.user} does not see {text!r}")

    @staticmethod
    def _participants(copy, window):
        return [name for name, _ in copy.probe.rows(copy.probe.children(window, "SysListView32")[0])]

    def test_1_alerts_to_one_and_to_all(self):
        start = self.wire.mark()
        self.anna.send_alert("Bob", "Tea is \xe0 point")
        self.wire.wait_for("Anna|P/\xdfTea is \xe0 point|Bob", start=start)
        popup, texts = self.bob.popup_at_rest()
        self.bob.prefix.screen.save(copies.SCREENSHOTS + "/alert.png")
        self.assertEqual((popup.text, texts), ("Quillon", ["Tea is \xe0 point\r\n"]))
        self.assertEqual(self.anna.probe.windows("frmPop") + self.carla.probe.windows("frmPop"), [])
        self.assertEqual(self.anna.log()[-1], "Private alert sent to Bob")

        self.bob.send_alert("(All)", "Fire drill at ten\r\nMind the stairs")
        for copy in (self.anna, self.carla):
            _, texts = copy.popup_at_rest()
            self.assertEqual(texts, ["Fire drill at ten\r\nMind the stairs\r\n"])
        self.assertEqual(self.bob.log()[-1], "alert sent to all")

    def test_2_a_conversation_in_public_and_in_private(self):
        start = self.wire.mark()
        at_anna = self.anna.open_chat("(All)")
        self.anna.say(at_anna, "Who has the keys?")
        self.wire.wait_for("Anna|M/\xdeWho has the keys?", start=start)
        line = "Anna:\tWho has the keys?\r\n"
        self._wait_said(self.anna, at_anna, line)
        at_bob, at_carla = (copy.probe.wait_for("frmChat") for copy in (self.bob, self.carla))
        for copy, window in ((self.bob, at_bob), (self.carla, at_carla)):
            self._wait_said(copy, window, line)
            self.assertEqual((window.text, self._participants(copy, window)), ("Chating - Quillon", ["Anna"]))
            self.assertEqual(copy.log()[-2:], ["Anna Added to chat window", "New chat window opened"])

        # The answer only goes to its participant, whose window shows everybody's lines.
        self.bob.say(at_bob, "Not I, {\\b sorry}")
        self.wire.wait_for("Bob|P/\xdeNot I, {\\b sorry}|Anna", start=start)
        self._wait_said(self.anna, at_anna, line + "Bob:\tNot I, {\\b sorry}\r\n")
        self.anna.prefix.screen.save(copies.SCREENSHOTS + "/chat.png")
        self.assertEqual((self.bob.said(at_bob), self.carla.said(at_carla)), (line, line))
        self.assertEqual([len(copy.probe.windows("frmChat")) for copy in self.everybody], [1, 1, 1])

    @staticmethod
    def _export(copy, kind):
        """Saves a conversation as a file of the first or the second kind; returns its path."""
        copy.probe.command(copy.probe.wait_for("frmChat"), ids.CHAT.mnuExportT)
        dialog = copy.probe.wait_for("frmSave")
        assert dialog.text == "Export Chat", dialog.text
        copy.probe.send(copy.probe.control(dialog, ids.SAVE.kType), CB_SETCURSEL, kind)
        copy.probe.set_text(copy.probe.children(dialog, "Edit")[0], "C:\\whole")
        copy.probe.command(dialog, ids.SAVE.kSave)
        path = f"{copy.prefix.drive_c}/whole.{('txt', 'rtf')[kind]}"
        probe.wait(lambda: os.path.exists(path))
        return path

    def test_3_a_conversation_of_3000_lines_is_exported_whole(self):
        chance, letters = random.Random(4), bytes(range(32, 127)).decode() + "\t  " + "\xc4\xdf\xe9\xff"
        desks = [(copy, name, copy.probe.children(copy.open_chat("(All)"), "Edit")[0])
                 for copy, name in ((self.anna, "Anna"), (self.bob, "Bob"))]
        said, start = [], self.wire.mark()

        def new_line(sender):
            size = int(20 * 1000 ** chance.random() ** 8)
            said.append(f"{sender}:\t" + f"{len(said)} {''.join(chance.choices(letters, k=size))}"[:size] + "\r\n")
            return said[-1][len(sender) + 2:-2]

        while len(said) < 3000:
            for _ in range(28):
                self.wire.send(f"dora|M/\xde{new_line('dora')}")
            for copy, name, typed in desks:
                line = new_line(name)
                copy.probe.set_text(typed, line)
                copy.probe.post(typed, probe.WM_KEYDOWN, probe.VK_RETURN)
                self.wire.wait_for(f"{name}|M/\xde{line}", start=start)
                start = self.wire.mark()
        for copy, name, _ in desks:
            self.wire.send(f"dora|P/\xdfThat was all|{name}")
            copy.probe.wait_for("frmPop")
            self.assertEqual(len(copy.probe.windows("frmChat")), 1)
            with open(self._export(copy, 0), "rb") as file:
                self.assertTrue(file.read().decode("latin-1") == "".join(said))
        formatted = [self._export(copy, 1) for copy, _, _ in desks]
        self.assertTrue(filecmp.cmp(*formatted, shallow=False))
        read = subprocess.run(["unrtf", "--text", formatted[0]], capture_output=True, check=True).stdout
        _, _, text = read.decode("latin-1").partition("-----------------\n")
        self.assertTrue(text.replace("\n", "\r\n") == "".join(said))

    def test_4_name_and_colour_reach_the_others(self):
        start = self.wire.mark()
        dialog = self.anna.open_options()
        self.anna.probe.set_text(self.anna.probe.control(dialog, ids.OPTIONS.kNameBox), "  Berta ")
        self.anna.probe.select_only(self.anna.probe.children(dialog, "SysListView32")[0], RED)
        self.anna.prefix.screen.save(copies.SCREENSHOTS + "/options.png")
        self.anna.probe.command(dialog, ids.OPTIONS.kAcceptButton)
        self.anna.probe.wait_gone(dialog)
        self.wire.wait_for(f"Berta|M/Berta {GREETING}", start=start)
        self.assertEqual([p for p in self.wire.texts(start=start) if p.startswith(("Anna|", "Berta|"))][:4],
                         ["Anna|L/", "Berta|C/ 255", "Berta|S/0", f"Berta|M/Berta {GREETING}"])
        probe.wait(lambda: {"Berta", "Anna"} & self.bob.names() == {"Berta"})
        self.assertIn('"Berta",255,4,"(S)",0', self.anna.read("User.ini"))

    def _choose_language(self, number, answer):
        """Accepts another language and answers the question; returns its title and text."""
        dialog = self.anna.open_options()
        self.anna.probe.send(self.anna.probe.control(dialog, ids.OPTIONS.kLanguageBox), CB_SETCURSEL, number)
        self.anna.probe.command(dialog, ids.OPTIONS.kAcceptButton)
        box, text = self.anna.wait_for_box()
        self.anna.probe.answer(box, answer)
        self.anna.probe.wait_gone(dialog)
        return box.text, text

    def test_5_a_language_applies_to_every_window_or_at_the_next_start(self):
        composer, _ = self.anna.open_composer("(All)"), self.anna.open_chat("(All)")
        self.wire.send("eve|M/\xdfHello!")
        self.anna.popup_at_rest()

        def windows(*names):
            return [self.anna.probe.windows(name)[0] for name in names]

        dialog = self.anna.open_options()
        self.assertEqual([w.enabled for w in windows("frmMain", "frmCom", "frmChat", "frmPop")], [False] * 4)
        self.anna.probe.close(dialog)
        self.assertEqual(self._choose_language(2, "Yes"),
                         ("Language", "M\xf6chten Sie die Sprache jetzt \xe4ndern?\r\n\r\n"
                                      "Do you want to change the language now?"))
        self.assertEqual([(w.text, w.enabled) for w in windows("frmCom", "frmChat", "frmPop")],
                         [("Nachricht senden - Quillon", True), ("Chat - Quillon", True), ("Quillon", True)])
        self.assertTrue(self.anna.read("User.ini").startswith('"Deutsch"\r\n'))
        self.anna.probe.close(composer)

        self.assertEqual(self._choose_language(0, "No")[1], "Do you want to change the language now?")
        self.assertTrue(self.anna.read("User.ini").startswith('"English"\r\n'))
        dialog = self.anna.open_options()
        self.assertEqual(dialog.text, "Optionen - Quillon")
        self.anna.probe.close(dialog)
