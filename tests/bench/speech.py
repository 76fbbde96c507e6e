#!/usr/bin/python3
"""Measures a figure that speaks: how soon it is heard, and how well the mouth goes with the sound.

    tests/support/with-sound-server xvfb-run -a tests/bench/speech.py SHOW-CHARACTER CHARACTER...

The sound is recorded from the server while the trace tells when each line began and when the mouth opened and
closed. The lines are letters with pauses between them, so that each opening and closing of the mouth has one
beginning or end of sound that it belongs to.
"""

import array
import os
import re
import statistics
import subprocess
import sys
import threading
import time

RATE = 48000
PART = RATE // 500  # 2 ms
LOUD = 400  # of 32768, about 38 dB below full scale
LEAST_SILENCE = 0.12  # between letters
FAR = 0.2  # no pair of sound and mouth is further apart
# Letters whose names begin and end with the voice, so that both are clear in the recording.
LINE = r'\map="A, ,E, ,I, ,O, ,R, ,A, ,O, ,E, ,"="letters"\ '


class Recording:
    def __init__(self):
        self._process = subprocess.Popen(
            ["parec", "-d", "nowhere.monitor", "--raw", "--format=s16le", "--rate=%d" % RATE, "--channels=1",
             "--latency-msec=10"], stdout=subprocess.PIPE)
        self.samples = array.array("h")
        self.begins = None  # when the first sample was played, by the monotonic clock
        self._thread = threading.Thread(target=self._read, daemon=True)
        self._thread.start()

    def _read(self):
        while chunk := os.read(self._process.stdout.fileno(), 4096 * 2):
            now = time.monotonic()
            self.samples.frombytes(chunk[:len(chunk) // 2 * 2])
            # The piece that was under way for the shortest time tells best.
            begins = now - len(self.samples) / RATE
            self.begins = begins if self.begins is None else min(self.begins, begins)

    def stop(self):
        self._process.terminate()
        self._thread.join()

    def edges(self):
        """The moments at which sound begins and ends, where silence lies before or behind."""
        loud = [index * PART / RATE for index in range(len(self.samples) // PART)
                if max(map(abs, self.samples[index * PART:(index + 1) * PART])) > LOUD]
        starts, ends = [], []
        last = None
        for at in loud:
            if last is None or at - last > LEAST_SILENCE:
                starts.append(self.begins + at)
                if last is not None:
                    ends.append(self.begins + last + PART / RATE)
            last = at
        return starts, ends


def nearest(moment, moments):
    return min(moments, key=lambda other: abs(other - moment), default=None)


def percentile(values, part):
    ordered = sorted(values)
    return ordered[min(len(ordered) - 1, int(part * len(ordered)))]


def measure(show, character, seconds=16):
    recording = Recording()
    environment = dict(os.environ, QT_LOGGING_RULES="tumblewick.*.debug=true")
    program = subprocess.Popen(
        [show, "--motion", "Blink", "--say", LINE, "--seconds", str(seconds), character],
        env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    begun, opened, closed = [], [], []
    mouth = "Rest"
    for line in program.stderr:
        now = time.monotonic()
        if re.search(r"agent: \d+ \w+ Speak .* -> running$", line):
            begun.append(now)
        elif found := re.search(r"mouth: \w+ (\w+) \d+$", line.strip()):
            if mouth == "Rest" and found[1] != "Rest":
                opened.append(now)
            elif mouth != "Rest" and found[1] == "Rest":
                closed.append(now)
            mouth = found[1]
    program.wait()
    recording.stop()
    starts, ends = recording.edges()
    errors = []
    for moments, edges in ((opened, starts), (closed, ends)):
        for moment in moments:
            edge = nearest(moment, edges)
            if edge is not None and abs(edge - moment) < FAR:
                errors.append(moment - edge)
    onsets = [min(start for start in starts if start > moment) - moment
              for moment in begun if any(start > moment for start in starts)]
    missing = len(opened) + len(closed) - len(errors)
    return onsets, errors, missing


def main():
    failed = False
    for character in sys.argv[2:]:
        onsets, errors, missing = measure(sys.argv[1], character)
        name = os.path.basename(character)
        if len(onsets) < 1 or len(errors) < 20:
            print("%-10s was not heard: %d lines, %d changes of the mouth" % (name, len(onsets), len(errors)))
            failed = True
            continue
        sizes = [abs(error) * 1000 for error in errors]
        middle, worst = statistics.median(sizes), percentile(sizes, 0.95)
        print("%-10s from the call to the first sound %4.0f ms (%d lines); mouth against sound: median %3.0f ms, "
              "95 %% within %3.0f ms, on average %+3.0f ms (%d changes, %d without a sound)"
              % (name, statistics.median(onsets) * 1000, len(onsets), middle, worst,
                 statistics.mean(errors) * 1000, len(errors), missing))
        failed = failed or middle > 40 or worst > 80 or missing > len(errors) / 20
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
