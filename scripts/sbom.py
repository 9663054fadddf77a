#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT
"""Writes the software bill of materials (SBOM) of a package, what it contains and needs, as CycloneDX 1.5.

    sbom.py qt-parts SOURCE BUILD FILE
        After a build of a static Qt: lists in FILE the third-party parts of its libraries and plugins, from the
        attribution files in its source. Ninja's records say which of their files were compiled.

    sbom.py write FILE --version VERSION --program PROGRAM [--holds PACKAGE]... [--installer PACKAGE]...
            [--qt-parts FILE] [--root FOLDER]
        Writes to FILE the SBOM of a package with the executable PROGRAM. --holds names an installed package whose
        source is linked in, --installer one whose code is in the installer and the uninstaller; the shared libraries
        that PROGRAM needs are read from it if it is for Linux. Their packages are this machine's, or those of the system
        for another architecture that is unpacked in FOLDER.

Versions come from the package database of this machine. The output is reproducible: the only time in it is
SOURCE_DATE_EPOCH, and its serial number is derived from its content.
"""
import argparse
import datetime
import fnmatch
import json
import os
import pathlib
import platform
import re
import subprocess
import sys
import urllib.parse
import uuid

# By source package, a compiler's without the version in its name. A package that is not listed ends the run, since it
# must not be shipped before somebody has looked up its licence.
LICENCES = {
    "brotli": "MIT",
    "bzip2": "bzip2-1.0.6",
    "dbus": "AFL-2.1 OR GPL-2.0-or-later",
    "expat": "MIT",
    "fontconfig": "HPND-sell-variant",
    "freetype": "FTL OR GPL-2.0-or-later",
    "gcc": "GPL-3.0-or-later WITH GCC-exception-3.1",
    "gcc-mingw-w64": "GPL-3.0-or-later WITH GCC-exception-3.1",
    "glib2.0": "LGPL-2.1-or-later",
    "glibc": "LGPL-2.1-or-later",
    "graphite2": "LGPL-2.1-or-later OR MPL-1.1 OR GPL-2.0-or-later",
    "harfbuzz": "MIT",
    "icu": "Unicode-DFS-2016",
    "libglvnd": "MIT AND BSD-1-Clause AND Apache-2.0",
    "libjpeg-turbo": "IJG AND BSD-3-Clause AND Zlib",
    "libffi": "MIT",
    "libpng1.6": "Libpng AND libpng-2.0",
    "libx11": "MIT",
    "libxcb": "MIT",
    "libxkbcommon": "MIT",
    "mingw-w64": "ZPL-2.1 AND MIT AND BSD-3-Clause",
    "nsis": "Zlib AND CPL-1.0",
    "pcre2": "BSD-3-Clause",
    "qt6-base": "LGPL-3.0-only OR GPL-2.0-only OR GPL-3.0-only",
    # Its protocols have licences of their own.
    "qt6-wayland": "(LGPL-3.0-only OR GPL-2.0-only OR GPL-3.0-only) AND MIT AND HPND-sell-variant",
    "sqlite3": "blessing",
    "wayland": "MIT",
    "xcb-util": "MIT",
    "xcb-util-cursor": "MIT",
    "xcb-util-image": "MIT",
    "xcb-util-keysyms": "MIT",
    "xcb-util-renderutil": "MIT",
    "xcb-util-wm": "MIT",
    "zlib": "Zlib",
}
# SPDX names for what Qt's attribution files name differently; "" where there is none.
QT_LICENCES = {
    "FTL OR GPL-2.0": "FTL OR GPL-2.0-only",
    "FTL or GPL-2.0": "FTL OR GPL-2.0-only",
    "Apache License 2.0": "Apache-2.0",
    "MIT License": "MIT",
    "MIT AND MIT-open-group": "MIT AND MIT-open-group",
    "ICC License": "",
}
# The folders of what the program is linked with. Tests, tools and parts for other systems are compiled too.
QT_FOLDERS = ("src/3rdparty/", "src/corelib/", "src/gui/", "src/widgets/", "src/plugins/")


def output_of(*command):
    # Tools translate their output.
    environment = {**os.environ, "LC_ALL": "C.UTF-8", "LANGUAGE": ""}
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, env=environment).stdout


def compiled_files(source, build):
    """The files of Qt's source that its libraries were compiled from, headers included, relative to the source."""
    files = set()
    is_wanted = False
    for line in output_of("ninja", "-C", build, "-t", "deps").splitlines():
        if line.startswith("    "):
            if is_wanted:
                files.add(os.path.relpath(os.path.join(build, line.strip()), source))
        elif line:
            is_wanted = line.startswith(QT_FOLDERS)
    return files


