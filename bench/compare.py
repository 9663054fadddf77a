# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

"""Prints the ratios of bench/compare. Usage: compare.py BUILD_FOLDER [--quick], with everything built and the inputs
generated.

The members of each pair are measured alternately, A B A B ..., after one warm-up round. A figure is the median of the
runs' ratios; its spread is half their interquartile range, in percent of the median. Rows whose clock times depend too
much on the machine are counted in instructions as well, by callgrind, and their mark is for these.
docs/performance.md explains how to read the table.

With --quick there are three rounds of the rows that a change is most likely to affect.
"""

import json
import os
import platform
import re
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

QUICK = "--quick" in sys.argv
ROUNDS = 3 if QUICK else 7
FRAME_US = 1e6 / 60
# As many as the machine on which the marks were set executes in a frame: five in a nanosecond.
FRAME_INSTRUCTIONS = 1000 * FRAME_US * 5

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


def callgrind(folder, *options):
    return ["valgrind", "--quiet", "--tool=callgrind", f"--callgrind-out-file={folder}/out", *options]


def total(file):
    """Instructions in one of callgrind's files."""
    return int(re.search(r"^totals: (\d+)", file.read_text(errors="replace"), re.MULTILINE)[1])


def scratch():
    """A folder for callgrind's files, in memory if possible."""
    return tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None)


