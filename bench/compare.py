# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

"""Prints the ratios of bench/compare. Usage: compare.py BUILD_FOLDER, with everything built and the inputs generated.

The members of each pair are measured alternately, A B A B ..., after one warm-up round. A figure is the median of the
runs' ratios; its spread is half their interquartile range, in percent of the median. docs/performance.md explains how
to read the table.
"""

import json
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

ROUNDS = 7
FRAME_US = 1e6 / 60

build = Path(sys.argv[1]).resolve()
tools = build / "bench"
inputs = build / "inputs"
long_file = inputs / "study_1000000.txt"


def run(*command, stdin=None, env=None):
    """Output of a command that must succeed; if it fails, its error output is shown."""
    result = subprocess.run([str(word) for word in command], input=stdin, env=env, text=True, capture_output=True)
    if result.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} failed:\n{result.stderr}")
    return result.stdout


def seconds(*command, stdin=None):
    """CPU time of a whole process, its output discarded. Other load on the machine hardly affects it."""
    with open(stdin or os.devnull, "rb") as source:
        process = subprocess.Popen([str(word) for word in command], stdin=source, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} failed")
    return usage.ru_utime + usage.ru_stime


def in_turns(*measures):
    """Runs some measures alternately; a list of results for each. A result is a number or a tuple of numbers."""
    rounds = [[measure() for measure in measures] for _ in range(ROUNDS + 1)][1:]
    return [list(values) for values in zip(*rounds)]


def ratios(ours, others):
    return [mine / other for mine, other in zip(ours, others)]


def shares(ours, whole):
    return [mine / whole for mine in ours]


def row(what, values, limit):
    """Prints a row of the table: the median of some values and their spread."""
    median = statistics.median(values)
    quarters = statistics.quantiles(values) if len(values) > 1 else [median] * 3
    spread = 100 * (quarters[2] - quarters[0]) / 2 / median if median else 0
    verdict = "yes" if median <= limit else "NO"
    print(f"| {what} | {median:6.3f} | {spread:3.0f} % | {limit:5.2f} | {verdict} |", flush=True)


def operation(*words):
    return lambda: seconds(tools / "bench_operation", *words)


def compare_loading():
    ours, iconv = in_turns(operation("load", long_file),
                           lambda: seconds("iconv", "-f", "CP932", "-t", "UTF-16LE", long_file))
    row("load a file of 1,000,000 lines / iconv to UTF-16", ratios(ours, iconv), 0.6)
    [grown] = in_turns(lambda: float(run(tools / "bench_operation", "load", long_file).split()[1]))
    row("memory after that load / size of the file", shares(grown, long_file.stat().st_size), 3)


def compare_detection():
    for name, file in (("ASCII", inputs / "ascii.txt"), ("Shift_JIS", long_file)):
        ours, nkf, uchardet = in_turns(lambda: seconds(tools / "bench_detect", file),
                                       lambda: seconds("nkf", "--guess", file), lambda: seconds("uchardet", file))
        row(f"detect the encoding, {name} / nkf --guess", ratios(ours, nkf), 1)
        row(f"detect the encoding, {name} / uchardet", ratios(ours, uchardet), 1)


def timings(names):
    """Benchmarks interleaved in one process: CPU times in microseconds by name, and counters by name."""
    output = run(tools / "study_bench", f"--benchmark_filter={names}", f"--benchmark_repetitions={ROUNDS}",
                 "--benchmark_enable_random_interleaving=true", "--benchmark_format=json",
                 env={**os.environ, "STUDY_BENCH_INPUTS": str(inputs)})
    unit = {"ns": 1e-3, "us": 1, "ms": 1e3}
    cpu_us, counters = {}, {}
    for each in json.loads(output)["benchmarks"]:
        if each["run_type"] != "iteration":
            continue
        name = each["name"].partition("/iterations:")[0]
        cpu_us.setdefault(name, []).append(each["cpu_time"] * unit[each["time_unit"]])
        for counter in ("key_ms", "longest_ms", "shown_ms", "to_hit_ms", "wakes_per_second"):
            if counter in each:
                counters.setdefault((name, counter), []).append(each[counter])
    return cpu_us, counters


def compare_growth():
    """Uses a process of its own: after other benchmarks, a short file would find its memory already allocated."""
    cpu_us, _ = timings("LoadFile/(30000|1000000)$")
    long, short = cpu_us["LoadFile/1000000"], cpu_us["LoadFile/30000"]
    row("load, time per line, 1,000,000 lines / 30,000 lines",
        ratios(shares(long, 1_000_000), shares(short, 30_000)), 1.15)


