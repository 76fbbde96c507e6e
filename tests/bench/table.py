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
    ("start to the splash", "ms", None),
    ("end of the splash's pause to the painted menu", "ms", None),
    ("end of the splash's pause to the menu's first answer", "ms", None),
    ("memory at the menu, characters loaded", "MiB", None),
    ("memory in a game, three characters shown", "MiB", None),
    ("load of one core at the menu, nobody shown", "%", 3),
    ("load of one core in a game, one character speaking", "%", 40),
    ("three figures, nobody speaks: load of one core", "%", 60),
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


def with_sound(*command):
    """Runs a command with a sound server and a display of its own; gives what it prints."""
    result = subprocess.run(
        [str(ROOT / "tests/support/with-sound-server"), "xvfb-run", "-a", "-s", "-screen 0 1024x768x24", *map(str, command)],
        capture_output=True, text=True, check=False, cwd=ROOT)
    return result.stdout


def starts(build, add):
    # In a process of its own, whose display and sound server go with it.
    code = ("import sys, shutil, tempfile; from pathlib import Path; sys.path.insert(0, %r); import startup\n"
            "with tempfile.TemporaryDirectory() as folder:\n"
            "    own = Path(folder) / 'Tumblewick'; shutil.copytree(%r, own)\n"
            "    (own / 'Set').write_bytes(b'No Intro\\r\\n\\r\\n')\n"
            "    display = startup.Display(folder)\n"
            "    for _ in range(11): print(*startup.start_of_game(display, own))\n"
            "    display.close()\n") % (str(ROOT / "tests/bench"), str(build / "Tumblewick"))
    result = subprocess.run([str(ROOT / "tests/support/with-sound-server"), sys.executable, "-c", code],
                            capture_output=True, text=True, check=False)
    lines = [line.split() for line in result.stdout.splitlines()]
    for splash, painted, answer in lines[1:]:  # the first one fills the machine's caches
        add(0, 1000 * float(splash))
        add(1, 1000 * float(painted))
        add(2, 1000 * float(answer))


def resident(desk):
    status = Path("/proc/%d/status" % desk.program.pid).read_text()
    return int(re.search(r"VmRSS:\s+(\d+)", status).group(1)) / 1024


def program(build, add):
    for _ in range(3):
        with Desktop(build / "Tumblewick", lists={"One": ["sun", "star"]}) as desk:
            desk.wait(r"screen: frmSplash unload")
            time.sleep(2)
            add(3, resident(desk))
            add(5, 100 * desk.processor_share(5))
            desk.set_up("s", ["Ann"], 0)
            end, _ = desk.wait(r'Speak "Ann, how do you spell: .*-> done')
            for _ in range(8):
                desk.click("frmSpell1", "cmdReplay")
            desk.wait(r'Speak "How do you spell: .*-> running', end)
            add(6, 100 * desk.processor_share(5))
            add(4, resident(desk))


def figures(build, add):
    show = build / "tools/show-character/show-character"
    folders = [ROOT / "characters" / name for name in CHARACTERS]
    for _ in range(3):
        found = with_sound(show, "--seconds", "10", *folders)
        for row, pattern in ((7, r"pixels: ([\d.]+) %"), (8, r"a picture every ([\d.]+) ms"), (9, r"99 % within ([\d.]+) ms, the"),
                             (10, r"work for a picture: in the middle ([\d.]+) ms")):
            match = re.search(pattern, found)
            if match:
                add(row, float(match.group(1)))


def speech(build, add):
    show = build / "tools/show-character/show-character"
    for name in CHARACTERS:
        found = with_sound(ROOT / "tests/bench/speech.py", show, ROOT / "characters" / name)
        for row, pattern in ((11, r"first sound +([\d.]+) ms"), (12, r"median +([\d.]+) ms"), (13, r"95 % within +([\d.]+) ms")):
            match = re.search(pattern, found)
            if match:
                add(row, float(match.group(1)))


def rules(build, add):
    for _ in range(5):
        found = subprocess.run([str(build / "tests/bench_rules")], capture_output=True, text=True, check=False,
                               env=dict(os.environ, QT_QPA_PLATFORM="offscreen")).stdout
        for row, pattern in ((14, r"read a list of 32,767 lines +([\d.]+)"), (15, r"draw all of its 32,767 questions +([\d.]+)"),
                             (16, r"over 2,000 words, without speech +([\d.]+)")):
            match = re.search(pattern, found)
            if match:
                add(row, float(match.group(1)))


def number(value):
    return "%.0f" % value if value >= 100 else "%.1f" % value


def main(arguments):
    build = Path(arguments[0]).resolve()
    samples = collections.defaultdict(list)
    for work in (rules, starts, program, figures, speech):
        print("measuring: %s" % work.__name__, file=sys.stderr, flush=True)
        work(build, lambda row, value: samples[row].append(value))
    lines = ["| Measured | Median | From | To | Times | Wanted |", "|---|---:|---:|---:|---:|---|"]
    failed = False
    for row, (what, unit, bound) in enumerate(ROWS):
        found = samples[row]
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
