"""Runs work in its own network, mount, PID and IPC namespaces, and leaves nothing behind.

Quillon broadcasts, so no copy may ever run on a development machine's real network. And whatever a test starts (Wine
services, screens, mounts, bridges) must be gone afterwards, however the test ends. The kernel ensures both: everything
descends from the first process of a PID namespace, and when that process dies the kernel kills the rest and drops
the mounts.
"""

import ctypes
import os
import signal
import subprocess
import sys

_libc = ctypes.CDLL(None, use_errno=True)

_CLONE_NEWNS = 0x00020000
_CLONE_NEWIPC = 0x08000000
_CLONE_NEWPID = 0x20000000
_CLONE_NEWNET = 0x40000000
_PR_SET_PDEATHSIG = 1


class Refused(Exception):
    """This machine does not allow private namespaces, for example in an unprivileged container."""


def _unshare(flags):
    if _libc.unshare(flags) != 0:
        raise Refused("no private namespaces: " + os.strerror(ctypes.get_errno()))


def mount(*arguments):
    """Calls mount(8), on a directory created if missing; the mount is visible in the private machine only."""
    if not os.path.exists(arguments[-1]):
        os.makedirs(arguments[-1], exist_ok=True)  # two machines may start at once
    subprocess.run(["mount", *arguments], check=True)


def run(work, private_network=True):
    """Runs work() in a private machine and returns its exit status. Raises Refused where that is not possible.

    Use private_network=False only where the user has asked to run a copy on the real network.
    Ctrl+C reaches work() as a KeyboardInterrupt, so that it can clean up; a second one kills everything at once.
    """
    _unshare(_CLONE_NEWNS | _CLONE_NEWPID | _CLONE_NEWIPC | (_CLONE_NEWNET if private_network else 0))
    first = os.fork()
    if first == 0:
        _run_as_init(work)

    # Killing the first process kills all others.
    def end(*_):
        os.kill(first, signal.SIGKILL)

    def interrupt(*_):
        signal.signal(signal.SIGINT, end)
        os.kill(first, signal.SIGINT)

    for number, action in (signal.SIGTERM, end), (signal.SIGHUP, end), (signal.SIGINT, interrupt):
        signal.signal(number, action)
    return os.waitstatus_to_exitcode(os.waitpid(first, 0)[1])


def _run_as_init(work):
    """Process 1: starts the worker, reaps orphaned processes, and exits with the worker's status."""
    os.setsid()  # otherwise Ctrl+C in a terminal would signal every process in here
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)
    mount("--make-rprivate", "/")
    mount("-t", "proc", "proc", "/proc")
    worker = os.fork()
    if worker == 0:
        status = 1
        try:
            status = _work(work)
        finally:
            sys.stdout.flush()
            sys.stderr.flush()
            os._exit(status)
    signal.signal(signal.SIGINT, lambda _number, _frame: os.kill(worker, signal.SIGINT))
    while True:
        ended, status = os.wait()
        if ended == worker:
            os._exit(abs(os.waitstatus_to_exitcode(status)))


def _work(work):
    try:
        return work() or 0
    except KeyboardInterrupt:
        return 128 + signal.SIGINT
    except SystemExit as ending:
        return ending.code if isinstance(ending.code, int) else 1
    except BaseException:
        sys.excepthook(*sys.exc_info())
        return 1
