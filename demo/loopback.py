"""The demonstration on a machine without private namespaces, where the windows have no private network to run on:
partners and the command line use the loopback's broadcast address, so that nothing leaves the machine. See script/run.
"""

import os
import pathlib
import subprocess
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
_BUILD = f"{_ROOT}/build/native"
_LOOPBACK = ("--broadcast", "127.255.255.255")
_CLI = (f"{_BUILD}/tools/cli/quillon-cli", *_LOOPBACK)
_YOU = ("--as", os.environ.get("USER") or "you")
_PARTNERS = {"Berta": ("--colour", "2129952"), "Carl": ("--colour", "12599296", "--public")}


def _start_partner(name, *options):
    return subprocess.Popen([f"{_BUILD}/demo/partner", *_LOOPBACK, "--name", name, "--chat", "--delay", "0.5",
                             *options], stdout=subprocess.DEVNULL)


def _do(text, *arguments):
    """Announces and runs one step, then waits for its effects."""
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
        time.sleep(2.5)  # for the first two seconds, watch prints users as present, not as joined
        print("== Berta and Carl join", flush=True)
        partners = [_start_partner(name, *options) for name, options in _PARTNERS.items()]
        time.sleep(1)
        _do("You alert Berta, who answers", "alert", *_YOU, "Berta", "Shall we have lunch at noon?")
        _do("You ask everybody; Carl answers in public", "say", "--all", *_YOU, "Who has seen the stapler?")
        _do("You say a line to Berta alone", "say", *_YOU, "Berta", "Just between us: I have it")
        print("== They leave", flush=True)
        _end(partners)
        time.sleep(0.5)
    finally:
        _end([*partners, transcript])
    print("The demonstration ends here: the windows need a machine that allows private network, mount and process "
          "namespaces, such as a container with CAP_SYS_ADMIN.")


if __name__ == "__main__":
    try:
        play()
    except KeyboardInterrupt:
        print("\nThe demonstration and its partners have ended.")
