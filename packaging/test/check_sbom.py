#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT
"""Checks an SBOM against the schema of CycloneDX 1.5, against rules of ours and against the executable that it describes.

    check_sbom.py FILE EXECUTABLE [--offline]

The schema is fetched once, from the package in which the authors of CycloneDX publish it, into a cache outside the
repository. With --offline, a schema that cannot be fetched is no fault.
"""
import base64
import hashlib
import io
import json
import os
import pathlib
import re
import subprocess
import sys
import tarfile
import urllib.request

import jsonschema

SCHEMA_PACKAGE = "https://registry.npmjs.org/@cyclonedx/cyclonedx-library/-/cyclonedx-library-10.3.0.tgz"
SCHEMA_SHA512 = "RIT28sp1U0PCHaaeF3yNRwk6Jig/XJ8UsYAVOMYaHQ+0VVOvsjcp0PTWQFLUqJFF8XMud+Kdq6G+wtDAh+QJFA=="
SCHEMA, SPDX, SIGNATURE = (f"{name}.SNAPSHOT.schema.json" for name in ("bom-1.5", "spdx", "jsf-0.82"))
# Bytes that show that a library is linked in, for some with its version.
MARKS = {
    "zlib": rb"inflate (\d[\d.]+) Copyright",
    "libpng": rb"libpng version (\d[\d.]+)",
    "libjpeg": rb"libjpeg-turbo version (\d[\d.]+)",
    "pcre2": rb"PCRE2_USE_OFFSET_LIMIT",
    "sqlite3": rb"SQLite format 3",
    "qt6-base": re.escape("no Qt platform plugin".encode("utf-16-le")),
    "libxkbcommon": rb"xkbcommon: ERROR",
    "qt6-wayland": rb"The Wayland connection broke",
    "wayland": rb"XDG_RUNTIME_DIR is invalid or not set",
    "libffi": rb"ffi_prep_cif",
}
faults = []


def expect(is_kept, fault):
    if not is_kept:
        faults.append(fault)


def schemas():
    """The schema's three files, by name."""
    cache = pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache") / "kotoban-schema"
    package = cache / SCHEMA_PACKAGE.rsplit("/", 1)[1]
    if not package.exists():
        with urllib.request.urlopen(SCHEMA_PACKAGE, timeout=60) as stream:
            content = stream.read()
        if base64.b64encode(hashlib.sha512(content).digest()).decode() != SCHEMA_SHA512:
            sys.exit(f"{SCHEMA_PACKAGE} is not what it was")
        cache.mkdir(parents=True, exist_ok=True)
        part = cache / f"part-{os.getpid()}"
        part.write_bytes(content)
        part.rename(package)
    with tarfile.open(package) as archive:
        return {name: json.load(io.TextIOWrapper(archive.extractfile(f"package/res/schema/{name}"), "utf-8"))
                for name in (SCHEMA, SPDX, SIGNATURE)}


def check_schema(bom, schema):
    # Files refer to each other relative to the address of the first.
    main = schema[SCHEMA]
    base = main["$id"].rsplit("/", 1)[0]
    resolver = jsonschema.RefResolver(main["$id"], main, {f"{base}/{name}": file for name, file in schema.items()})
    for fault in jsonschema.Draft7Validator(main, resolver=resolver).iter_errors(bom):
        expect(False, f"{'/'.join(map(str, fault.absolute_path))}: {fault.message}")
    # The schema checks the names of single licences, but expressions as any text.
    for component in [bom["metadata"]["component"], *bom["components"]]:
        for licence in component.get("licenses", []):
            for name in re.split(r" (?:AND|OR|WITH) ", re.sub("[()]", "", licence.get("expression", "MIT"))):
                expect(name in schema[SPDX]["enum"], f"{component['name']}: licence {name}")


def check_rules(bom):
    """What the schema leaves open: a version, a licence and a package URL for each part, and its dependencies."""
    everything = [bom["metadata"]["component"], *bom["components"]]
    for component in everything:
        name = component.get("name")
        expect(component.get("version"), f"{name}: no version")
        expect(component.get("licenses"), f"{name}: no licence")
        purl = component.get("purl", "")
        expect(re.fullmatch(r"pkg:(generic|generic/[\w.-]+|deb/[a-z]+)/[\w.%-]+@[\w.%~-]+(\?arch=\w+)?", purl),
               f"{name}: purl {purl}")
    references = [component["bom-ref"] for component in everything]
    listed = [dependency["ref"] for dependency in bom["dependencies"]]
    expect(sorted(listed) == sorted(references), "the dependencies do not list each component exactly once")
    wanted = {ref for dependency in bom["dependencies"] for ref in dependency.get("dependsOn", [])}
    expect(wanted == set(references[1:]), f"needed by nothing, or unknown: {wanted ^ set(references[1:])}")


def check_against_executable(bom, executable):
    with open(executable, "rb") as file:
        content = file.read()
    listed = {entry["value"] for component in bom["components"] for entry in component.get("properties", [])
              if entry["name"] == "kotoban:library"}
    if content.startswith(b"\x7fELF"):
        dynamic = subprocess.run(["readelf", "-dW", executable], check=True, capture_output=True, text=True,
                                 env={"PATH": "/usr/bin:/bin", "LC_ALL": "C"}).stdout
        needed = set(re.findall(r"NEEDED.*\[(.+)\]", dynamic))
        expect(needed == listed, f"shared libraries: {needed ^ listed}")
    # A source package may have the version in its name, or be named after the implementation.
    held = {re.sub(r"^(lib(?:png|jpeg)).*$", r"\1", c["name"]): c["version"]
            for c in bom["components"] if c["bom-ref"].startswith(("qt/", "source/"))}
    expect("nsis" in held or not content.startswith(b"MZ"), "the installer is not listed")
    for name, mark in MARKS.items():
        found = re.search(mark, content)
        if not found:
            continue
        expect(name in held, f"{name} is in the executable and is not listed")
        if found.groups():
            version = found.group(1).replace(b"\0", b"").decode().rstrip(".")
            expect(version in held.get(name, ""), f"{name} {version} is listed as {held.get(name)}")


def main():
    file, executable, *options = sys.argv[1:]
    with open(file, encoding="utf-8") as stream:
        bom = json.load(stream)
    try:
        check_schema(bom, schemas())
    except OSError as error:
        expect("--offline" in options, f"no schema: {error}")
        print(f"{file}: not compared with the schema: {error}", file=sys.stderr)
    check_rules(bom)
    check_against_executable(bom, executable)
    for fault in faults:
        print(f"{file}: {fault}", file=sys.stderr)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