def compare_steps():
    cpu_us, counters = timings(
        "Ascii|Enter|Click|Turn|Repaint|PageDown|Zoom|Sideways|AllShown|Mark|StudyHard|HideAndUndo|OpenPage|Idle")
    row("detect the encoding of ASCII / memchr over it", ratios(cpu_us["DetectAscii"], cpu_us["MemchrAscii"]), 4)
    for name, what in (("PressEnter", "Enter"), ("Click", "a click"), ("MarkHard", "a mark"),
                       ("StudyHard", "a round of hard words"),
                       ("HideAndUndo", "hiding all and undo"), ("TurnPage", "a page turn"),
                       ("TurnWheel", "a wheel step"), ("Repaint", "a repaint"),
                       ("Zoom", "a zoom step"), ("ScrollSideways", "a horizontal scroll step"),
                       ("AllShown", "whether all is shown")):
        long, short = cpu_us[f"{name}/1000000"], cpu_us[f"{name}/1000"]
        row(f"{what}, 1,000,000 lines / 1,000 lines", ratios(long, short), 1.1)
        if name != "AllShown":
            # Some repaint the page several times, in a new text size, or at the largest zoom.
            share = 4 if name == "StudyHard" else 8 if name in ("HideAndUndo", "Zoom", "ScrollSideways") else 16
            row(f"{what} in the long file / 1/{share} of a frame at 60 Hz", shares(long, FRAME_US / share), 1)
    for name, what in (("PressEnter", "Enter"), ("TurnPage", "a page turn"), ("TurnWheel", "a wheel step"),
                       ("Zoom", "a zoom step")):
        wrapped, sideways = cpu_us[f"{name}Wrapped/1000"], cpu_us[f"{name}Sideways/1000"]
        row(f"{what}, lines that wrap / that do not", ratios(wrapped, sideways), 1.5)
        row(f"{what}, 1,000,000 lines that wrap / 1,000 lines", ratios(cpu_us[f"{name}Wrapped/1000000"], wrapped), 1.1)
    row("Enter / a repaint", ratios(cpu_us["PressEnter/1000"], cpu_us["Repaint/1000"]), 0.25)
    row("a repaint / that of QPlainTextEdit", ratios(cpu_us["Repaint/1000"], cpu_us["RepaintPlainText/1000"]), 0.5)
    row("page down / that of QPlainTextEdit", ratios(cpu_us["PageDown/1000"], cpu_us["PageDownPlainText/1000"]), 0.8)
    row("from the login to a page of 3,000 lines / a frame", shares(cpu_us["OpenPage/3000"], FRAME_US), 3)
    row("wake-ups per second with a file open", counters["Idle/3000", "wakes_per_second"], 2)


def compare_search():
    cpu_us, counters = timings("CountHits/1000000|CountKeywords/1000000|TypeSearch/1000000|LoadFile/1000000$")
    longest = counters["TypeSearch/1000000", "longest_ms"]
    row("typing in the search, 1,000,000 lines: longest block of the event loop / 8 ms", shares(longest, 8), 1)
    to_hit_us = [1000 * ms for ms in counters["TypeSearch/1000000", "to_hit_ms"]]
    row("showing a hit 10,000 lines away / half a frame", shares(to_hit_us, FRAME_US / 2), 1)
    with tempfile.TemporaryDirectory() as folder:
        text = Path(folder) / "text"
        text.write_bytes(long_file.read_bytes().decode("cp932").encode())
        for number, wanted in enumerate(("春夏", "wor", "s")):
            [rg] = in_turns(lambda: 1e6 * seconds("rg", "-i", "-F", "-j1", "--count-matches", wanted, text))
            row(f"all hits of {wanted} / the whole process of rg", ratios(cpu_us[f"CountHits/1000000/{number}"], rg), 2)
    row("all hits of 500 keywords / the load of the file",
        ratios(cpu_us["CountKeywords/1000000"], cpu_us["LoadFile/1000000"]), 4)


def compare_writing():
    _, counters = timings("TypeWhileWriting|OpenToBeWritten")
    row("a key typed in a file of 2 MB / in QPlainTextEdit",
        ratios(counters["TypeWhileWriting/1", "key_ms"], counters["TypeWhileWriting/0", "key_ms"]), 2)
    row("checking all its lines while it is written: longest block of the event loop / 8 ms",
        shares(counters["OpenToBeWritten", "longest_ms"], 8), 1)


def compare_tables():
    _, counters = timings("TypeTableSeparator")
    row("a separator typed in a table of 52 MB / of 1 MB",
        ratios(counters["TypeTableSeparator/52", "key_ms"], counters["TypeTableSeparator/1", "key_ms"]), 1.25)
    row("reading the rest of that table: longest block of the event loop / two frames",
        shares(counters["TypeTableSeparator/52", "longest_ms"], 2 * FRAME_US / 1000), 1)


