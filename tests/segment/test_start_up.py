"""Start-up and shutdown of one copy, seen from the wire, its files and its windows."""

import os
import time
import unittest

from rig import copies, probe

GREETING = "is now on the network"
DEFAULT_SETTINGS = '"English"\r\n0\r\n0,0,2505,4605\r\n"{0}","0","4","(B)","0"\r\n0,0,0,0\r\n"0"\r\n""\r\n"0"\r\n""\r\n'


class FirstStart(unittest.TestCase):
    """A copy in a fresh folder on a network where nobody else is. The tests run in the order of their numbers."""

    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.copy = cls.rig.copy("anna").start()
        cls.greeting = cls.wire.wait_for(f"anna|M/anna {GREETING}", 30)
        cls.wire.wait_for("anna|S/0", start=cls.wire.texts().index(cls.greeting.text))
        time.sleep(0.5)

    def test_1_joins_under_a_temporary_name_then_under_its_own(self):
        # Its own first packets come back to it, so it answers itself once under either name.
        quiet = ["_anna|C/ 0", "_anna|S/0", "_anna|M/", "_anna|C/ 0", "_anna|S/0", "_anna|L/"]
        joined = ["anna|C/ 0", "anna|S/0", self.greeting.text, "anna|M/", "anna|C/ 0", "anna|S/0"]
        self.assertEqual(self.wire.texts(), quiet + joined)

    def test_1_listens_for_ten_seconds(self):
        first, leave = self.wire.packets("_anna")[0], self.wire.packets("_anna")[-1]
        self.assertAlmostEqual(leave.time - first.time, 10.0, delta=1)
        self.assertLess(self.greeting.time - leave.time, 3)  # at once, but for a machine that is busy

    def test_1_writes_and_reads_default_settings(self):
        self.assertEqual(self.copy.read("User.ini"), DEFAULT_SETTINGS.format("anna"))
        self.assertEqual(self.copy.log(), ["Quillon loaded", "  > Settings and language loaded"])

    def test_1_waits_in_the_notification_area(self):
        for class_name in ("frmMain", "frmSplash"):
            self.assertEqual([window.visible for window in self.copy.probe.windows(class_name)], [False])

    def test_2_shows_itself_from_the_notification_area(self):
        self.copy.show_main()
        self.rig.screen.save(copies.PICTURES + "/main.png")
        self.assertEqual([row[0] for row in self.copy.roster()], ["(All)", "anna"])

    def test_3_answers_a_newcomer_once(self):
        start = self.wire.mark()
        self.wire.send("bob|C/255")
        self.wire.wait_for("anna|S/0", start=start)
        self.wire.send("bob|S/1")
        self.wire.send("bob|S/7")
        self.wire.send("_carl|M/")
        probe.wait(lambda: self.wire.texts("anna", start).count("anna|S/0") == 2)
        time.sleep(0.3)
        self.assertEqual(self.wire.texts("anna", start), ["anna|M/", "anna|C/ 0", "anna|S/0"] * 2)
        self.assertEqual(self.copy.roster()[1:], [("anna", "Available"), ("bob", "Alerts Only")])
        self.assertEqual(self.copy.log()[-1], "Unknow Data Receved (bob: 7)")

    def test_4_forgets_who_leaves(self):
        self.wire.send("bob|L/")
        probe.wait(lambda: [row[0] for row in self.copy.roster()] == ["(All)", "anna"])

    def test_5_refuses_a_second_copy(self):
        start, log = self.wire.mark(), self.copy.read("Log.txt")
        second = self.copy.start_another()
        box, text = self.copy.wait_for_box()
        self.assertEqual((box.text, text), ("Quillon", "Previous Instance"))
        self.copy.probe.answer(box)
        second.wait(10)
        self.assertTrue(self.copy.runs())
        self.assertEqual((self.wire.texts(start=start), self.copy.read("Log.txt")), ([], log))

    def test_6_leaves_in_order(self):
        start = self.wire.mark()
        self.copy.close()
        leave = self.wire.wait_for("anna|L/", start=start)
        self.assertEqual(self.wire.texts(start=start), ["anna|L/"])
        self.assertEqual(self.copy.log()[-1], "Quillon unloaded")
        self.assertIsNone(self.copy.run_value())
        saved, logged = (os.stat(f"{self.copy.folder}/{name}").st_mtime for name in ("User.ini", "Log.txt"))
        tolerance = 0.02  # the file system's clock is a coarse one
        self.assertLess(saved, leave.time + tolerance)
        self.assertGreater(logged, leave.time - tolerance)


class KnownUser(unittest.TestCase):
    """A copy with settings of its own, on a network with others."""

    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.copy = cls.rig.copy("logon")
        cls.copy.write_settings("Anna", colour=255, run_at_logon=1, blocked=["bob"],
                                groups=["Friends|bob|carl|", "Rest|dora|"])
        cls.copy.start()
        cls.wire.wait_for("_logon|S/0")
        # Two that join at the same time: one already known by name, one who is listening as well.
        for _ in range(3):
            cls.wire.send("bob|C/65280")
            cls.wire.send("_other|C/ 0")
            time.sleep(0.2)
        cls.wire.wait_for(f"Anna|M/Anna {GREETING}", 30)

    def test_1_answers_another_listener_only_once(self):
        # Its own echo, bob, and the first of three packets of "_other"; more would let two listeners answer for ever.
        answers = self.wire.texts("_logon").count("_logon|M/")
        self.assertEqual(answers, 3)

    def test_2_starts_with_an_empty_roster(self):
        rows = [row[0] for row in self.copy.roster()]
        self.assertNotIn("bob", rows)
        self.assertEqual(rows[0], "(All)")

    def test_3_announces_its_colour(self):
        self.assertIn("Anna|C/ 255", self.wire.texts())

    def test_4_saves_what_it_keeps(self):
        self.copy.close()
        records = self.copy.read("User.ini").split("\r\n")
        self.assertEqual(records[0:2], ['"English"', "0"])
        self.assertEqual(records[3], '"Anna",255,4,"(S)",1')
        # The blocked names do not survive a start, the groups do.
        self.assertEqual(records[5:], ["0", "2", '"Friends|bob|carl|"', '"Rest|dora|"', ""])

    def test_5_enters_itself_into_the_logon_list(self):
        kind, size, text = self.copy.run_value()
        self.assertEqual((kind, text.rstrip("\0")), (1, "C:\\Quillon\\Quillon"))
        # The length is given without the closing zero; the system keeps that zero where it follows in memory.
        self.assertIn(size, (18, 19))
