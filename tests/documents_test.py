#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT
"""Checks docs/architecture.md against the sources: the picture, the rooms, and each file and test suite that it names.
Also checks that README.md has figures of docs/performance.md, whose marks are on figures that hold, that the forges have
the same templates, that each file states its licence, and that no translation loses a placeholder."""
import re
import subprocess
import sys
import tomllib
from pathlib import Path
from xml.etree import ElementTree

ROOT = Path(__file__).resolve().parent.parent
faults = []


def expect(condition, fault):
    if not condition:
        faults.append(fault)


def check_picture():
    drawn = subprocess.run([ROOT / "scripts" / "draw_rooms.py", "-"], capture_output=True, check=True).stdout
    expect((ROOT / "docs" / "rooms.svg").read_bytes() == drawn, "docs/rooms.svg is outdated: run scripts/draw_rooms.py")


def check_rooms(text):
    section = text.split("## Rooms")[1].split("\n## ")[0]
    listed = set(re.findall(r"^\| `(\w+)` \|", section, re.MULTILINE))
    rooms = {folder.name for folder in (ROOT / "src").iterdir() if folder.is_dir()}
    expect(listed == rooms, f"the table of rooms differs from src: {sorted(listed ^ rooms)}")


def check_files(text):
    for name in re.findall(r"`((?:src|tests|scripts|packaging|fuzz|docs)/[^`]+)`", text):
        expect((ROOT / name).exists(), f"{name} does not exist")


def check_suites(text):
    suites_in_file = re.findall(r"((?:`\w+`(?:, | and )?)+) in `(tests/[^`]+_test\.cpp)`", text)
    expect(suites_in_file, "no test suite is named")
    for suites, name in suites_in_file:
        file = ROOT / name
        source = file.read_text("utf-8") if file.exists() else ""
        for suite in re.findall(r"`(\w+)`", suites):
            expect(re.search(rf"^TEST(_F)?\({suite},", source, re.MULTILINE), f"{name} has no suite {suite}")


def check_templates():
    same = {"ISSUE_TEMPLATE/bug.md": "issue_templates/Bug.md", "ISSUE_TEMPLATE/wish.md": "issue_templates/Wish.md",
            "pull_request_template.md": "merge_request_templates/Default.md"}
    for github, gitlab in same.items():
        body = (ROOT / ".github" / github).read_text("utf-8").split("---\n\n", 1)[-1]
        expect((ROOT / ".gitlab" / gitlab).read_text("utf-8") == body, f".gitlab/{gitlab} differs from .github/{github}")


def cells(line):
    return [cell.strip() for cell in line.strip("|").split("|")]


def check_figures():
    """Each row of README.md's table is one of docs/performance.md, its name split where that has a stroke."""
    performance = (ROOT / "docs" / "performance.md").read_text("utf-8").split("## Figures")[1].split("\n## ")[0]
    first_table = next(part for part in performance.split("\n\n") if part.strip().startswith("| "))
    figures = {cells(line)[0]: cells(line) for line in first_table.splitlines() if line.startswith("| ")}
    table = (ROOT / "README.md").read_text("utf-8").split("## Performance")[1].split("\n## ")[0]
    rows = [cells(line) for line in table.splitlines() if line.startswith("| ")][2:]
    expect(rows, "README.md has no figures")
    for what, other, ratio, limit in rows:
        found = figures.get(f"{what} / {other}")
        expect(found, f"docs/performance.md has no row: {what} / {other}")
        expect(not found or (found[1], found[3]) == (ratio, limit), f"README.md differs in: {what} / {other}")
    for what, ratio, spread, limit in list(figures.values())[2:]:
        # Wake-ups are counted by themselves.
        is_clock = not what.endswith(", in instructions") and not what.startswith("wake-ups")
        spread = float(spread.replace("–", "0").rstrip("% "))
        expect(not (limit and is_clock and spread > 10), f"docs/performance.md has a mark on a noisy clock: {what}")
        is_missed = limit != "" and float(ratio.strip("*")) > float(limit)
        expect(ratio.startswith("**") == is_missed, f"docs/performance.md has a miss not in bold, or a hit: {what}")


def pattern(path):
    """The regular expression for a path of REUSE.toml, in which only ** matches across folders."""
    parts = {"**": ".*", "*": "[^/]*"}
    return "".join(parts.get(part) or re.escape(part) for part in re.split(r"(\*\*?)", path))


def check_licences():
    """Checks nothing outside a Git clone, where sources cannot be told apart from build output."""
    listed = subprocess.run(["git", "-C", ROOT, "ls-files", "-z"], capture_output=True).stdout.decode("utf-8")
    settings = tomllib.loads((ROOT / "REUSE.toml").read_text("utf-8"))
    covered = re.compile("|".join(pattern(path) for path in settings["annotations"][0]["path"]))
    for name in listed.split("\0")[:-1]:
        if not covered.fullmatch(name) and (ROOT / name).exists():
            expect(b"SPDX-License-Identifier: MIT" in (ROOT / name).read_bytes()[:300], f"{name} states no licence")


def check_translations():
    """A translation without a placeholder of its source makes Qt complain whenever the text is shown."""
    for message in ElementTree.parse(ROOT / "assets" / "qt_ja.ts").iter("message"):
        source, translation = message.findtext("source"), message.findtext("translation")
        expect(set(re.findall(r"%\d", source)) == set(re.findall(r"%\d", translation)),
               f"the placeholders of the translation differ: {source}")


def main():
    text = (ROOT / "docs" / "architecture.md").read_text("utf-8")
    check_picture()
    check_rooms(text)
    check_files(text)
    check_suites(text)
    check_figures()
    check_templates()
    check_licences()
    check_translations()
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


sys.exit(main())
