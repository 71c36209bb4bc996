"""Creates a fresh Wine prefix, the template of all others, in DIRECTORY. usage: make_prefix.py DIRECTORY"""

import os
import pathlib
import shutil
import sys

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))

from rig import private_machine, wine  # noqa: E402


def make(directory):
    machine = wine.Machine()
    system = machine.system
    path = "/template"
    private_machine.mount("--bind", directory, system.root + path)
    prefix = wine.Prefix(system, machine.segment, machine.screen, path=path)
    if prefix.start("wineboot", "--init").wait() != 0:
        return 1
    prefix.settle()
    _add_fonts(system, prefix)
    _remove_server_files(directory)


def _add_fonts(system, prefix):
    # Debian's Wine does not look for its own fonts in the folder where Debian installs them.
    fonts = system.root + "/usr/share/wine/fonts"
    if os.path.isdir(fonts):
        shutil.copytree(fonts, prefix.drive_c + "/windows/Fonts", dirs_exist_ok=True)


def _remove_server_files(directory):
    """Removes the files of the Wine server that created the prefix; every copy runs its own server."""
    for path in pathlib.Path(directory).glob("wine*"):
        shutil.rmtree(path) if path.is_dir() else path.unlink()


if __name__ == "__main__":
    target = os.path.abspath(sys.argv[1])
    sys.exit(private_machine.run(lambda: make(target)))
