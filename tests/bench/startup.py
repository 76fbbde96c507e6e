#!/usr/bin/python3
"""Measures the start of the real program:

    tests/support/with-sound-server tests/bench/startup.py APPLICATION-FOLDER PLAIN-WINDOW [STARTS]

From the start of the process until the splash is painted, beside a plain window of the same size; and from the end of
the splash's pause until the menu is painted, and until it answers: it is clicked as soon as it is seen. What is painted
is read from the memory of the display itself. The first start of each, which fills the machine's caches, does not count.
Each start is a line for each of these: what was measured, and the seconds.
"""

import mmap
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

WIDTH, HEIGHT = 1024, 768
BESIDE = [(20, 20), (1000, 20), (20, 740), (1000, 740)]  # what only the menu covers
WITHIN = [(512, 200), (512, 384), (300, 384), (700, 500)]  # what the splash covers too
ABOUT = (834, 435)  # the menu's button for the About box
LIMIT = 30.0  # seconds


class Display:
    """A virtual display whose pixels can be read while it goes on."""

    def __init__(self, folder):
        read_end, write_end = os.pipe()
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "%dx%dx24" % (WIDTH, HEIGHT), "-fbdir", str(folder),
             "-nolisten", "tcp", "-noreset"], pass_fds=(write_end,), stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as numbers:
            self.name = ":" + numbers.readline().strip()
        self.environment = dict(os.environ, DISPLAY=self.name, QT_LOGGING_RULES="tumblewick.screen.debug=true")
        for variable in ("QT_QPA_PLATFORM", "QT_SCALE_FACTOR"):
            self.environment.pop(variable, None)
        self._manager = subprocess.Popen(["openbox"], env=self.environment, stdout=subprocess.DEVNULL,
                                         stderr=subprocess.DEVNULL)
        with open(Path(folder) / "Xvfb_screen0", "rb") as memory:
            self._pixels = mmap.mmap(memory.fileno(), 0, prot=mmap.PROT_READ)
        header = struct.unpack(">25I", self._pixels[:100])
        self._first, self._line = header[0] + header[19] * 12, header[12]

    def _painted(self, places):
        """How many of these places are painted; the empty display is black."""
        firsts = (self._first + y * self._line + x * 4 for x, y in places)
        return sum(self._pixels[first:first + 3] != b"\0\0\0" for first in firsts)

    def _wait(self, places, count):
        end = time.monotonic() + LIMIT
        while self._painted(places) != count:
            if time.monotonic() > end:
                raise SystemExit("startup: the display did not change within %.0f s" % LIMIT)
            time.sleep(0.0005)
        return time.monotonic()

    def wait_painted(self, places):
        """The moment at which all these places are seen to be painted."""
        return self._wait(places, len(places))

    def wait_empty(self):
        """Waits until nothing is left of the window that was there."""
        self._wait(WITHIN + BESIDE, 0)
        time.sleep(0.3)

    def close(self):
        for process in (self._manager, self._server):
            process.terminate()
            process.wait()


class Trace:
    """The lines of a program's trace with the moments at which they came."""

    def __init__(self, output):
        self._lines = []
        self._seen = threading.Condition()
        threading.Thread(target=self._read, args=(output,), daemon=True).start()

    def _read(self, output):
        for line in output:
            with self._seen:
                self._lines.append((time.monotonic(), line))
                self._seen.notify_all()

    def wait(self, pattern):
        end = time.monotonic() + LIMIT
        with self._seen:
            while True:
                for moment, line in self._lines:
                    if re.search(pattern, line):
                        return moment
                if not self._seen.wait(max(0.0, end - time.monotonic())):
                    raise SystemExit("startup: no %r within %.0f s" % (pattern, LIMIT))


def start_of_game(display, application):
    start = time.monotonic()
    program = subprocess.Popen([str(application / "tumblewick")], env=display.environment, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, errors="replace")
    try:
        trace = Trace(program.stderr)
        splash = display.wait_painted(WITHIN) - start
        painted = display.wait_painted(WITHIN + BESIDE)
        subprocess.run(["xdotool", "mousemove", *map(str, ABOUT), "click", "1"], env=display.environment, check=True)
        answer = trace.wait("screen: frmAbout load")
        pause = trace.wait("screen: frmMenu1 load")
        return splash, painted - pause, answer - pause
    finally:
        program.kill()
        program.wait()
        display.wait_empty()


def start_of_window(display, window):
    start = time.monotonic()
    program = subprocess.Popen([str(window)], env=display.environment, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        return display.wait_painted(WITHIN) - start
    finally:
        program.kill()
        program.wait()
        display.wait_empty()


def main(arguments):
    application, window = Path(arguments[0]), Path(arguments[1])
    starts = int(arguments[2]) if len(arguments) > 2 else 10
    with tempfile.TemporaryDirectory() as folder:
        own = Path(folder) / "Tumblewick"
        shutil.copytree(application, own)
        (own / "Set").write_bytes(b"No Intro\r\n\r\n")
        display = Display(folder)
        try:
            games = [start_of_game(display, own) for _ in range(starts + 1)][1:]
            windows = [start_of_window(display, window) for _ in range(starts + 1)][1:]
        finally:
            display.close()
    for moments in games:
        for what, moment in zip(("splash", "menu", "answer"), moments):
            print(what, moment)
    for moment in windows:
        print("window", moment)


if __name__ == "__main__":
    main(sys.argv[1:])