def attributions(source):
    """Yields (folder, entry) for each entry of Qt's attribution files; the folder is relative to the source."""
    for file in sorted(pathlib.Path(source).glob("**/qt_attribution.json")):
        # Like Qt's own reader, accepts line breaks in strings, and takes the last of two values of the same name.
        entries = json.loads(file.read_text(encoding="utf-8"), strict=False)
        for entry in entries if isinstance(entries, list) else [entries]:
            yield os.path.relpath(file.parent, source), entry


def is_compiled(folder, entry, compiled):
    place = os.path.normpath(os.path.join(folder, entry.get("Path", "")))
    if place in compiled:
        return True
    names = entry.get("Files", "")
    names = names if isinstance(names, list) else re.split(r"[\s,]+", names.strip())
    patterns = [os.path.join(place, name) for name in names if name] or [os.path.join(place, "*")]
    return any(fnmatch.fnmatchcase(file, pattern) for file in compiled for pattern in patterns)


def licence_of_qt_part(entry):
    """{"expression": SPDX expression}, or {"name": name} where SPDX has none."""
    identifier = entry.get("LicenseId", "")
    identifier = QT_LICENCES.get(identifier, identifier)
    return {"expression": identifier} if identifier else {"name": entry["License"]}


def write_qt_parts(arguments):
    source, build = os.path.realpath(arguments.source), os.path.realpath(arguments.build)
    compiled = compiled_files(source, build)
    parts = []
    for folder, entry in attributions(source):
        if not is_compiled(folder, entry, compiled):
            continue
        part = {"id": entry["Id"], "name": entry["Name"], "licence": licence_of_qt_part(entry)}
        origin = pathlib.Path(source, folder, "SOURCE")
        if origin.exists():
            part["package"] = origin.read_text(encoding="utf-8").strip()
        elif "Version" in entry:
            part["version"] = entry["Version"]
        if "Homepage" in entry:
            part["homepage"] = entry["Homepage"]
        parts.append(part)
    if not parts:
        sys.exit(f"sbom.py: nothing in {build} was compiled from {source}")
    write_json(arguments.file, parts)


def write_json(file, content):
    pathlib.Path(file).write_text(json.dumps(content, indent=2, ensure_ascii=False) + "\n", encoding="utf-8")


def quoted(text):
    return urllib.parse.quote(text, safe="")


def distribution():
    return platform.freedesktop_os_release()["ID"]


def package_url(name, version, architecture):
    return f"pkg:deb/{distribution()}/{quoted(name)}@{quoted(version)}?arch={architecture}"


def licences_of_package(source):
    name = re.sub(r"^gcc-\d+$", "gcc", source)
    if name not in LICENCES:
        sys.exit(f"sbom.py: look up the licence of the source package {source} and add it to the list in this file")
    return [{"expression": LICENCES[name]}]


def source_component(source, version, note):
    return {
        "type": "library",
        "bom-ref": f"source/{source}",
        "name": source,
        "version": version,
        "scope": "required",
        "licenses": licences_of_package(source),
        "purl": package_url(source, version, "source"),
        "properties": [{"name": "kotoban:place", "value": note}],
    }


def held_components(packages, place):
    """Components for the source packages that installed packages were built from, each once."""
    sources = {output_of("dpkg-query", "-W", "-f", "${source:Package}=${source:Version}", name) for name in packages}
    return [source_component(*source.split("=", 1), place) for source in sorted(sources)]


def qt_part_component(part, qt):
    place = f"in the executable, as a part of {qt['name']} {qt['version']}"
    if "package" in part:
        return source_component(*part["package"].split("=", 1), place)
    component = {"type": "library", "bom-ref": f"qt/{part['id']}", "name": part["id"], "description": part["name"]}
    # A part without a version is identified as a part of the Qt that contains it.
    component["version"] = part.get("version", qt["version"])
    name = quoted(part["id"]) if "version" in part else f"{qt['name']}/{quoted(part['id'])}"
    component["scope"] = "required"
    licence = part["licence"]
    component["licenses"] = [licence] if "expression" in licence else [{"license": licence}]
    component["purl"] = f"pkg:generic/{name}@{quoted(component['version'])}"
    if "homepage" in part:
        component["externalReferences"] = [{"type": "website", "url": part["homepage"]}]
    component["properties"] = [{"name": "kotoban:place", "value": place}]
    return component


def needed_libraries(program, root):
    """Maps packages to the names of the shared libraries in them that an ELF executable needs; {} for other formats.

    The packages are those of this machine, or of the system of another architecture in the folder root.
    """
    with open(program, "rb") as file:
        if file.read(4) != b"\x7fELF":
            return {}
    names = re.findall(r"\(NEEDED\).*\[(.+)\]", output_of("readelf", "-dW", program))
    if root:
        libraries = pathlib.Path(root, "usr/lib")
        folders = [libraries, *libraries.glob("*-linux-gnu")]
        paths = {name: f"/{file.relative_to(root)}" for name in names for folder in folders
                 if (file := folder / name).exists()}
        return by_package(program, names, paths, root)
    # The loader is listed by its path alone, all others as NAME => PATH.
    paths = {os.path.basename(path): os.path.realpath(path)
             for path in re.findall(r"(/\S+) \(0x", output_of("ldd", program))}
    return by_package(program, names, paths, root)


