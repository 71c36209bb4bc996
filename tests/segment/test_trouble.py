"""What a copy does when its files, its folder, its port or its network are not as they should be."""

import os
import unittest

from rig import copies, network, probe, wire
from .test_start_up import DEFAULT_SETTINGS, GREETING

PLAIN = "Quillon"


class DamagedFiles(unittest.TestCase):
    """Copies with damaged files, each on a host of its own and all started together."""

    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.copies = {}
        for name, damage in (("wide", cls._wide_window), ("empty", cls._empty_settings), ("nolang", cls._no_language_file),
                             ("fields", cls._eleven_fields), ("klingon", cls._no_english), ("gap", cls._missing_code)):
            copy = cls.copies[name] = cls.rig.copy(name, network.Host())
            copy.write_settings()
            damage(copy)
            copy.start()

    @staticmethod
    def _wide_window(copy):
        copy.write("User.ini", copy.read("User.ini").replace("300,300,2505", "40000,300,2505"))

    @staticmethod
    def _empty_settings(copy):
        copy.write("User.ini", "")

    @staticmethod
    def _no_language_file(copy):
        os.remove(f"{copy.folder}/Lang.con")

    @staticmethod
    def _eleven_fields(copy):
        lines = copy.read("Lang.con").split("\r\n")
        lines[5] += "," * (10 - lines[5].count(","))
        copy.write("Lang.con", "\r\n".join(lines))

    @staticmethod
    def _no_english(copy):
        copy.write("Lang.con", copy.read("Lang.con").replace("English", "Klingon", 1))

    @staticmethod
    def _missing_code(copy):
        lines = copy.read("Lang.con").split("\r\n")
        copy.write("Lang.con", "\r\n".join(line for line in lines if not line.startswith(("1002,", "1003,"))))

    def _expect_box(self, name, title, text):
        copy = self.copies[name]
        box, shown = copy.wait_for_box()
        self.assertEqual((box.text, shown), (title, text))
        copy.probe.answer(box)
        return copy

    def _expect_running(self, copy, greeting=GREETING):
        self.rig.wire.wait_for(f"{copy.user}|M/{copy.user} {greeting}", 30)
        self.assertEqual(copy.probe.windows("#32770"), [])

    def test_1_missing_code_is_reported_once(self):
        copy = self._expect_box("gap", "Language Error", "Error reading language files. Cannot find code 1002")
        self._expect_running(copy)
        self.assertEqual([line for line in copy.log() if "text code" in line], ["Cannot find text code 1002"])

    def test_2_no_language_at_all(self):
        copy = self._expect_box("klingon", PLAIN, "Error reading language files. No languages available")
        probe.wait(lambda: "Cannot find default language or English" in copy.log())
        # The settings fall with the language, once the box is answered.
        probe.wait(lambda: copy.read("User.ini") == DEFAULT_SETTINGS.format("klingon"))

    def test_3_language_files_that_cannot_be_read_cost_the_settings(self):
        for name in ("nolang", "fields"):
            with self.subTest(name):
                copy = self.copies[name]
                box, text = copy.wait_for_box()
                self.assertEqual(box.text, "Language Error")
                self.assertTrue(text.startswith("Error reading language files. Cannot find code "), text)
                self.assertEqual(copy.read("User.ini"), DEFAULT_SETTINGS.format(name))
                copy.probe.answer(box)
                self._expect_running(copy, greeting="")

    def test_4_empty_settings(self):
        copy = self.copies["empty"]
        box, _ = copy.wait_for_box()
        self.assertEqual(box.text, "Language Error")
        copy.probe.answer(box)
        self.assertEqual(copy.read("User.ini"), DEFAULT_SETTINGS.format("empty"))
        self._expect_running(copy, greeting="")

    def test_5_unreadable_settings_are_replaced(self):
        copy = self.copies["wide"]
        self._expect_running(copy)
        self.assertEqual(copy.read("User.ini"), DEFAULT_SETTINGS.format("wide"))


