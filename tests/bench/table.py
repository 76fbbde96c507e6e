#!/usr/bin/python3
"""Runs all measurements several times and prints one table of medians and spreads: table.py BUILD-FOLDER [--keep FILE].

With --keep the table is also written into FILE, between its two lines that say where the figures stand. Each row tells
what is wanted of it, and the program fails when a median is worse than that.
"""

import collections
import os
import re
import statistics
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tests/desktop"), str(ROOT / "tests/bench")]

from desk import Desktop  # noqa: E402  pylint: disable=wrong-import-position

BEGIN, END = "<!-- the figures begin -->", "<!-- the figures end -->"
CHARACTERS = ["merlin", "genie", "peedy"]

# What is measured, in which unit, and the worst median that is good enough; None where there is no such bound.
ROWS = [
    ("a plain window, for comparison: start to painted", "ms", None),
    ("start to the splash", "ms", None),
    ("end of the splash's pause to the painted menu", "ms", None),
    ("end of the splash's pause to the menu's first answer", "ms", None),
    ("memory at the menu, characters loaded", "MiB", None),
    ("memory in a game, three characters shown", "MiB", None),
    ("load of one core at the menu, nobody shown", "%", 3),
    ("load of one core in a game, one character speaking", "%", 40),
    ("three figures move, one speaks: load of one core", "%", 60),
    ("three figures: memory of all, with their pictures", "MiB", 120),
    ("picture to picture while they move, in the middle", "ms", None),
    ("picture to picture, 99 of 100 within", "ms", 20),
    ("work for a picture, in the middle", "ms", None),
    ("call to speak to the first sound", "ms", None),
    ("mouth against the sound, off by", "ms", 40),
    ("mouth against the sound, 95 of 100 within", "ms", 80),
    ("read a list of 32,767 lines", "ms", None),
    ("draw all of its 32,767 questions", "ms", None),
    ("a spelling game over 2,000 words, without speech", "ms", None),
]


def take(add, found, patterns):
    """Adds what each pattern finds in the printed text to the row of its name."""
    for name, pattern in patterns.items():
        match = re.search(pattern, found)
        if match:
            add(name, float(match.group(1)))


def with_sound(*command):
    """Runs a command with a sound server and a display of its own; gives what it prints."""
    result = subprocess.run(
        [str(ROOT / "tests/support/with-sound-server"), "xvfb-run", "-a", "-s", "-screen 0 1024x768x24", *map(str, command)],
        capture_output=True, text=True, check=False, cwd=ROOT)
    return result.stdout


def starts(build, add):
    # In a process of its own, whose display and sound server go with it.
    result = subprocess.run(
        [str(ROOT / "tests/support/with-sound-server"), sys.executable, str(ROOT / "tests/bench/startup.py"),
         str(build / "Tumblewick"), str(build / "tests/bench_plain")], capture_output=True, text=True, check=False)
    names = {"splash": "start to the splash", "window": "a plain window, for comparison: start to painted",
             "menu": "end of the splash's pause to the painted menu",
             "answer": "end of the splash's pause to the menu's first answer"}
    for line in result.stdout.splitlines():
        what, seconds = line.split()
        add(names[what], 1000 * float(seconds))


def resident(desk):
    status = Path("/proc/%d/status" % desk.program.pid).read_text()
    return int(re.search(r"VmRSS:\s+(\d+)", status).group(1)) / 1024


def program(build, add):
    for _ in range(3):
        with Desktop(build / "Tumblewick", lists={"One": ["sun", "star"]}) as desk:
            desk.wait(r"screen: frmSplash unload")
            time.sleep(2)
            add("memory at the menu, characters loaded", resident(desk))
            add("load of one core at the menu, nobody shown", 100 * desk.processor_share(5))
            desk.set_up("s", ["Ann"], 0)
            end, _ = desk.wait(r'Speak "Ann, how do you spell: .*-> done')
            for _ in range(8):
                desk.click("frmSpell1", "cmdReplay")
            desk.wait(r'Speak "How do you spell: .*-> running', end)
            add("load of one core in a game, one character speaking", 100 * desk.processor_share(5))
            add("memory in a game, three characters shown", resident(desk))


def figures(build, add):
    show = build / "tools/show-character/show-character"
    folders = [ROOT / "characters" / name for name in CHARACTERS]
    for _ in range(3):
        take(add, with_sound(show, "--seconds", "10", "--say", "One of us talks, while all of us move.", *folders), {
            "three figures move, one speaks: load of one core": r"pixels: ([\d.]+) %",
            "three figures: memory of all, with their pictures": r"at most (\d+) MiB",
            "picture to picture while they move, in the middle": r"a picture every ([\d.]+) ms",
            "picture to picture, 99 of 100 within": r"99 % within ([\d.]+) ms, the",
            "work for a picture, in the middle": r"work for a picture: in the middle ([\d.]+) ms"})


def speech(build, add):
    show = build / "tools/show-character/show-character"
    for name in CHARACTERS:
        take(add, with_sound(ROOT / "tests/bench/speech.py", show, ROOT / "characters" / name), {
            "call to speak to the first sound": r"first sound +([\d.]+) ms",
            "mouth against the sound, off by": r"median +([\d.]+) ms",
            "mouth against the sound, 95 of 100 within": r"95 % within +([\d.]+) ms"})


def rules(build, add):
    for _ in range(5):
        found = subprocess.run([str(build / "tests/bench_rules")], capture_output=True, text=True, check=False,
                               env=dict(os.environ, QT_QPA_PLATFORM="offscreen")).stdout
        take(add, found, {
            "read a list of 32,767 lines": r"read a list of 32,767 lines +([\d.]+)",
            "draw all of its 32,767 questions": r"draw all of its 32,767 questions +([\d.]+)",
            "a spelling game over 2,000 words, without speech": r"over 2,000 words, without speech +([\d.]+)"})


def number(value):
    return "%.0f" % value if value >= 100 else "%.1f" % value


def main(arguments):
    build = Path(arguments[0]).resolve()
    samples = collections.defaultdict(list)
    for work in (rules, starts, program, figures, speech):
        print("measuring: %s" % work.__name__, file=sys.stderr, flush=True)
        work(build, lambda name, value: samples[name].append(value))
    lines = ["| Measured | Median | From | To | Times | Wanted |", "|---|---:|---:|---:|---:|---|"]
    failed = False
    for what, unit, bound in ROWS:
        found = samples[what]
        if not found:
            lines.append("| %s | not measured | | | 0 | |" % what)
            failed = True
            continue
        median = statistics.median(found)
        failed = failed or (bound is not None and median > bound)
        lines.append("| %s | %s %s | %s | %s | %d | %s |" % (
            what, number(median), unit, number(min(found)), number(max(found)), len(found),
            "at most %g %s" % (bound, unit) if bound is not None else ""))
    table = "\n".join(lines)
    print(table)
    if arguments[1:2] == ["--keep"]:
        file = Path(arguments[2])
        text = file.read_text(encoding="utf-8")
        before, rest = text.split(BEGIN)
        file.write_text(before + BEGIN + "\n\n" + table + "\n\n" + END + rest.split(END)[1], encoding="utf-8")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
