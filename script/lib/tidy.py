#!/usr/bin/python3
"""Runs clang-tidy on the product's portable sources, only on those whose result may have changed since they passed: a
result depends on the source, on every header that it includes, on the compiler's arguments, on the checks and on the
version of clang-tidy. With CI=true all sources are checked.

usage: tidy.py    brings the native build up to date, since that knows the headers
"""

import functools
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys
from concurrent import futures

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = ROOT / "build/native"
PASSED = BUILD / "tidy"  # for each source a file with the key under which it has passed
FOLDERS = tuple(f"{ROOT}/{name}/" for name in ("core", "net", "ui"))  # names in tests and demo are free


def output(*command):
    return subprocess.run(command, cwd=BUILD, check=True, stdout=subprocess.PIPE, text=True).stdout


def inputs():
    """The files that each object was compiled from. A block of ninja's answer is "OBJECT: ..." and a line for each."""
    blocks = (block.splitlines() for block in output("ninja", "-t", "deps").split("\n\n") if block.strip())
    return {first.partition(":")[0]: [line.strip() for line in files] for first, *files in blocks}


@functools.cache
def digest(path):
    return hashlib.sha256((BUILD / path).read_bytes()).hexdigest()


def key(command, files, checks):
    return hashlib.sha256(repr((command, [(file, digest(file)) for file in files], checks)).encode()).hexdigest()


def check(source, wanted):
    """clang-tidy's findings for a source; none if it has passed with this key before."""
    stamp = PASSED / source.removeprefix(f"{ROOT}/").replace("/", "+")
    if os.environ.get("CI") != "true" and stamp.exists() and stamp.read_text() == wanted:
        return ""
    done = subprocess.run(["clang-tidy", "--quiet", "-p", BUILD, "--warnings-as-errors=*", source], text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    if done.returncode:
        return done.stdout
    stamp.write_text(wanted)
    return ""


def main():
    subprocess.run([ROOT / "script/build", "native"], check=True)
    PASSED.mkdir(exist_ok=True)
    checks = (ROOT / ".clang-tidy").read_text() + output("clang-tidy", "--version")
    files = inputs()
    keys = {entry["file"]: key(entry["command"], files[re.search(r" -o (\S+)", entry["command"])[1]], checks)
            for entry in json.loads((BUILD / "compile_commands.json").read_text())
            if entry["file"].startswith(FOLDERS)}
    with futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        complaints = list(filter(None, pool.map(check, keys, keys.values())))
    print(*complaints, sep="\n")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