class Hindered(unittest.TestCase):
    """Copies that may not write, may not have the port or have no network, each on a host of its own."""

    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.no_settings = cls.rig.copy("nosettings", network.Host())
        os.mkdir(f"{cls.no_settings.folder}/User.ini")
        cls.no_log = cls.rig.copy("nolog", network.Host())
        cls.no_log.write_settings()
        os.mkdir(f"{cls.no_log.folder}/Log.txt")
        cls.no_port = cls.rig.copy("noport", network.Host())
        cls.holder = wire.hold_port(cls.no_port.host)
        cls.alone = cls.rig.copy("alone", network.Host(joined=False))
        cls.spoilt = cls.rig.copy("spoilt", network.Host())
        cls.all = (cls.no_settings, cls.no_log, cls.no_port, cls.alone, cls.spoilt)
        for copy in cls.all:
            copy.start()

    def test_1_settings_that_cannot_be_written(self):
        box, text = self.no_settings.wait_for_box()
        # Without settings no language was loaded, so the sentence in front is missing.
        self.assertEqual((box.text, text), (PLAIN, ": & 75: Path/File access error"))
        self.assertIn("Unable to load: 75: Path/File access error", self.no_settings.log())

    def test_2_a_port_held_by_another_program(self):
        box, text = self.no_port.wait_for_box()
        self.assertEqual(box.text, PLAIN)
        self.assertRegex(text, r"^Quillon could not be loaded: & 100(13: Permission denied|48: Address already in use)$")
        self.assertRegex(self.no_port.log()[-1], r"^Unable to load: 100(13|48): ")
        self.no_port.probe.answer(box)
        # What was loaded stays as it is.
        self.assertTrue(self.no_port.runs())
        self.assertTrue(self.no_port.probe.wait_for("frmSplash").visible)

    def test_3_a_log_that_cannot_be_written(self):
        for event in ("Quillon loaded", "  > Settings and language loaded"):
            box, text = self.no_log.wait_for_box()
            self.assertEqual(box.text, PLAIN)
            self.assertTrue(text.startswith("Error writing to Log file. Text to write:\r\n\r\n" + event +
                                            "\r\n\r\nPlease contact Vextant at "), text)
            self.no_log.probe.answer(box)

        def joined():
            # The greetings of the others are events too, and each brings its box.
            for box in self.no_log.probe.windows("#32770"):
                self.no_log.probe.answer(box)
            return f"nolog|M/nolog {GREETING}" in self.rig.wire.texts("nolog")

        probe.wait(joined, 30)

    def test_4_no_network(self):
        main = self.alone.probe.wait_for("frmMain", visible=False)
        probe.wait(lambda: not any(w.visible for w in self.alone.probe.windows("frmSplash")), 30)
        self.assertEqual(self.alone.probe.windows("#32770"), [])
        self.assertEqual(self.alone.log(), ["Quillon loaded", "  > Settings and language loaded"])
        self.assertTrue(self.alone.runs() and main)

    def test_5_settings_that_cannot_be_saved(self):
        self.rig.wire.wait_for(f"spoilt|M/spoilt {GREETING}", 30)
        os.remove(f"{self.spoilt.folder}/User.ini")
        os.mkdir(f"{self.spoilt.folder}/User.ini")
        start = self.rig.wire.mark()
        self.spoilt.probe.post(self.spoilt.probe.wait_for("frmMain", visible=False), probe.WM_CLOSE)
        box, text = self.spoilt.wait_for_box()
        self.assertEqual((box.text, text), (PLAIN, "Run-time error '75':\r\n\r\nPath/File access error"))
        self.spoilt.probe.answer(box)
        self.spoilt.process.wait(15)
        # The remaining steps are left out: no word of leaving, no closing line.
        self.assertNotIn("spoilt|L/", self.rig.wire.texts("spoilt", start))
        self.assertNotIn("Quillon unloaded", self.spoilt.log())
