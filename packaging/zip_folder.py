"""Packs a folder reproducibly: the order, times and permissions are fixed.

usage: zip_folder.py FOLDER ZIP SECONDS     SECONDS since 1970: the time of all files
"""

import pathlib
import sys
import time
import zipfile


def main(folder, path, seconds):
    folder = pathlib.Path(folder)
    date_time = time.gmtime(int(seconds))[:6]
    with zipfile.ZipFile(path, "w") as pack:
        for file in sorted(folder.iterdir()):
            entry = zipfile.ZipInfo(f"{folder.name}/{file.name}", date_time)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o644 << 16
            pack.writestr(entry, file.read_bytes(), compresslevel=9)


if __name__ == "__main__":
    main(*sys.argv[1:])
