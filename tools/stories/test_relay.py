"""Two segments, a copy on each, joined by relays through a broker on a third network."""

import json
import pathlib
import subprocess
import tempfile
import unittest

from rig import copies, network, probe, screen
from test_tools import CLI, ROOT

RELAY = ROOT + "/build/native/tools/relay/quillon-relay"


class Relays(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.rig = copies.Rig()
        cls.left, cls.right = network.OtherSegment(), network.OtherSegment()
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.password, cls.broker_settings = folder.name + "/password", folder.name + "/mosquitto.conf"
        pathlib.Path(cls.password).write_text("secret\n")
        subprocess.run(["mosquitto_passwd", "-b", "-c", folder.name + "/users", "relay", "secret"], check=True)
        key, cls.certificate = folder.name + "/key.pem", folder.name + "/certificate.pem"
        subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=broker",
                        "-addext", "subjectAltName=IP:" + network.ADDRESS, "-keyout", key, "-out", cls.certificate],
                       check=True, stderr=subprocess.DEVNULL)
        pathlib.Path(cls.broker_settings).write_text(
            f"user root\npassword_file {folder.name}/users\nlistener 1883 {network.ADDRESS}\n"
            f"listener 8883 {network.ADDRESS}\ncertfile {cls.certificate}\nkeyfile {key}\n")
        cls.relays = [cls._start_relay(cls.left),
                      cls._start_relay(cls.right, "--port", "8883", "--ca-file", cls.certificate)]
        cls._start_broker()
        cls._wait_for_line(cls.relays[0], "in charge")
        cls._wait_for_line(cls.relays[1], "in charge")
        cls.relays.append(cls._start_relay(cls.left))
        cls._wait_for_line(cls.relays[2], "connected to the broker")
        cls.listener = network.Host(cls.right)
        cls.watch = subprocess.Popen(cls.listener.command(CLI, "watch", "--json", "--texts"), stdout=subprocess.PIPE)
        cls.events = []
        cls.anna = cls.rig.copy("anna", network.Host(cls.left)).start()
        cls.bob = cls.rig.copy("bob", network.Host(cls.right), on_screen=screen.Screen()).start()
        joining = {"anna", "bob"}
        while joining:
            joining.discard(cls._wait_for_event(event="joined")["name"])
        for copy in (cls.anna, cls.bob):
            probe.wait(lambda copy=copy: copy.names() == {"(All)", "anna", "bob"}, complaint=f"{copy.user} does not list all")

    @classmethod
    def _start_broker(cls):
        cls.broker = subprocess.Popen(["mosquitto", "-c", cls.broker_settings], stderr=subprocess.DEVNULL)

    @classmethod
    def _start_relay(cls, segment, *options):
        host = network.Host(segment)
        host.join_segment_too()
        return subprocess.Popen(host.command(RELAY, "--broker", network.ADDRESS, "--user", "relay", "--password-file",
                                             cls.password, "--segment", segment.bridge, "--filter", "B", "--report", "2",
                                             *options),
                                stdout=subprocess.PIPE, text=True)

    @staticmethod
    def _wait_for_line(relay, line):
        """Reads a relay's journal up to a line that begins with `line`; returns that line."""
        for entry in relay.stdout:
            if entry.startswith(line):
                return entry
        raise AssertionError(f"the relay ended without {line!r}")

    @classmethod
    def _wait_for_event(cls, **wanted):
        """Waits for an event with these fields on bob's segment."""
        for line in cls.watch.stdout:
            cls.events.append(json.loads(line))
            if wanted.items() <= cls.events[-1].items():
                return cls.events[-1]
        raise AssertionError(f"no event {wanted}")

    def _alert(self, text):
        """Sends an alert from anna to bob and checks its popup."""
        self.anna.send_alert("bob", text)
        popup, texts = self.bob.popup_at_rest()
        self.assertEqual(texts, [text + "\r\n"])
        self.bob.probe.close(popup)
        self.bob.probe.wait_gone(popup)

    @staticmethod
    def _publish(topic, *arguments, data=None):
        subprocess.run(["mosquitto_pub", "-h", network.ADDRESS, "-u", "relay", "-P", "secret", "-t", topic, *arguments],
                       input=data, check=True)

    def test_1_alerts_and_lines_cross(self):
        self._alert("Across")
        chat = self.bob.open_chat("anna")
        self.bob.say(chat, "Well heard")
        at_anna = self.anna.probe.wait_for("frmChat")
        probe.wait(lambda: self.anna.said(at_anna) == "bob:\tWell heard\r\n")
        self.anna.probe.close(at_anna)

    def test_2_hostile_bytes(self):
        topic = "quillon/office/elsewhere"
        self._publish(topic, "-n")
        for data in (b"|", b"\x00" * 70000, b"x" * 1000000, bytes(range(256)), b"mallory|B/kept back"):
            self._publish(topic, "-s", data=data)
        self._publish(topic, "-r", "-s", data=b"mallory|P/\xdfkept by the broker|nobody")
        self._publish("quillon/office/" + self.right.bridge, "-s", data=b"mallory|P/\xdfcome back|nobody")
        self._alert("Still here")

    def test_3_another_relay_takes_over(self):
        self.relays[0].kill()
        self._wait_for_line(self.relays[2], "in charge")
        self._alert("By the other one")

    def test_4_the_broker_comes_back(self):
        self.broker.kill()
        self.broker.wait()
        for relay in self.relays[1:]:
            self._wait_for_line(relay, "no connection")
        self._start_broker()
        for relay in self.relays[1:]:
            self._wait_for_line(relay, "in charge")
        self._alert("After the pause")

    def test_5_nothing_loops_or_arrives_twice(self):
        self.anna.close()
        self._wait_for_event(event="left", name="anna")
        probe.wait(lambda: "anna" not in self.bob.names())
        self.assertRegex(self._wait_for_line(self.relays[1], "in charge; "), r"in charge; out: \d+ passed, 0 filtered")
        self.watch.terminate()
        self.events += [json.loads(line) for line in self.watch.stdout]
        alerts = [(event["name"], event["text"]) for event in self.events if event["event"] in ("alert", "notice")]
        self.assertEqual(alerts, [("anna", "Across"), ("mallory", "kept by the broker"), ("anna", "Still here"),
                                  ("anna", "By the other one"), ("anna", "After the pause")])
        self.assertEqual([event["event"] for event in self.events if event["name"] == "anna"].count("left"), 1)
