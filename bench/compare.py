"""Prints the ratios of bench/compare. Usage: compare.py BUILD_FOLDER, with everything built and the inputs made.

Every pair is measured in turns, A B A B ..., after one round that does not count; a figure is the median of its runs.
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
REFRESHES = 200  # of the history in one process, so that they outweigh its start
FRAME_US = 1e6 / 60

build = Path(sys.argv[1]).resolve()
tools = build / "bench"
inputs = build / "inputs"
long_file = inputs / "study_1000000.txt"


def run(*command, stdin=None, env=None):
    """Output of a command that must succeed; what else it says is shown when it does not."""
    result = subprocess.run([str(word) for word in command], input=stdin, env=env, text=True, capture_output=True)
    if result.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} has failed:\n{result.stderr}")
    return result.stdout


def seconds(*command, stdin=None):
    """CPU time of a whole process whose output goes nowhere. Whatever else the machine does hardly changes it."""
    with open(stdin or os.devnull, "rb") as source:
        process = subprocess.Popen([str(word) for word in command], stdin=source, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} has failed")
    return usage.ru_utime + usage.ru_stime


def in_turns(*measures):
    """Medians of some measures. A measure gives a number or a tuple of numbers."""
    rounds = [[measure() for measure in measures] for _ in range(ROUNDS + 1)][1:]
    medians = []
    for values in zip(*rounds):
        if isinstance(values[0], tuple):
            medians.append(tuple(statistics.median(column) for column in zip(*values)))
        else:
            medians.append(statistics.median(values))
    return medians


def row(what, ratio, limit):
    """One line of the table. A ratio without a limit is there for comparison."""
    verdict = "" if limit is None else f"| {limit:4.2f} | {'yes' if ratio <= limit else 'NO'} "
    print(f"| {what} | {ratio:6.3f} {verdict or '| | '}|", flush=True)


def operation(*words):
    return lambda: seconds(tools / "bench_operation", *words)


def compare_loading():
    ours, iconv = in_turns(operation("load", long_file),
                           lambda: seconds("iconv", "-f", "CP932", "-t", "UTF-16LE", long_file))
    row("load a file of 1,000,000 lines / iconv to UTF-16 on it", ours / iconv, 0.8)
    [(_, grown)] = in_turns(lambda: tuple(map(float, run(tools / "bench_operation", "load", long_file).split())))
    row("memory after that load / size of the file", grown / long_file.stat().st_size, 3)


def compare_detection():
    for name, file in (("ASCII", inputs / "ascii.txt"), ("Shift_JIS", long_file)):
        ours, nkf, uchardet = in_turns(lambda: seconds(tools / "bench_detect", file), lambda: seconds("nkf", "--guess", file),
                                       lambda: seconds("uchardet", file))
        row(f"tell the character code, {name} / nkf --guess", ours / nkf, 1)
        row(f"tell the character code, {name} / uchardet", ours / uchardet, 1)


def cpu_times_us(names):
    """Median CPU time of timings that are made inside one process, by their names."""
    output = run(tools / "study_bench", f"--benchmark_filter={names}", f"--benchmark_repetitions={ROUNDS}",
                 "--benchmark_enable_random_interleaving=true", "--benchmark_report_aggregates_only=true",
                 "--benchmark_format=json", env={**os.environ, "STUDY_BENCH_INPUTS": str(inputs)})
    unit = {"ns": 1e-3, "us": 1, "ms": 1e3}
    return {each["run_name"]: each["cpu_time"] * unit[each["time_unit"]]
            for each in json.loads(output)["benchmarks"] if each["aggregate_name"] == "median"}


def compare_growth():
    """In a process of its own: where others have been, a short file would find its memory there already."""
    cpu_us = cpu_times_us("LoadFile/(30000|1000000)$")
    row("load, time per line, 1,000,000 lines / 30,000 lines",
        cpu_us["LoadFile/1000000"] / 1_000_000 / (cpu_us["LoadFile/30000"] / 30_000), 1.15)


def compare_steps():
    cpu_us = cpu_times_us("Ascii|Enter|Click|Turn|Repaint|Zoom|Sideways|Ask")
    row("tell the character code of ASCII / memchr over it", cpu_us["DetectAscii"] / cpu_us["MemchrAscii"], 4)
    for name, what in (("PressEnter", "Enter"), ("Click", "a click"), ("TurnPage", "a page turn"),
                       ("TurnWheel", "a step of the wheel"), ("Repaint", "a repaint"),
                       ("Zoom", "a step of the zoom"), ("ScrollSideways", "a step sideways"),
                       ("AskWhetherAllIsShown", "whether all is shown")):
        long, short = cpu_us[f"{name}/1000000"], cpu_us[f"{name}/1000"]
        row(f"{what}, 1,000,000 lines / 1,000 lines", long / short, 1.2)
        if name != "AskWhetherAllIsShown":
            # These two paint a page anew, with letters of another size or as large as they come.
            share = 8 if name in ("Zoom", "ScrollSideways") else 16
            row(f"{what} in the long file / 1/{share} of a frame at 60 Hz", long / (FRAME_US / share), 1)


def compare_history():
    database = inputs / "sessions_100000.splite3"
    with tempfile.TemporaryDirectory() as folder:
        statements = Path(folder) / "statements.sql"
        statements.write_text(run(tools / "bench_operation", "statements", REFRESHES))
        nothing = Path(folder) / "nothing.sql"
        nothing.write_text("")
        ours, our_start, shell, shell_start = in_turns(
            operation("history", database, REFRESHES), operation("history", database, 0),
            lambda: seconds("sqlite3", "-batch", database, stdin=statements),
            lambda: seconds("sqlite3", "-batch", database, stdin=nothing))
    row("a week of 100,000 sessions / its statements in sqlite3", (ours - our_start) / (shell - shell_start), 1.5)


def compare_start():
    with tempfile.TemporaryDirectory() as folder:
        application = Path(folder) / "Kotoban"
        shutil.copytree(build / "Kotoban", application)
        read_end, write_end = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x900x24", "-nolisten",
                                   "tcp", "-noreset"], pass_fds=[write_end], stderr=subprocess.DEVNULL)
        try:
            # A bus that is looked for in vain would be part of every figure.
            env = {**os.environ, "DISPLAY": ":" + os.read(read_end, 16).decode().strip(),
                   "DBUS_SESSION_BUS_ADDRESS": "disabled:", "QT_QPA_PLATFORM": "xcb"}

            def start(*command):
                return lambda: tuple(map(float, run(tools / "bench_start", *command, env=env).split()))

            ours, empty, text = in_turns(start(application / "Kotoban"), start(tools / "empty_window"),
                                         start(tools / "empty_window", "利用者名"))
        finally:
            server.kill()
            server.wait()
    row("start to the first window / an empty window", ours[0] / empty[0], 1.25)
    row("start to the first window / a window with one word", ours[0] / text[0], None)
    row("memory at the first window / an empty window", ours[1] / empty[1], 1.4)
    row("memory at the first window / a window with one word", ours[1] / text[1], None)


def compare_size():
    with tempfile.TemporaryDirectory() as folder:
        stripped = Path(folder) / "Kotoban"
        run("strip", "-o", stripped, build / "Kotoban" / "Kotoban")
        row("size of the executable, stripped / 1 MiB", stripped.stat().st_size / 2**20, 1)


print("| what | ratio | at most | reached |")
print("| --- | ---: | ---: | --- |")
compare_loading()
compare_detection()
compare_growth()
compare_steps()
compare_history()
compare_start()
compare_size()
