"""Runs one Windows program in a private machine; see --help."""

import argparse
import os
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))

from rig import private_machine, wine  # noqa: E402


def parse():
    parser = argparse.ArgumentParser(
        prog="wine-exec",
        description="Runs a Windows program on a private network and screen, and returns its exit code. WINEDEBUG selects "
                    "Wine's own messages.")
    parser.add_argument("--dpi", type=int, default=96, help="screen resolution reported to the program (96 is 100 %%)")
    parser.add_argument("--screen", default="1024x768", metavar="WxH", help="size of the screen")
    parser.add_argument("--user", help="logon name")
    parser.add_argument("--locale", help="selects another code page, for example ja_JP for 932")
    parser.add_argument("--tray", action="store_true", help="show a notification area")
    parser.add_argument("--script", metavar="COMMANDS",
                        help="shell commands to run while the program runs, with DISPLAY set (xdotool, import, ...); the "
                        "program ends after the last one")
    parser.add_argument("--shot", metavar="PNG", help="save a screenshot (see --after), then end the program")
    parser.add_argument("--after", type=float, default=0.5, metavar="SECONDS",
                        help="delay of --script and --shot after the first window appears")
    parser.add_argument("program")
    parser.add_argument("arguments", nargs=argparse.REMAINDER)
    return parser.parse_args()


def run(options):
    machine = wine.Machine(options.screen, options.tray)
    directory = os.getcwd()
    machine.system.show(directory)
    prefix = wine.Prefix(machine.system, machine.segment, machine.screen, user=options.user, dpi=options.dpi,
                         locale=options.locale)
    program = os.path.abspath(options.program) if os.path.exists(options.program) else options.program
    process = prefix.start(program, *options.arguments, directory=directory)
    if not (options.script or options.shot):
        return process.wait()
    machine.screen.wait_for_window()
    time.sleep(options.after)
    status = subprocess.run(["bash", "-c", options.script or "true"], env=machine.screen.environment).returncode
    if options.shot:
        machine.screen.save(options.shot)
    return status


if __name__ == "__main__":
    arguments = parse()
    try:
        sys.exit(private_machine.run(lambda: run(arguments)))
    except private_machine.Refused as refusal:
        sys.exit(f"wine-exec: {refusal}")
