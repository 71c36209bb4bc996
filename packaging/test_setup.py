"""The release built by script/package: Bob unpacks the zip, Anna runs the setup program, updates while her copy runs, and
uninstalls. The tests run in the order of their numbers."""

import filecmp
import os
import pathlib
import shutil
import subprocess
import unittest
import zipfile

from rig import copies, ids, network, probe, screen
from test_one_copy import GREETING

GERMAN_GREETING = "ist jetzt im Netzwerk"
PACKAGE = pathlib.Path(__file__).resolve().parents[1] / "build/package"
ABORTED, FOLDER_REFUSED = 2, 3
SETTINGS = '"Deutsch"\r\n0\r\n0,0,2505,4605\r\n"anna",0,4,"(B)",1\r\n0,0,0,0\r\n0\r\n0\r\n'
WINDOWS = "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion"
LINK = "C:\\users\\anna\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs\\Quillon.lnk"
FOLDER = "C:\\users\\anna\\AppData\\Local\\Programs\\Quillon"


class Setup(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.setup_program, = PACKAGE.glob("Quillon-*-setup.exe")
        cls.version = cls.setup_program.name.split("-")[1]
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        cls.anna = cls.rig.copy("anna", network.Host(), locale="de_DE")
        cls.bob = cls.rig.copy("bob", network.Host(), on_screen=screen.Screen())
        for copy in (cls.anna, cls.bob):
            shutil.rmtree(copy.folder)
        with zipfile.ZipFile(PACKAGE / f"Quillon-{cls.version}.zip") as pack:
            pack.extractall(cls.bob.prefix.drive_c)
        cls.anna.folder = cls._path(FOLDER)
        shutil.copy(cls.setup_program, cls.anna.prefix.drive_c + "/setup.exe")

    @classmethod
    def _path(cls, name):
        return cls.anna.prefix.drive_c + name[2:].replace("\\", "/")

    def _run(self, *arguments):
        return self.anna.prefix.start("C:\\setup.exe", "/S", *arguments).wait()

    def _uninstall(self, folder, *arguments):
        """Runs a copy of the uninstaller, because with _?= it cannot delete itself."""
        installed = self._path(folder) + "/Uninstall.exe"
        if os.path.exists(installed):
            shutil.copy(installed, self._path("C:\\uninstall.exe"))
        self.anna.prefix.start("C:\\uninstall.exe", "/S", *arguments, "_?=" + folder).wait()

    def _registry(self):
        query = self.anna.prefix.start("reg", "query", WINDOWS, "/s", stdout=subprocess.PIPE, encoding="latin-1")
        return query.communicate()[0]

    def test_1_installs_silently_for_the_user(self):
        self.assertEqual(self._run("/LOGON"), 0)
        self.assertEqual(self.anna.read("User.ini"), SETTINGS)
        registry = self._registry()
        for name, value in (("Quillon", FOLDER + "\\Quillon"), ("DisplayVersion", self.version), ("InstallLocation", FOLDER)):
            self.assertIn(f"    {name}    REG_SZ    {value}\n", registry.replace("\r", ""))
        self.assertTrue(os.path.exists(self._path(LINK)))

    def test_2_the_installed_and_the_unpacked_copy_talk(self):
        for copy in (self.anna, self.bob):
            copy.start()
        self.wire.wait_for(f"anna|M/anna {GERMAN_GREETING}")
        self.wire.wait_for(f"bob|M/bob {GREETING}")
        probe.wait(lambda: "bob" in self.anna.names())
        self.anna.send_alert("bob", "Neu hier")
        self.assertEqual(self.bob.popup_at_rest()[1], ["Neu hier\r\n"])
        self.anna.probe.command(self.anna.probe.wait_for("frmMain"), ids.MAIN.mnuAbout)
        shown = [child.text for window in (self.anna.probe.wait_for("frmAbout"), self.anna.probe.windows("frmSplash")[0])
                 for child in self.anna.probe.children(window)]
        self.assertLessEqual({"Version " + self.version, self.version}, set(shown))
        resource = f"ProductVersion\0{self.version}\0".encode("utf-16-le").decode("latin-1")
        self.assertTrue(resource in self.anna.read("Quillon.exe"), "the version resource differs")

    def test_3_an_update_closes_the_running_copy_and_starts_it_again(self):
        self.anna.write("mine.wav", "a sound")
        self.anna.write("chime.wav", "another one")
        with open(self.anna.folder + "/Quillon.exe", "ab") as program:
            program.write(b"an older version")
        start, log = self.wire.mark(), self.anna.log()
        self.assertEqual(self._run("/D=C:\\other"), 0)
        self._uninstall("C:\\other", "/DATA")
        self.assertFalse(os.path.exists(self._path("C:\\other")))
        self.assertTrue(self.anna.runs())  # it runs from another folder
        self.assertIn(FOLDER + "\\Quillon", self._registry())  # the start at logon is kept
        self.assertEqual(self._run(), 0)
        self.anna.process.wait(probe.TIMEOUT)
        self.wire.wait_for("anna|L/", start=start)
        probe.wait(lambda: "anna" not in self.bob.names())
        self.wire.wait_for(f"anna|M/anna {GERMAN_GREETING}", start)
        probe.wait(lambda: "anna" in self.bob.names())
        self.assertEqual((self.anna.read("mine.wav"), self.anna.read("chime.wav")), ("a sound", "another one"))
        self.assertTrue(filecmp.cmp(self.anna.folder + "/Quillon.exe", self.bob.folder + "/Quillon.exe", shallow=False))
        self.assertIn('"anna",0,4,"(B)",1', self.anna.read("User.ini"))
        self.assertEqual(self.anna.log()[:len(log)], log)

    def test_4_refuses_bad_folders_and_damaged_files(self):
        os.mkdir(self._path("C:\\locked"))
        subprocess.run(["mount", "-t", "tmpfs", "-o", "ro", "tmpfs", self._path("C:\\locked")], check=True)
        self.assertEqual(self._run("/D=C:\\locked\\Quillon"), FOLDER_REFUSED)
        os.makedirs(self._path("C:\\odd\\Lang.con"))
        self.assertEqual(self._run("/D=C:\\odd"), ABORTED)
        whole = self.setup_program.read_bytes()
        pathlib.Path(self._path("C:\\torn.exe")).write_bytes(whole[:len(whole) * 2 // 3])
        torn = self.anna.prefix.start("C:\\torn.exe")
        box, text = self.anna.wait_for_box()
        self.assertIn("integrity check has failed", text)
        self.anna.probe.answer(box)
        self.assertNotEqual(torn.wait(probe.TIMEOUT), 0)

    def test_5_uninstalling_keeps_the_users_files_unless_told_otherwise(self):
        start = self.wire.mark()
        self._uninstall(FOLDER)
        self.wire.wait_for("anna|L/", start=start)
        self.assertFalse(os.path.exists(self._path(LINK)))
        self.assertEqual(sorted(os.listdir(self.anna.folder)), ["Log.txt", "User.ini", "chime.wav", "mine.wav"])
        self.assertNotIn("Quillon", self._registry())
        self._uninstall(FOLDER, "/DATA")
        self.assertFalse(os.path.exists(self.anna.folder))
