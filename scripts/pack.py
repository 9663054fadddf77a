#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT
"""Packs the contents of a folder into a reproducible .tar.gz or .zip: it depends only on names, contents and the time.

    pack.py FOLDER ARCHIVE

Every file gets the time SOURCE_DATE_EPOCH (default: now) and no owner, is readable by all and writable by its owner.
It is executable by all if its owner may execute it here.
"""
import gzip
import os
import stat
import sys
import tarfile
import time
import zipfile
from pathlib import Path

MOMENT = int(os.environ.get("SOURCE_DATE_EPOCH", time.time()))


def mode_of(path):
    return 0o755 if path.is_dir() or path.stat().st_mode & stat.S_IXUSR else 0o644


def make_tar(root, paths, archive):
    with archive.open("wb") as raw, gzip.GzipFile("", "wb", 9, raw, MOMENT) as compressed, \
            tarfile.open(fileobj=compressed, mode="w", format=tarfile.PAX_FORMAT) as tar:
        for path in paths:
            entry = tarfile.TarInfo(str(path.relative_to(root)))
            entry.mtime = MOMENT
            entry.mode = mode_of(path)
            if path.is_dir():
                entry.type = tarfile.DIRTYPE
                tar.addfile(entry)
            else:
                entry.size = path.stat().st_size
                with path.open("rb") as content:
                    tar.addfile(entry, content)


def make_zip(root, paths, archive):
    with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as zipped:
        for path in paths:
            name = str(path.relative_to(root)) + ("/" if path.is_dir() else "")
            entry = zipfile.ZipInfo(name, time.gmtime(MOMENT)[:6])
            entry.create_system = 3  # Unix, so that the permissions below are used
            entry.external_attr = (path.stat().st_mode & ~0o7777 | mode_of(path)) << 16
            if path.is_dir():
                entry.external_attr |= 0x10  # the directory flag of MS-DOS
                zipped.writestr(entry, b"")
            else:
                entry.compress_type = zipfile.ZIP_DEFLATED
                zipped.writestr(entry, path.read_bytes())


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: pack.py FOLDER ARCHIVE")
    root = Path(sys.argv[1])
    archive = Path(sys.argv[2])
    paths = sorted(root.rglob("*"), key=lambda path: os.fsencode(path.relative_to(root)))
    (make_zip if archive.suffix == ".zip" else make_tar)(root, paths, archive)


main()