def compare_lists():
    cpu_us, counters = timings("ShowFileList|ShowHistory|PaintCalendar|MakeHardNote")
    row("the note of 2,000 marks in 200 files / 0.3 s", shares(cpu_us["MakeHardNote/2000"], 0.3e6), 1)
    row("showing a list of 10,000 study files / 50 ms", shares(counters["ShowFileList/10000", "shown_ms"], 50), 1)
    row("checking them all: longest block of the event loop / a frame",
        shares(counters["ShowFileList/10000", "longest_ms"], FRAME_US / 1000), 1)
    for weeks in (2, 9999):
        for tab, name in enumerate(("bars", "calendar", "table of files")):
            row(f"{weeks:,} weeks of 1,000,000 sessions, {name}: longest block of the event loop / 16 ms",
                shares(counters[f"ShowHistory/{weeks}/{tab}", "longest_ms"], 16), 1)
    row("painting the calendar of ten years / a frame", shares(cpu_us["PaintCalendar"], FRAME_US), 1)


def compare_largest_lists():
    cpu_us, _ = timings("Large")
    for name, what in (("ShowLargeUserList", "the user selection with the largest user list"),
                       ("ShowLargeKeywordList", "the search with the largest keyword list"),
                       ("ReadLargeSettings", "reading the largest settings"),
                       ("FindInLargeMarkList", "the largest list of marks"),
                       ("CountInLargeMarkList", "counting its entries"),
                       ("WriteLargePlaceList", "adding a place to the largest list")):
        row(f"{what} / with a tenth of it", ratios(cpu_us[f"{name}/10"], cpu_us[f"{name}/1"]), 15)


def compare_pictures():
    cpu_us, _ = timings("ShowPicture")
    for name in ("PNG", "JPEG", "GIF", "BMP"):
        row(f"the largest {name} that is shown / the five seconds that decoding may take",
            shares(cpu_us[f"ShowPicture/{name}"], 5e6), 0.5)


def compare_history(weeks, refreshes):
    database = inputs / "sessions_1000000.splite3"
    with tempfile.TemporaryDirectory() as folder:
        statements = Path(folder) / "statements.sql"
        statements.write_text(run(tools / "bench_operation", "statements", weeks, refreshes))
        nothing = Path(folder) / "nothing.sql"
        nothing.write_text("")
        ours, our_start, shell, shell_start = in_turns(
            operation("history", database, weeks, refreshes), operation("history", database, weeks, 0),
            lambda: seconds("sqlite3", "-batch", database, stdin=statements),
            lambda: seconds("sqlite3", "-batch", database, stdin=nothing))
    row(f"a history of {weeks:,} weeks out of 1,000,000 sessions / its statements in sqlite3",
        [(mine - start) / (theirs - their_start)
         for mine, start, theirs, their_start in zip(ours, our_start, shell, shell_start)], 1.3)


def compare_start():
    """Starts the program with the static Qt, which is the faster one, if ./package has built it, else the other."""
    static = build.parent / "static" / "Kotoban"
    name, program = ("with a static Qt", static) if static.exists() else ("with the system's Qt", build / "Kotoban")
    with tempfile.TemporaryDirectory() as folder:
        application = Path(folder) / "Kotoban"
        shutil.copytree(program, application)
        read_end, write_end = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x900x24", "-nolisten",
                                   "tcp", "-noreset"], pass_fds=[write_end], stderr=subprocess.DEVNULL)
        try:
            # Without this, every figure would include a futile search for a D-Bus session.
            env = {**os.environ, "DISPLAY": ":" + os.read(read_end, 16).decode().strip(),
                   "DBUS_SESSION_BUS_ADDRESS": "disabled:", "QT_QPA_PLATFORM": "xcb"}

            def start(*command):
                return lambda: tuple(map(float, run(tools / "bench_start", *command, env=env).split()))

            ours, text = in_turns(start(application / "Kotoban"), start(tools / "empty_window", "利用者名"))
        finally:
            server.kill()
            server.wait()
    (our_time, our_memory), (text_time, text_memory) = zip(*ours), zip(*text)
    row(f"start to the first window, {name} / a window with one word", ratios(our_time, text_time), 1.05)
    row(f"memory at the first window, {name} / a window with one word", ratios(our_memory, text_memory), 1.1)


def compare_size():
    with tempfile.TemporaryDirectory() as folder:
        stripped = Path(folder) / "Kotoban"
        run("strip", "-o", stripped, build / "Kotoban" / "Kotoban")
        row("size of the executable, stripped / 1 MiB", [stripped.stat().st_size / 2**20], 1.25)


print("| what | ratio | spread | at most | reached |")
print("| --- | ---: | ---: | ---: | --- |")
compare_loading()
compare_detection()
compare_growth()
compare_steps()
compare_search()
compare_writing()
compare_tables()
compare_lists()
compare_largest_lists()
compare_pictures()
compare_history(1, 200)
compare_history(9999, 1)
compare_start()
compare_size()
