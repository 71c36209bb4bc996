"""The companion tools with a real copy: the command line, and the dissector on captured packets."""

import csv
import json
import os
import pathlib
import subprocess
import tempfile
import time
import unittest

from rig import copies, network, probe
from test_one_copy import GREETING

ROOT = copies.SCREENSHOTS.removesuffix("/build/screenshots")
CLI = ROOT + "/build/native/tools/cli/quillon-cli"
PARTNER = ROOT + "/build/native/demo/partner"
DISSECTOR = ROOT + "/tools/wireshark/quillon.lua"
FIELDS = ["quillon.sender", "quillon.message", "quillon.text", "quillon.recipient", "quillon.colour", "quillon.status"]


class Tools(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.wire = cls.rig.wire
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.captured = folder.name + "/segment.pcap"
        cls.capture = subprocess.Popen(["tshark", "-q", "-i", "segment", "-f", "udp port 1414", "-w", cls.captured],
                                       stderr=subprocess.DEVNULL)
        probe.wait(lambda: os.path.exists(cls.captured) and os.path.getsize(cls.captured) > 0,
                   complaint="the capture did not start")
        cls.office = network.Host()
        cls.anna = cls.rig.copy("anna", network.Host())
        cls.anna.write_settings("Anna", colour=255)
        cls.watch = subprocess.Popen(cls.office.command(CLI, "watch", "--json", "--texts"), stdout=subprocess.PIPE)
        cls.anna.start()
        subprocess.Popen(network.Host().command(PARTNER, "--name", "John Smith", "--state", "2"),
                         stdout=subprocess.DEVNULL)
        cls.wire.wait_for(f"Anna|M/Anna {GREETING}")
        time.sleep(1)

    def _cli(self, *arguments, text=None, host=None):
        """Runs the command line; returns its exit status, output and error messages."""
        done = subprocess.run((host or self.office).command(CLI, *arguments), input=text, text=True, timeout=60,
                              capture_output=True)
        return done.returncode, done.stdout, done.stderr

    def test_1_who(self):
        code, output, _ = self._cli("who", "--json", "--wait", "3")
        users = [(user["name"], user["status"], user["colour"], user["address"]) for user in json.loads(output)]
        self.assertEqual((code, users), (0, [("Anna", 0, "#FF0000", self.anna.host.address),
                                             ("John Smith", 2, "#000000", "10.99.0.4")]))
        self.assertEqual(self.anna.names(), {"(All)", "Anna", "John Smith"})

    def test_2_an_alert_reaches_a_desk(self):
        start = self.wire.mark()
        code, _, errors = self._cli("alert", "anna", "--as", "Ops", "--wait", "2", "--", "john smith", "nobody", "-",
                                    text="[Caf\xe9 is shut,\nsorry]\n")
        self.assertEqual(code, 3)
        self.assertIn("nobody is not on the network", errors)
        self.assertIn("John Smith will not see it: Do Not Disturb", errors)
        self.assertEqual(self.wire.texts("Ops", start), ["Ops|P/\xdf[Caf\xe9 is shut,\r\nsorry]|Anna",
                                                         "Ops|P/\xdf[Caf\xe9 is shut,\r\nsorry]|John Smith", "Ops|L/"])
        popup, texts = self.anna.popup_at_rest()
        self.assertEqual(texts, ["[Caf\xe9 is shut,\r\nsorry]\r\n"])
        self.anna.probe.close(popup)
        self.assertNotIn("Ops", self.anna.names())

    def test_3_a_line_to_everybody_opens_a_conversation(self):
        self.assertEqual(self._cli("say", "--all", "--as", "Ops", "Back soon")[0], 0)
        chat = self.anna.probe.wait_for("frmChat")
        probe.wait(lambda: self.anna.said(chat) == "Ops:\tBack soon\r\n")
        self.anna.probe.close(chat)

    def test_4_invalid_arguments_send_nothing(self):
        start = self.wire.mark()
        for arguments in (("alert", "text alone"), ("say", "--all", "anna", "names beside --all"), ("say", "--all", ""),
                          ("alert", "--all", "\u4e2d"), ("alert", "--all", "x" * 65500), ("--codepage", "437", "who"),
                          ("alert", "--all", "--as", "_ops", "hidden"), ("alert", "--al", "anna", "x")):
            self.assertEqual(self._cli(*arguments)[0], 2, arguments)
        self.assertEqual(self.wire.texts(start=start), [])
        code, _, errors = self._cli("alert", "--all", "--as", "ANNA", "not she")
        self.assertIn('"Anna" is on the network already', errors)
        self.assertEqual((code, self.wire.texts("ANNA", start)), (2, []))

    def test_5_check(self):
        code, output, _ = self._cli("check")
        self.assertEqual(code, 0, output)
        self.assertIn(f"eth0: {self.office.address}  <- broadcasts leave here", output)
        self.office.unplug()
        code, output, _ = self._cli("check")
        self.office.plug()
        self.assertEqual(code, 1)
        self.assertIn("no interface takes a broadcast", output)

    def test_6_watch_and_the_dissector_show_all_events(self):
        self.anna.close()
        self.wire.send(b"crooked")
        self.wire.send(b"crooked|L/")
        probe.wait(lambda: b"crooked|L/" in pathlib.Path(self.captured).read_bytes())
        events = []
        while not events or (events[-1]["event"], events[-1]["name"]) != ("left", "Anna"):
            events.append(json.loads(self.watch.stdout.readline()))
        self.watch.terminate()
        printed = [(event["event"], event["name"], event.get("to"), event.get("text")) for event in events]
        for event in (("joined", "Anna", None, None), ("alert", "Ops", "Anna", "[Caf\xe9 is shut,\r\nsorry]"),
                      ("chat", "Ops", None, "Back soon"), ("left", "Anna", None, None)):
            self.assertIn(event, printed)
        self.capture.terminate()
        self.capture.wait()
        output = subprocess.run(["tshark", "-r", self.captured, "-X", "lua_script:" + DISSECTOR, "-T", "fields", "-E",
                                 "separator=,", "-E", "quote=d", *(word for field in (*FIELDS, "quillon.malformed")
                                                                   for word in ("-e", field))],
                                capture_output=True, text=True, check=True).stdout
        rows = [tuple(row) for row in csv.reader(output.splitlines(keepends=True))]
        self.assertEqual(len(rows), self.wire.mark())
        for row in (("Anna", "Colour", "", "", "#FF0000", "", ""), ("Anna", "Status", "", "", "", "0", ""),
                    ("Anna", "Greeting", "", "", "", "", ""), ("Anna", "Presence", "", "", "", "", ""),
                    ("Ops", "Chat line to everybody", "Back soon", "", "", "", ""), ("Anna", "Leave", "", "", "", "", "")):
            self.assertIn(row, rows)
        private = {row[:4:3] for row in rows if row[1] == "Private alert"}
        self.assertEqual(private, {("Ops", "Anna"), ("Ops", "John Smith")})
        self.assertEqual({row[0] for row in rows if row[6] or not row[1]}, {"crooked"})
