"""Runs the tests of whole copies, each file in a private machine of its own, some in parallel: most of the time they wait
for the ten seconds in which a starting copy listens.

usage: whole_copies.py [NAME ...]    only files whose name contains one of the NAMEs
The last line is "N passed, N failed".
"""

import os
import pathlib
import subprocess
import sys
import time
import unittest
from concurrent import futures

_ROOT = pathlib.Path(__file__).resolve().parents[2]
_FOLDERS = [_ROOT / folder for folder in ("tests/segment", "tools/stories", "packaging")]
sys.path[:0] = map(str, (*_FOLDERS, _ROOT))

from rig import private_machine  # noqa: E402

_TIME_LIMIT = 600  # seconds for one file


def _run(name):
    """Runs the tests of a file here; the last line printed is its counts."""
    suite = unittest.defaultTestLoader.loadTestsFromName(name)
    result = unittest.TextTestRunner(stream=sys.stdout, verbosity=2).run(suite)
    failed = len(result.failures) + len(result.errors)
    passed = max(result.testsRun - failed, 0)
    # If the class cannot be set up, all its tests count as failed.
    print(passed, failed if result.testsRun else suite.countTestCases())
    return failed


def _output(name):
    """Runs the tests of a file in a machine of their own; returns what they print."""
    began = time.monotonic()
    job = subprocess.Popen([sys.executable, "-u", __file__, "--alone", name], text=True, errors="replace",
                           stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    try:
        output = job.communicate(timeout=_TIME_LIMIT)[0]
    except subprocess.TimeoutExpired:
        job.kill()  # its machine ends with everything in it
        output = job.communicate()[0] + f"\nended after {_TIME_LIMIT} seconds\n0 1"
    return output, time.monotonic() - began


def main(arguments):
    if arguments[:1] == ["--alone"]:
        return private_machine.run(lambda: _run(arguments[1]))
    total = [0, 0]
    names = [path.stem for folder in _FOLDERS for path in sorted(folder.glob("test_*.py"))
             if not arguments or any(wanted in path.stem for wanted in arguments)]
    with futures.ThreadPoolExecutor(2 * os.cpu_count()) as pool:
        for name, (output, seconds) in zip(names, pool.map(_output, names)):
            output, _, last = output.rstrip().rpartition("\n")
            counts = [int(word) for word in last.split()] if last.replace(" ", "").isdigit() else [0, 1]
            total = [total[0] + counts[0], total[1] + counts[1]]
            print(f"{name}: {counts[0]} passed, {counts[1]} failed, {seconds:.0f} s", flush=True)
            if counts[1]:
                print(output, last, sep="\n", flush=True)
    print(f"{total[0]} passed, {total[1]} failed")
    return 1 if total[1] else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
