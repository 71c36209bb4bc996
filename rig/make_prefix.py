"""Fills DIRECTORY with a fresh Wine prefix, the template of all others. usage: make_prefix.py DIRECTORY"""

import os
import pathlib
import shutil
import sys

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))

from rig import private_machine, wine  # noqa: E402


def make(directory):
    machine = wine.Machine()
    system = machine.system
    place = "/template"
    os.makedirs(system.root + place)
    private_machine.mount("--bind", directory, system.root + place)
    prefix = wine.Prefix(system, machine.segment, machine.screen, path=place)
    if prefix.start("wineboot", "--init").wait() != 0:
        return 1
    prefix.settle()
    _add_fonts(system, prefix)
    _forget_server(directory)


def _add_fonts(system, prefix):
    # Debian's Wine looks beside the folder in which Debian puts Wine's own fonts, and so finds none of them.
    fonts = system.root + "/usr/share/wine/fonts"
    if os.path.isdir(fonts):
        shutil.copytree(fonts, prefix.drive_c + "/windows/Fonts", dirs_exist_ok=True)


def _forget_server(directory):
    """Removes the traces of the Wine server that made the prefix; every copy has a server of its own."""
    for path in pathlib.Path(directory).glob("wine*"):
        shutil.rmtree(path) if path.is_dir() else path.unlink()


if __name__ == "__main__":
    target = os.path.abspath(sys.argv[1])
    sys.exit(private_machine.run(lambda: make(target)))
