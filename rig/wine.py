"""Wine, with a separate prefix (a whole Windows installation) for every copy.

script/bootstrap keeps one i386 system with Wine and one template prefix in the cache. Both are read-only here: they are
mounted with an overlay in memory, the prefix once per copy.
"""

import itertools
import os
import pathlib
import re
import shutil
import socket
import subprocess

from . import network, screen
from .private_machine import mount

CACHE = os.environ.get("QUILLON_CACHE") or os.path.expanduser("~/.cache/quillon")
_SYSTEM = CACHE + "/i386-system"
_TEMPLATE = CACHE + "/wine-prefix"

# Directories that the i386 system has itself; all others of the host are mounted in it under the same names.
_OWN_DIRECTORIES = {"bin", "boot", "etc", "lib", "lib32", "lib64", "libx32", "lost+found", "sbin", "usr", "var"}


def _mount_overlay(lower, target, scratch):
    """Mounts `lower` at `target`; changes go to the directory `scratch`."""
    for directory in (scratch + "/upper", scratch + "/work"):
        os.makedirs(directory, exist_ok=True)
    mount("-t", "overlay", "overlay", "-o",
          f"lowerdir={lower},upperdir={scratch}/upper,workdir={scratch}/work", target)


class Machine:
    """Network, screen and Wine of the private machine; one instance in each."""

    def __init__(self, size="1024x768", tray=False):
        network.set_up()
        screen.set_up()
        self.screen = screen.Screen(size, tray)
        self.system = WineSystem()
        self.segment = network.BridgeHost()


class WineSystem:
    """The system that Wine runs in. One per private machine, created after screen.set_up()."""

    def __init__(self):
        # Mounts below this directory are visible in this private machine only.
        self._memory = CACHE + "/machine"
        mount("-t", "tmpfs", "tmpfs", self._memory)
        self._numbers = itertools.count(1)
        self.root = self._memory + "/root"
        if os.path.isdir(_SYSTEM):
            self._mount_system()
        else:
            self.root = ""  # the machine's own Wine
            self._hide_other_servers()
        self._disable_name_service()

    def _mount_system(self):
        _mount_overlay(_SYSTEM, self.root, self._memory + "/system")
        for name in sorted(os.listdir("/")):
            if name not in _OWN_DIRECTORIES and os.path.isdir("/" + name) and not os.path.islink("/" + name):
                mount("--rbind", "/" + name, f"{self.root}/{name}")

    def _hide_other_servers(self):
        servers = f"/tmp/.wine-{os.getuid()}"
        os.makedirs(servers, mode=0o700, exist_ok=True)
        mount("-t", "tmpfs", "-o", "mode=700", "tmpfs", servers)

    def _disable_name_service(self):
        # Wine looks up the machine's own name when it starts, and would wait seconds for an unreachable name server.
        hosts = f"127.0.0.1 localhost {socket.gethostname()}\n"
        for path, text in (("/etc/hosts", hosts), ("/etc/resolv.conf", ""), ("/etc/nsswitch.conf", "hosts: files\n")):
            private = self._memory + "/" + os.path.basename(path)
            pathlib.Path(private).write_text(text)
            open(self.root + path, "a", encoding="ascii").close()  # a minimal system lacks some of them
            mount("--bind", private, self.root + path)

    def new_prefix(self):
        """Mounts a fresh prefix; returns its path inside the system."""
        number = next(self._numbers)
        prefix = f"{self._memory}/prefix-{number}" if not self.root else f"/prefix-{number}"
        _mount_overlay(_TEMPLATE, self.root + prefix, f"{self._memory}/layer-{number}")
        # Debian's Wine creates a folder for its server's sockets at the first start and stores its name in the prefix.
        # If two programs started at once, both would do so, and one would fail.
        folder, note = (pathlib.Path(self.root + prefix, name) for name in ("wine-server", "wineserver"))
        folder.mkdir(0o700)
        note.write_text(folder.name)
        note.chmod(0o400)
        return prefix

    def locale(self, name):
        """Compiles a locale such as "ja_JP" in memory; returns the environment variables that select it.

        Wine derives the ANSI code page from the locale, and a minimal system has no locale but C.
        """
        folder = "/locales" if self.root else self._memory + "/locales"
        os.makedirs(self.root + folder, exist_ok=True)
        if not os.path.isdir(f"{self.root}{folder}/{name}.UTF-8"):
            localedef = ["localedef", "--no-archive", "-i", name, "-f", "UTF-8", f"{folder}/{name}.UTF-8"]
            subprocess.run(self.command("/", {}, localedef), check=True)
        return {"LANG": name + ".UTF-8", "LOCPATH": folder}

    def show(self, directory):
        """Makes a directory of the host visible in the system under the same name, unless it is already."""
        if self.root and not os.path.isdir(self.root + directory):
            mount("--bind", directory, self.root + directory)

    def command(self, directory, environment, arguments):
        """The command line that runs `arguments` in the system, in `directory`, with `environment` added to its own."""
        inner = ["/usr/bin/env", "-C", directory, *(f"{key}={value}" for key, value in environment.items()), *arguments]
        return ["chroot", self.root, *inner] if self.root else inner


class Prefix:
    """One Windows installation, on one host and one screen."""

    def __init__(self, system, host, on_screen, user=None, dpi=96, path=None, locale=None):
        """`user` is the logon name; `path` an existing prefix (inside the system) instead of a fresh one; `locale`
        selects another code page, for example "ja_JP" for 932."""
        self._system = system
        self._host = host
        self.screen = on_screen
        self._path = path or system.new_prefix()
        self._environment = {
            "WINEPREFIX": self._path, "WINEARCH": "win32", "WINEDLLOVERRIDES": "mscoree,mshtml=;winemenubuilder.exe=d",
            "WINEDEBUG": os.environ.get("WINEDEBUG", "-all"), "LANG": "C.UTF-8", "DISPLAY": on_screen.name,
            "HOME": self._path, "TMPDIR": self._path,  # Debian's Wine keeps the sockets of its server there
        }
        if user:
            self._environment["USER"] = user
        if locale:
            self._environment.update(system.locale(locale))
        if dpi != 96:
            self._set_dpi(dpi)

    @property
    def drive_c(self):
        """The folder that is drive C: of this installation."""
        return self._system.root + self._path + "/drive_c"

    def _set_dpi(self, dpi):
        # Written directly to the registry file: through Wine it would take a second.
        path = pathlib.Path(self._system.root + self._path, "user.reg")
        text = re.sub(r'"LogPixels"=dword:\w+\n', "", path.read_text("utf-8"))
        section = re.search(r"^\[Control Panel\\\\Desktop\].*\n(#.*\n)?", text, re.MULTILINE)
        path.write_text(f'{text[:section.end()]}"LogPixels"=dword:{dpi:08x}\n{text[section.end():]}', "utf-8")

    def start(self, *arguments, directory="/", environment=(), **options):
        """Starts a Windows program; `options` are those of subprocess.Popen."""
        values = {**self._environment, **dict(environment)}
        command = self._system.command(directory, values, ["wine", *arguments])
        return subprocess.Popen(self._host.command(*command), **options)

    def install(self, directory):
        """Copies the files of a host directory to C:\\NAME; returns the host path of the copy."""
        return shutil.copytree(directory, f"{self.drive_c}/{os.path.basename(directory)}")

    def settle(self):
        """Waits until all programs of this installation have ended and its registry is on disk."""
        subprocess.run(self._system.command("/", self._environment, ["wineserver", "-w"]),
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