def instructions(*command, only=(), stdin=None):
    """Instructions of a whole process, or of some of its functions with all that they call."""
    with scratch() as folder, open(stdin or os.devnull, "rb") as source:
        subprocess.run([*callgrind(folder, *(f"--toggle-collect={name}" for name in only)), *map(str, command)],
                       stdin=source, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        return total(Path(folder) / "out")


def step_instructions(names):
    """Instructions of a step of each benchmark, by name; see bench/Steps.h. A seed of its own for each run's hashes would
    change them by 2 %."""
    with scratch() as folder:
        output = run(*callgrind(folder, "--instr-atstart=no"), tools / "study_bench", f"--benchmark_filter={names}",
                     "--benchmark_min_time=0", "--benchmark_format=json",
                     env={**os.environ, "STUDY_BENCH_INPUTS": str(inputs), "QT_HASH_SEED": "0"})
        found = {}
        dumps = sorted(Path(folder).glob("out.*"), key=lambda file: int(file.suffix[1:]))
        for each, dump in zip(json.loads(output)["benchmarks"], dumps, strict=True):
            steps = int(re.search(r"Client Request: steps (\d+)", dump.read_text(errors="replace"))[1])
            found[each["name"].partition("/iterations:")[0]] = total(dump) / steps
        return found


def in_turns(*measures):
    """Runs some measures alternately; a list of results for each. A result is a number or a tuple of numbers."""
    rounds = [[measure() for measure in measures] for _ in range(ROUNDS + 1)][1:]
    return [list(values) for values in zip(*rounds)]


def ratios(ours, others):
    return [mine / other for mine, other in zip(ours, others)]


def shares(ours, whole):
    return [mine / whole for mine in ours]


def row(what, values, limit=None):
    """Prints a row of the table as docs/performance.md has it: the median of some values and their spread. Without a
    limit it is a row of the clock beside one in instructions."""
    median = statistics.median(values)
    quarters = statistics.quantiles(values) if len(values) > 1 else [median] * 3
    spread = 100 * (quarters[2] - quarters[0]) / 2 / median if median else 0
    ratio = f"{median:.1f}" if median >= 9 else f"{median:.2f}" if median >= 0.1 else f"{median:.3f}"
    if limit is not None and median > limit:
        ratio = f"**{ratio}**"
    print(f"| {what} | {ratio} | {spread:.0f} % | {'' if limit is None else f'{limit:g}'} |", flush=True)


def counted_row(what, ratio, limit):
    """Prints a row in instructions, whose number differs by less than a hundredth from run to run."""
    row(f"{what}, in instructions", [ratio], limit)


def operation(*words):
    return lambda: seconds(tools / "bench_operation", *words)


def compare_loading():
    load = [tools / "bench_operation", "load", long_file]
    convert = ["iconv", "-f", "CP932", "-t", "UTF-16LE", long_file]
    ours, iconv = in_turns(lambda: seconds(*load), lambda: seconds(*convert))
    what = "load a file of 1,000,000 lines / iconv to UTF-16"
    row(what, ratios(ours, iconv))
    counted_row(what, instructions(*load) / instructions(*convert), 0.6)
    [grown] = in_turns(lambda: float(run(*load).split()[1]))
    row("memory after that load / size of the file", shares(grown, long_file.stat().st_size), 3)


def compare_detection():
    """The times are of whole processes, most of which is their start; the instructions are those of the detection."""
    for name, file in (("ASCII", inputs / "ascii.txt"), ("Shift_JIS", long_file),
                       ("half-width kana", inputs / "kana.txt")):
        ours, nkf, uchardet = in_turns(lambda: seconds(tools / "bench_detect", file),
                                       lambda: seconds("nkf", "--guess", file), lambda: seconds("uchardet", file))
        row(f"detect the encoding, {name} / nkf --guess", ratios(ours, nkf))
        row(f"detect the encoding, {name} / uchardet", ratios(ours, uchardet))
        counted_row(f"detect the encoding, {name} / uchardet",
                    instructions(tools / "bench_detect", file, only=["GetCharCodeName(QByteArrayView)"]) /
                    instructions("uchardet", file, only=["uchardet_handle_data", "uchardet_data_end"]), 1)


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


# The steps in the study window: what they are called, and what share of a frame they may take. Some repaint the page
# several times, in a new text size, or at the largest zoom.
STEPS = {"PressEnter": ("Enter", 16), "Click": ("a click", 16), "MarkHard": ("a mark", 16),
         "StudyHard": ("a round of hard words", 4), "HideAndUndo": ("hiding all and undo", 8),
         "TurnPage": ("a page turn", 16), "TurnWheel": ("a wheel step", 16), "Repaint": ("a repaint", 16),
         "Zoom": ("a zoom step", 8), "ScrollSideways": ("a horizontal scroll step", 8),
         "AllShown": ("whether all is shown", None)}


def compare_steps():
    names = f"^(({'|'.join(STEPS)})(Wrapped|Sideways)?|RepaintPlainText|PageDown|PageDownPlainText)/"
    cpu_us = {} if QUICK else timings(names)[0]
    counts = step_instructions(names)

    def rows(what, ours, others, limit):
        if cpu_us:
            row(what, ratios(cpu_us[ours], cpu_us[others]))
        counted_row(what, counts[ours] / counts[others], limit)

    for name, (what, share) in STEPS.items():
        long, short = f"{name}/1000000", f"{name}/1000"
        rows(f"{what}, 1,000,000 lines / 1,000 lines", long, short, 1.1)
        if share:
            what = f"{what} in the long file / 1/{share} of a frame at 60 Hz"
            if cpu_us:
                row(what, shares(cpu_us[long], FRAME_US / share))
            counted_row(what, counts[long] / (FRAME_INSTRUCTIONS / share), 1)
    for name in ("PressEnter", "TurnPage", "TurnWheel", "Zoom"):
        what, wrapped = STEPS[name][0], f"{name}Wrapped/1000"
        rows(f"{what}, lines that wrap / that do not", wrapped, f"{name}Sideways/1000", 1.5)
        rows(f"{what}, 1,000,000 lines that wrap / 1,000 lines", f"{name}Wrapped/1000000", wrapped, 1.1)
    rows("Enter / a repaint", "PressEnter/1000", "Repaint/1000", 0.25)
    rows("a repaint / that of QPlainTextEdit", "Repaint/1000", "RepaintPlainText/1000", 0.5)
    rows("page down / that of QPlainTextEdit", "PageDown/1000", "PageDownPlainText/1000", 0.8)


def compare_moments():
    cpu_us, counters = timings("Ascii|OpenPage|Idle")
    row("detect the encoding of ASCII / memchr over it", ratios(cpu_us["DetectAscii"], cpu_us["MemchrAscii"]), 4)
    row("from the login to a page of 3,000 lines / a frame", shares(cpu_us["OpenPage/3000"], FRAME_US), 3)
    row("wake-ups per second with a file open", counters["Idle/3000/0", "wakes_per_second"], 2)
    row("wake-ups per second with the search open", counters["Idle/3000/1", "wakes_per_second"], 2)


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
            rg = ["rg", "-i", "-F", "-j1", "--count-matches", wanted, text]
            [rg_us] = in_turns(lambda: 1e6 * seconds(*rg))
            what, name = f"all hits of {wanted} / the whole process of rg", f"CountHits/1000000/{number}"
            row(what, ratios(cpu_us[name], rg_us))
            # One of rg's instructions compares 32 bytes.
            counted_row(what, step_instructions(f"{name}$")[name] / instructions(*rg), 3)
    what, keywords, load = "all hits of 500 keywords / the load of the file", "CountKeywords/1000000", "LoadFile/1000000"
    row(what, ratios(cpu_us[keywords], cpu_us[load]))
    counts = step_instructions(f"{keywords}$|{load}$")
    counted_row(what, counts[keywords] / counts[load], 4)


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
    counted_row("saving a mark, 1,000,000 lines / a frame",
                step_instructions("SaveMark")["SaveMark/1000000"] / FRAME_INSTRUCTIONS, 1)
    row("showing a list of 10,000 study files / 50 ms", shares(counters["ShowFileList/10000", "shown_ms"], 50))
    counted_row("showing a list of 10,000 study files / 300 million",
                step_instructions("ShowFileList/10000")["ShowFileList/10000"] / 300e6, 1)
    row("checking them all: longest block of the event loop / a frame",
        shares(counters["ShowFileList/10000", "longest_ms"], FRAME_US / 1000), 1)
    for weeks in (2, 9999):
        for tab, name in enumerate(("bars", "calendar", "table of files")):
            row(f"{weeks:,} weeks of 1,000,000 sessions, {name}: longest block of the event loop / 16 ms",
                shares(counters[f"ShowHistory/{weeks}/{tab}", "longest_ms"], 16), 1)
    row("painting the calendar of ten years / a frame", shares(cpu_us["PaintCalendar"], FRAME_US), 1)


def compare_largest_lists():
    cpu_us, _ = timings("Large")
    counts = step_instructions("FindInLargeMarkList|WriteLargePlaceList")
    for name, what in (("ShowLargeUserList", "the user selection with the largest user list"),
                       ("ShowLargeKeywordList", "the search with the largest keyword list"),
                       ("ReadLargeSettings", "reading the largest settings"),
                       ("FindInLargeMarkList", "the largest list of marks"),
                       ("CountInLargeMarkList", "counting its entries"),
                       ("WriteLargePlaceList", "adding a place to the largest list")):
        what += " / with a tenth of it"
        is_counted = f"{name}/1" in counts
        row(what, ratios(cpu_us[f"{name}/10"], cpu_us[f"{name}/1"]), None if is_counted else 15)
        if is_counted:
            counted_row(what, counts[f"{name}/10"] / counts[f"{name}/1"], 15)


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
        span = "one week" if weeks == 1 else f"{weeks:,} weeks"
        what = f"a history of {span} out of 1,000,000 sessions / its statements in sqlite3"
        row(what, [(mine - start) / (theirs - their_start)
                   for mine, start, theirs, their_start in zip(ours, our_start, shell, shell_start)])

        def count(sql):
            return instructions("sqlite3", "-batch", database, stdin=sql)

        def our_count(times):
            return instructions(tools / "bench_operation", "history", database, weeks, times)

        # Fewer, since callgrind takes fifty times as long.
        times = 10 if refreshes > 1 else 1
        statements.write_text(run(tools / "bench_operation", "statements", weeks, times))
        counted_row(what, (our_count(times) - our_count(0)) / (count(statements) - count(nothing)), 1.3)


def start_instructions(env, *command):
    """Instructions of a program until its first window is painted and it waits for input. Without --quick the median of
    three runs, since one may be ended early, or after a cursor has blinked."""
    def run_once():
        def used():
            return sum(map(int, Path(f"/proc/{process.pid}/stat").read_text().rpartition(")")[2].split()[11:13]))

        with scratch() as folder:
            process = subprocess.Popen([*callgrind(folder), *map(str, command)], env=env, stdout=subprocess.DEVNULL,
                                       stderr=subprocess.DEVNULL)
            ticks = os.sysconf("SC_CLK_TCK")
            before = quiet = 0
            while quiet < 5: # tenths of a second
                time.sleep(0.1)
                quiet = quiet + 1 if used() - before <= ticks / 100 else 0
                before = used()
            process.send_signal(signal.SIGUSR1) # which none of them handles
            process.wait()
            return total(Path(folder) / "out")

    return statistics.median(run_once() for _ in range(1 if QUICK else 3))


def compare_start():
    """Starts the program with the system's Qt and, if ./package has built it, the one with a static Qt."""
    programs = {"the system's": build / "Kotoban", "a static": build.parent / "static" / "Kotoban"}
    with tempfile.TemporaryDirectory() as folder:
        read_end, write_end = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x900x24", "-nolisten",
                                   "tcp", "-noreset"], pass_fds=[write_end], stderr=subprocess.DEVNULL)
        try:
            # Without this, every figure would include a futile search for a D-Bus session.
            env = {**os.environ, "DISPLAY": ":" + os.read(read_end, 16).decode().strip(),
                   "DBUS_SESSION_BUS_ADDRESS": "disabled:", "QT_QPA_PLATFORM": "xcb"}

            def start(*command):
                return lambda: tuple(map(float, run(tools / "bench_start", *command, env=env).split()))

            baselines = {"a window with one word": [tools / "empty_window", "利用者名"],
                         "a plain dialog with its texts": [tools / "login_dialog"]}
            counts = {name: start_instructions(env, *command) for name, command in baselines.items()}
            for qt, program in programs.items():
                if not program.exists():
                    continue
                application = Path(folder) / qt
                shutil.copytree(program, application)
                ours, *others = in_turns(start(application / "Kotoban"),
                                         *(start(*command) for command in baselines.values()))
                our_time, our_memory = zip(*ours)
                our_count = start_instructions(env, application / "Kotoban")
                for name, other in zip(baselines, others):
                    time_of_other, memory_of_other = zip(*other)
                    what = f"start to the first window, with {qt} Qt / {name}"
                    row(what, ratios(our_time, time_of_other))
                    counted_row(what, our_count / counts[name], 1.05)
                    row(f"memory at the first window, with {qt} Qt / {name}", ratios(our_memory, memory_of_other), 1.1)
        finally:
            server.kill()
            server.wait()


def compare_size():
    with tempfile.TemporaryDirectory() as folder:
        stripped = Path(folder) / "Kotoban"
        run("strip", "-o", stripped, build / "Kotoban" / "Kotoban")
        row("size of the executable, stripped / 1 MiB", [stripped.stat().st_size / 2**20], 1.25)


def machine():
    """What a table has to name, so that tables of several machines can be compared."""
    processor = dict(re.findall(r"^(\S.*?)\s*: (.*)$", Path("/proc/cpuinfo").read_text(), re.M))
    name = processor.get("model name", platform.machine())
    family = [f"{key} {processor[key]}" for key in ("cpu family", "model") if key in processor]
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    return ", ".join([name, *family, f"{os.cpu_count()} cores", system])


print("| what | ratio | spread | at most |")
print("| --- | ---: | ---: | ---: |")
compare_loading()
if not QUICK:
    compare_detection()
    compare_growth()
compare_steps()
if not QUICK:
    compare_moments()
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
print(f"\nMeasured on {machine()}, {time.strftime('%Y-%m-%d')}.")
