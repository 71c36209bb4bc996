"""A copy with missing files, a taken name or port, or no network."""

import os
import unittest

from rig import copies, ids, network, probe, wire
from test_one_copy import DEFAULT_SETTINGS, GREETING

PLAIN = "Quillon"
TAKEN = "That screen name is already in use. Please choose another one."
TAKEN_AT_START = "Your screen name is already in use on the network. Please choose another one."


class Trouble(unittest.TestCase):
    """Copies on separate hosts, all started together."""

    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.no_texts, cls.no_port, cls.settled, cls.closed = (
            cls.rig.copy(name, network.Host()) for name in ("notexts", "noport", "anna", "dora"))
        cls.alone = cls.rig.copy("alone", network.Host())
        cls.alone.host.unplug()
        os.remove(f"{cls.no_texts.folder}/Lang.con")
        cls.holder = wire.hold_port(cls.no_port.host)
        for copy in (cls.settled, cls.closed, cls.no_texts, cls.no_port, cls.alone):
            copy.start()
        probe.wait(lambda: all([cls._taken(name) for name in ("anna", "dora")]))

    @classmethod
    def _taken(cls, name):
        """Another user has the name, in different case, once its owner listens."""
        if f"_{name}|S/0" in cls.wire.texts() and f"{name.upper()}|C/ 0" not in cls.wire.texts():
            cls.wire.send(f"{name.upper()}|C/ 0")
        return f"{name.upper()}|C/ 0" in cls.wire.texts()

    def _expect_box(self, copy, title, text):
        box, shown = copy.wait_for_box()
        self.assertEqual(box.text, title)
        self.assertRegex(shown, text)
        copy.probe.answer(box)

    def test_1_without_a_language_file_built_in_texts_are_used(self):
        self._expect_box(self.no_texts, "Language Error", "^Error reading language files. Cannot find code ")
        self.assertTrue(self.no_texts.read("User.ini").startswith(DEFAULT_SETTINGS.format("notexts")))
        self.wire.wait_for("notexts|M/notexts ")
        self.assertEqual(self.no_texts.probe.windows("#32770"), [])

    def test_2_a_port_held_by_another_program(self):
        self._expect_box(self.no_port, PLAIN,
                         r"^Quillon could not be loaded: & 100(13: Permission denied|48: Address already in use)$")
        self.assertRegex(self.no_port.log()[-1], r"^Unable to load: 100(13|48): ")
        # It keeps running, and shows its splash window.
        self.assertTrue(self.no_port.runs())
        self.assertTrue(self.no_port.probe.wait_for("frmSplash").visible)

    def test_3_no_network_until_later(self):
        main = self.alone.probe.wait_for("frmMain", visible=False)
        probe.wait(lambda: not any(w.visible for w in self.alone.probe.windows("frmSplash")))
        self.assertEqual(self.alone.probe.windows("#32770"), [])
        self.assertTrue(self.alone.runs() and main)
        self.alone.host.plug()
        self.wire.wait_for(f"alone|M/alone {GREETING}")
        self.assertEqual(self.alone.log(), ["Quillon loaded", "  > Settings and language loaded",
                                            "Unable to send: 10051: Network is unreachable"])

    def test_4_a_taken_name_is_replaced_in_the_options(self):
        self._expect_box(self.settled, PLAIN, TAKEN_AT_START)
        dialog, operate = self.settled.probe.wait_for("frmOpt"), self.settled.probe
        operate.command(dialog, ids.OPTIONS.kAcceptButton)
        self._expect_box(self.settled, PLAIN, TAKEN)
        start = self.wire.mark()
        operate.set_text(operate.control(dialog, ids.OPTIONS.kNameBox), "Berta")
        operate.command(dialog, ids.OPTIONS.kAcceptButton)
        self.wire.wait_for(f"Berta|M/Berta {GREETING}", start=start)
        # The first join is silent; the greeting follows when start-up continues.
        texts = [t for t in self.wire.texts(start=start) if "|M/Berta" in t or t in ("anna|L/", "Berta|L/")]
        self.assertEqual(texts, ["anna|L/", "Berta|L/", f"Berta|M/Berta {GREETING}"])
        self.assertIn('"Berta",0,4', self.settled.read("User.ini"))

    def test_5_closing_those_options_ends_the_program(self):
        self._expect_box(self.closed, PLAIN, TAKEN_AT_START)
        self.closed.probe.post(self.closed.probe.wait_for("frmOpt"), probe.WM_CLOSE)  # as the Close button does
        self.closed.process.wait(probe.TIMEOUT)
        self.assertEqual(self.closed.log()[-1], "Quillon unloaded")
        self.assertEqual(self.wire.texts("dora"), ["dora|L/"])
        self.assertIn('"dora",0,4', self.closed.read("User.ini"))
