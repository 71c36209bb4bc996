"""Runs the tests of whole copies, every test class in a private machine of its own and several at once: they mostly
wait for the ten seconds in which a starting copy listens.

usage: run.py [NAME ...]    only classes whose name contains one of the NAMEs
The last line is "N passed, N failed".
"""

import concurrent.futures
import importlib
import os
import pathlib
import subprocess
import sys
import time
import unittest

_HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(_HERE.parent), str(_HERE.parent.parent)]

from rig import private_machine  # noqa: E402

_AT_ONCE = 5


def _classes(names):
    for path in sorted(_HERE.glob("test_*.py")):
        module = importlib.import_module(f"segment.{path.stem}")
        for name, value in vars(module).items():
            if isinstance(value, type) and issubclass(value, unittest.TestCase) and value.__module__ == module.__name__:
                if not names or any(wanted in name for wanted in names):
                    yield f"{module.__name__}.{name}"


def _run_class(name):
    """Runs the tests of one class here; prints its counts and returns the exit status."""
    suite = unittest.defaultTestLoader.loadTestsFromName(name)
    result = unittest.TextTestRunner(stream=sys.stdout, verbosity=2).run(suite)
    failed = len(result.failures) + len(result.errors)
    # A class that cannot even be set up counts all its tests as failed.
    passed = result.testsRun - failed if result.testsRun else 0
    if not result.testsRun:
        failed = max(failed, suite.countTestCases())
    print(f"COUNTS {passed} {failed}")
    return 1 if failed else 0


def _run_apart(name):
    began = time.monotonic()
    # A test that hangs ends its machine, and with it all that it started.
    try:
        done = subprocess.run([sys.executable, __file__, "--alone", name], text=True, timeout=240,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, errors="replace")
        output = done.stdout
    except subprocess.TimeoutExpired as late:
        output = (late.stdout or b"").decode("utf-8", "replace") + "\nended after 240 seconds\n"
    lines = output.splitlines()
    counts = next((line for line in reversed(lines) if line.startswith("COUNTS ")), "COUNTS 0 1")
    passed, failed = (int(number) for number in counts.split()[1:])
    return name, passed, failed, time.monotonic() - began, "\n".join(line for line in lines if line != counts)


def main(arguments):
    if arguments[:1] == ["--alone"]:
        return private_machine.run(lambda: _run_class(arguments[1]))
    passed = failed = 0
    with concurrent.futures.ThreadPoolExecutor(_AT_ONCE) as pool:
        jobs = [pool.submit(_run_apart, name) for name in _classes(arguments)]
        for job in concurrent.futures.as_completed(jobs):
            name, ok, bad, seconds, output = job.result()
            passed, failed = passed + ok, failed + bad
            print(f"{name.removeprefix('segment.')}: {ok} passed, {bad} failed, {seconds:.0f} s", flush=True)
            if bad:
                print(output, flush=True)
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
