#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT
"""Checks that an executable is hardened and does not reveal where it was built.

    hardening_test.py EXECUTABLE [FOLDER...]

It must not contain the paths of the given folders, of the current user's home and of the source folder.
"""
import re
import subprocess
import sys
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2]


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True, errors="replace").stdout


def faults_of_elf(executable, content):
    about = output_of("readelf", "--wide", "--file-header", "--program-headers", "--dynamic", executable)
    symbols = output_of("readelf", "--wide", "--dyn-syms", executable)
    objdump = "aarch64-linux-gnu-objdump" if "AArch64" in about else "objdump"
    code = output_of(objdump, "--disassemble", "--section=.text", "--no-show-raw-insn", executable)
    yield re.search(r"Type:\s+DYN", about) and "PIE" in about, "is not position-independent"
    yield "GNU_RELRO" in about, "has no RELRO segment"
    yield re.search(r"\(FLAGS(_1)?\).*\bNOW\b", about), "does not bind all symbols at start (-z now)"
    yield re.search(r"GNU_STACK.* RW +0x", about), "has an executable stack"
    yield not re.search(r"\((RPATH|RUNPATH|TEXTREL)\)", about), "has a library search path or text relocations"
    yield "__stack_chk_fail" in symbols, "has no stack protector"
    # A program may have no call that can be checked; these always can.
    unchecked = re.search(r"UND v?[fs]?n?printf@|UND str(cpy|cat)@", symbols)
    yield re.search(r"__\w+_chk@", symbols) or not unchecked, "does not check the lengths of buffers (_FORTIFY_SOURCE)"
    if "X86-64" in about:
        yield code.count("endbr64") > 1000, "does not mark the targets of indirect jumps (-fcf-protection)"
    if "AArch64" in about:
        yield code.count("paciasp") > 1000, "does not sign return addresses (-mbranch-protection)"
    yield b"__n < this->size()" in content, "does not check the indices of containers (_GLIBCXX_ASSERTIONS)"


def faults_of_pe(executable, content):
    about = output_of("objdump", "--private-headers", executable)
    for flag in "HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT":
        yield flag in about, f"is not {flag}"
    yield re.search(r"MajorSubsystemVersion\s+10\b", about), "does not require Windows 10"
    yield re.search(r"MinorSubsystemVersion\s+0\b", about), "requires a version of Windows that does not exist"
    yield b"stack smashing detected" in content, "has no stack protector"
    yield b"__n < this->size()" in content, "does not check the indices of containers (_GLIBCXX_ASSERTIONS)"


def main():
    if len(sys.argv) < 2:
        sys.exit("usage: hardening_test.py EXECUTABLE [FOLDER...]")
    executable = Path(sys.argv[1])
    content = executable.read_bytes()
    if content.startswith(b"\x7fELF"):
        checks = list(faults_of_elf(executable, content))
    else:
        checks = list(faults_of_pe(executable, content))
    for folder in [SOURCE, Path.home(), *map(Path, sys.argv[2:])]:
        if folder == Path("/"):
            continue
        for encoding in "utf-8", "utf-16-le":
            checks.append((f"{folder}/".encode(encoding) not in content, f"names the folder {folder} ({encoding})"))
    faults = [fault for holds, fault in checks if not holds]
    for fault in faults:
        print(f"{executable} {fault}", file=sys.stderr)
    sys.exit(1 if faults else 0)


main()
