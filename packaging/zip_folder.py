"""Packs a folder so that the same files give the same bytes: fixed order, times and rights.

usage: zip_folder.py FOLDER ZIP SECONDS     SECONDS since 1970, the time that all files bear
"""

import pathlib
import sys
import time
import zipfile


def main(folder, path, seconds):
    folder = pathlib.Path(folder)
    moment = time.gmtime(int(seconds))[:6]
    with zipfile.ZipFile(path, "w") as pack:
        for file in sorted(folder.iterdir()):
            entry = zipfile.ZipInfo(f"{folder.name}/{file.name}", moment)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o644 << 16
            pack.writestr(entry, file.read_bytes(), compresslevel=9)


if __name__ == "__main__":
    main(*sys.argv[1:])
