# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

"""Prints the ratios of bench/growth. Usage: growth.py BENCH_GROWTH [WORDS].

Runs the program under callgrind, which writes a file of its own for each step, and compares the numbers of
instructions. Prints a row for each subject, with the input whose ratio is largest, and below them every input whose
ratio is too large. docs/performance.md explains how to read the table.
"""

import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

SIZE = 20_000
LIMIT = 15


def counts(program, *words):
    """Instructions of each step, by (subject, input, size)."""
    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as folder:
        subprocess.run(["valgrind", "--quiet", "--tool=callgrind", "--instr-atstart=no",
                        f"--callgrind-out-file={folder}/out", program, str(SIZE), *words],
                       check=True, env={**os.environ, "TMPDIR": folder})
        found = {}
        for file in sorted(Path(folder).glob("out.*"), key=lambda each: int(each.suffix[1:])):
            text = file.read_text()
            step = re.search(r"^desc: Trigger: Client Request: (.*)\|(.*)\|(\d+)$", text, re.MULTILINE)
            total = re.search(r"^(?:totals|summary): (\d+)", text, re.MULTILINE)
            if step and total:
                found[step[1], step[2], int(step[3])] = int(total[1])
        return found


found = counts(*sys.argv[1:])
ratios = {}
for (subject, name, size), count in found.items():
    if size == SIZE:
        ratios.setdefault(subject, []).append((found[subject, name, 10 * SIZE] / count, name))
print("| what | worst input | ratio | at most | reached |")
print("| --- | --- | ---: | ---: | --- |")
for subject, all_of_it in ratios.items():
    ratio, name = max(all_of_it)
    print(f"| {subject} | `{name}` | {ratio:.1f} | {LIMIT} | {'yes' if ratio <= LIMIT else 'NO'} |")
for subject, all_of_it in ratios.items():
    for ratio, name in sorted(all_of_it, reverse=True):
        if ratio > LIMIT:
            print(f"{subject}: {name}: {ratio:.1f}")
sys.exit(any(ratio > LIMIT for all_of_it in ratios.values() for ratio, _ in all_of_it))
