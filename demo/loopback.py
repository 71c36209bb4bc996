"""The scene on a machine that allows no private namespaces, and so no private network for the windows: partners and the
command line meet on the loopback's broadcast address, where nothing leaves the machine. See script/run.
"""

import os
import pathlib
import subprocess
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
_BUILD = f"{_ROOT}/build/native"
_INSIDE = ("--broadcast", "127.255.255.255")
_CLI = (f"{_BUILD}/tools/cli/quillon-cli", *_INSIDE)
_YOU = ("--as", os.environ.get("USER") or "you")
_PARTNERS = {"Berta": ("--colour", "2129952"), "Carl": ("--colour", "12599296", "--public")}


def _start_partner(name, *manners):
    return subprocess.Popen([f"{_BUILD}/demo/partner", *_INSIDE, "--name", name, "--chat", "--delay", "0.5", *manners],
                            stdout=subprocess.DEVNULL)


def _do(text, *arguments):
    """One step: what it is, and time for what it causes."""
    print(f"== {text}", flush=True)
    if arguments:
        subprocess.run([*_CLI, *arguments], check=True)
    time.sleep(1.5)


def _end(processes):
    for process in processes:
        process.terminate()
        process.wait()


def play():
    transcript = subprocess.Popen([*_CLI, "watch", "--texts"])
    partners = []
    try:
        time.sleep(2.5)  # the first two seconds show who was there before
        print("== Berta and Carl join", flush=True)
        partners = [_start_partner(name, *manners) for name, manners in _PARTNERS.items()]
        time.sleep(1)
        _do("You alert Berta, who answers", "alert", *_YOU, "Berta", "Shall we have lunch at noon?")
        _do("You ask everybody; Carl answers in public", "say", "--all", *_YOU, "Who has seen the stapler?")
        _do("You say a line to Berta alone", "say", *_YOU, "Berta", "Just between us: I have it")
        print("== They leave", flush=True)
        _end(partners)
        time.sleep(0.5)
    finally:
        _end([*partners, transcript])
    print("This is all there is to see here: the windows need a machine that allows private network, mount and process "
          "namespaces (a container with CAP_SYS_ADMIN, say).")


if __name__ == "__main__":
    try:
        play()
    except KeyboardInterrupt:
        print("\nThe scene has ended, and Berta and Carl with it.")
