#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT
"""Checks an SBOM against the rules of CycloneDX 1.5 and against the executable that it describes.

    check_sbom.py FILE EXECUTABLE
"""
import json
import re
import subprocess
import sys

# The SPDX names allowed in licence expressions here; no other tool would notice a misspelt one.
SPDX = {
    "AFL-2.1", "Apache-2.0", "BSD-1-Clause", "BSD-2-Clause", "BSD-3-Clause", "BSD-4-Clause", "CC0-1.0", "CPL-1.0", "FTL",
    "GPL-2.0-only", "GPL-2.0-or-later", "GPL-3.0-only", "GPL-3.0-or-later", "HPND", "HPND-sell-variant", "IJG",
    "Imlib2", "LGPL-2.1-or-later", "LGPL-3.0-only", "Libpng", "MIT", "MIT-open-group", "MPL-1.1", "Unicode-DFS-2016",
    "X11", "ZPL-2.1", "Zlib", "blessing", "bzip2-1.0.6", "libpng-2.0",
}
EXCEPTIONS = {"GCC-exception-3.1"}
# Bytes that show that a library is linked in, for some with its version.
MARKS = {
    "zlib": rb"inflate (\d[\d.]+) Copyright",
    "libpng": rb"libpng version (\d[\d.]+)",
    "libjpeg": rb"libjpeg-turbo version (\d[\d.]+)",
    "pcre2": rb"PCRE2_USE_OFFSET_LIMIT",
    "sqlite3": rb"SQLite format 3",
    "qt6-base": re.escape("no Qt platform plugin".encode("utf-16-le")),
    "libxkbcommon": rb"xkbcommon: ERROR",
}
faults = []


def expect(is_kept, fault):
    if not is_kept:
        faults.append(fault)


def is_expression(text):
    """NAME [WITH EXCEPTION] (AND|OR) NAME ..."""
    names = re.split(r" (?:AND|OR) ", text)
    return all(name.split(" WITH ")[0] in SPDX and set(name.split(" WITH ")[1:]) <= EXCEPTIONS for name in names)


def is_licence(choice):
    """Whether an entry of a list of licences is valid."""
    if "expression" in choice:
        return set(choice) == {"expression"} and is_expression(choice["expression"])
    licence = choice.get("license", {})
    return (set(licence) == {"name"} and licence["name"] != "") or (set(licence) == {"id"} and licence["id"] in SPDX)


def check_component(component):
    name = component.get("name")
    expect(name and isinstance(name, str), f"a component without a name: {component}")
    expect(component.get("type") in ("application", "library"), f"{name}: type {component.get('type')}")
    expect(component.get("version"), f"{name}: no version")
    expect(component.get("scope") in (None, "required"), f"{name}: scope {component.get('scope')}")
    purl = component.get("purl", "")
    expect(re.fullmatch(r"pkg:(generic|generic/[\w.-]+|deb/[a-z]+)/[\w.%-]+@[\w.%~-]+(\?arch=\w+)?", purl),
           f"{name}: purl {purl}")
    licences = component.get("licenses", [])
    expect(licences and all(map(is_licence, licences)), f"{name}: licences {licences}")
    # The rules allow nothing beside an expression.
    expect(len(licences) == 1 or not any("expression" in licence for licence in licences), f"{name}: {licences}")
    expect(all({"name", "value"} == set(entry) for entry in component.get("properties", [])), f"{name}: properties")
    known = {"type", "bom-ref", "name", "version", "description", "scope", "licenses", "purl", "externalReferences",
             "properties"}
    expect(set(component) <= known, f"{name}: fields {set(component) - known}")


def check_structure(bom):
    expect(bom.get("bomFormat") == "CycloneDX" and bom.get("specVersion") == "1.5" and bom.get("version") == 1,
           "not CycloneDX 1.5")
    expect(re.fullmatch(r"urn:uuid:[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}", bom.get("serialNumber", "")),
           "the serial number is invalid")
    moment = bom["metadata"].get("timestamp", "")
    expect(re.fullmatch(r"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ)?", moment), f"{moment} is not a time")
    everything = [bom["metadata"]["component"], *bom["components"]]
    for component in everything:
        check_component(component)
    references = [component["bom-ref"] for component in everything]
    expect(len(references) == len(set(references)), "two components share a reference")
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
    file, executable = sys.argv[1:]
    with open(file, encoding="utf-8") as stream:
        bom = json.load(stream)
    check_structure(bom)
    check_against_executable(bom, executable)
    for fault in faults:
        print(f"{file}: {fault}", file=sys.stderr)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