def by_package(program, names, paths, root):
    packages = {}
    for name in names:
        if name not in paths:
            sys.exit(f"sbom.py: {program} needs {name}, which is not installed")
        packages.setdefault(package_of(paths[name], root), []).append(name)
    return packages


def dpkg_query(root):
    return ["dpkg-query", *([f"--admindir={root}/var/lib/dpkg"] if root else [])]


def package_of(path, root):
    """The package of a library. The database may list it without the /usr that the path has on a merged-/usr system."""
    for candidate in (path, path.removeprefix("/usr"), "/usr" + path):
        found = subprocess.run([*dpkg_query(root), "-S", candidate], capture_output=True, text=True)
        if found.returncode == 0:
            return found.stdout.split(": ")[0]
    sys.exit(f"sbom.py: {path} belongs to no package")


def needed_components(program, root):
    components = []
    for package, libraries in sorted(needed_libraries(program, root).items()):
        fields = "${Package}\t${Version}\t${Architecture}\t${source:Package}"
        name, version, architecture, source = output_of(*dpkg_query(root), "-W", "-f", fields, package).split("\t")
        components.append({
            "type": "library",
            "bom-ref": f"package/{name}",
            "name": name,
            "version": version,
            "scope": "required",
            "licenses": licences_of_package(source),
            "purl": package_url(name, version, architecture),
            "properties": [{"name": "kotoban:place", "value": "not in the package: a library of the system"},
                           *({"name": "kotoban:library", "value": library} for library in libraries)],
        })
    return components


def write_sbom(arguments):
    held = held_components(arguments.holds, "in the executable")
    parts = []
    if arguments.qt_parts:
        qt = next(component for component in held if component["name"].startswith("qt"))
        with open(arguments.qt_parts, encoding="utf-8") as file:
            parts = [qt_part_component(part, qt) for part in json.load(file)]
    needed = needed_components(arguments.program, arguments.root)
    needed += held_components(arguments.installer, "in the installer and the uninstaller")
    references = {component["bom-ref"]: [] for component in [*held, *parts, *needed]}
    if parts:
        references[qt["bom-ref"]] = [part["bom-ref"] for part in parts]
    program = f"kotoban@{arguments.version}"
    references[program] = [component["bom-ref"] for component in [*held, *needed]]
    metadata = {
        "component": {
            "type": "application",
            "bom-ref": program,
            "name": "kotoban",
            "version": arguments.version,
            "licenses": [{"license": {"id": "MIT"}}],
            "purl": f"pkg:generic/{program}",
        },
        "supplier": {"name": "The Kotoban developers"},
    }
    if "SOURCE_DATE_EPOCH" in os.environ:
        moment = datetime.datetime.fromtimestamp(int(os.environ["SOURCE_DATE_EPOCH"]), datetime.timezone.utc)
        metadata["timestamp"] = moment.strftime("%Y-%m-%dT%H:%M:%SZ")
    content = {
        "metadata": metadata,
        "components": [*held, *parts, *needed],
        "dependencies": [{"ref": ref, "dependsOn": refs} if refs else {"ref": ref} for ref, refs in references.items()],
    }
    serial = uuid.uuid5(uuid.NAMESPACE_OID, json.dumps(content, sort_keys=True))
    write_json(arguments.file, {
        "$schema": "http://cyclonedx.org/schema/bom-1.5.schema.json",
        "bomFormat": "CycloneDX",
        "specVersion": "1.5",
        "serialNumber": f"urn:uuid:{serial}",
        "version": 1,
        **content,
    })


def main():
    parser = argparse.ArgumentParser(description="Writes the SBOM of a package of the program.")
    commands = parser.add_subparsers(required=True)
    qt_parts = commands.add_parser("qt-parts")
    qt_parts.add_argument("source")
    qt_parts.add_argument("build")
    qt_parts.add_argument("file")
    qt_parts.set_defaults(run=write_qt_parts)
    write = commands.add_parser("write")
    write.add_argument("file")
    write.add_argument("--version", required=True)
    write.add_argument("--program", required=True)
    write.add_argument("--holds", action="append", default=[])
    write.add_argument("--installer", action="append", default=[])
    write.add_argument("--qt-parts")
    write.add_argument("--root")
    write.set_defaults(run=write_sbom)
    arguments = parser.parse_args()
    arguments.run(arguments)


if __name__ == "__main__":
    main()
