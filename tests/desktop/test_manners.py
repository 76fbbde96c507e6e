#!/usr/bin/python3
"""Measures how the real program answers and what it costs: test_manners.py APPLICATION FAILURES."""

import re
import statistics
import sys
import time
from pathlib import Path

from desk import Failure, run_each

CLICK_LIMIT = 0.050  # seconds from the click to the request, at the median
TALKING_LIMIT = 0.40  # of one core, with three characters on the screen
IDLE_LIMIT = 0.03  # of one core, at the menu


def check(truth, what):
    print(what)
    if not truth:
        raise Failure(what)


def idle(desk):
    desk.wait(r"screen: frmMenu1 activate")
    time.sleep(1.5)
    share = desk.processor_share(4)
    check(share < IDLE_LIMIT, "idle at the menu: %.1f %% of one core" % (share * 100))
    desk.key("alt+F4")
    check(desk.wait_end() == 0, "closing the last window ends the program")


def talking(desk):
    desk.set_up("s", ["Ann"], 0)
    end, _ = desk.wait(r'Speak "Ann, how do you spell: .*-> done')
    left, top, width, height = desk.place("frmSpell1", "cmdReplay")
    times = []
    for _ in range(10):
        end = desk.mark()
        start = time.monotonic()
        desk.click_at(left + width // 2, top + height // 2)
        index, _ = desk.wait(r'Merlin Speak "How do you spell: .*-> queued', end)
        times.append(desk.trace[index][0] - start)
    share = desk.processor_share(5)
    check(share < TALKING_LIMIT, "while one talks: %.1f %% of one core" % (share * 100))
    median = statistics.median(times)
    check(median < CLICK_LIMIT, "a click while one talks is answered in %.0f ms (mouse tool included)" % (median * 1000))


def figures(desk):
    """The frames of the characters on the display, from the left: left, top, width, height."""
    frames = []
    for line in desk.windows():
        match = re.search(r"(256)x(256)\+-?\d+\+-?\d+ +\+(-?\d+)\+(-?\d+)", line)
        if match:
            width, height, left, top = map(int, match.groups())
            frames.append((left, top, width, height))
    return sorted(frames)


def handled(desk):
    """A figure is dragged by its body, and lets everything through that hits its frame beside the body."""
    desk.set_up("s", ["Ann"], 0)
    desk.wait(r'Speak "Ann, how do you spell: .*-> running')
    before = figures(desk)
    check(len(before) == 3, "three figures stand at %r" % before)
    left, top, width, height = before[0]
    desk.drag((left + 5, top + 5), (left + 65, top - 25))
    time.sleep(0.5)
    check(figures(desk) == before, "a drag beside the body moves nothing")
    desk.drag((left + width // 2, top + height * 3 // 4), (left + width // 2 + 60, top + height * 3 // 4 - 40))
    time.sleep(0.5)
    after = figures(desk)
    check(after == sorted([(left + 60, top - 40, width, height)] + before[1:]), "a drag by the body moves it to %r" % after)
    desk.wait(r'Speak "Ann, how do you spell: .*-> done')
    print("the question is said to its end meanwhile")


def leaned_on(desk):
    """A key that presses something presses it once, however long a child leans on it."""
    desk.set_up("s", ["Ann"], 0)
    desk.wait(r'Speak "Ann, how do you spell: .*-> done')
    desk.wait_control("frmSpell1", "cmdGo", ["enabled"])
    for keys, line in ((["Return"], "Sorry Ann. Try again"), (["alt", "g"], "Sorry Ann. Try again"),
                       (["alt", "r"], "How do you spell: ")):
        begin = desk.mark()
        desk.hold(1.5, *keys)
        time.sleep(0.3)
        queued = [said for said in desk.lines(begin) if 'Speak "' + line in said and said.endswith("-> queued")]
        check(len(queued) == 1, "%s held for 1.5 s has pressed %d times" % (" ".join(keys), len(queued)))


def silent(desk):
    desk.set_up("s", ["Ann"], 0)
    _, match = desk.wait(r'Merlin Speak "Here we go.*-> failed (-?\d+)')
    check(re.fullmatch(r"-\d+", match.group(1)), "without a device the first line fails with %s" % match.group(1))
    time.sleep(0.7)
    desk.key("Return")
    desk.wait(r'box: ".*" "Tumble Wick has detected a problem which is probably related to your soundcard')
    desk.wait(r"screen: frmSpell1 unload")
    print("the sound-card message comes, and the menu comes back")


def helped(desk):
    """Help stands beside its screen, leaves it usable, and goes with it."""
    def titles():
        return [window.split('"')[1] for window in desk.windows() if "Tumblewick Help" in window]

    desk.wait(r"screen: frmMenu1 activate")
    desk.wait_control("frmMenu1", "cmdPlay", ["enabled"])
    start = time.monotonic()
    desk.click("frmMenu1", "cmdHelp")
    desk.wait_for("the help", titles)
    check(titles() == ["Welcome to Tumblewick \u2013 Tumblewick Help"],
          "the menu's page of the help comes %.2f s after the click is begun" % (time.monotonic() - start))
    desk.key("Escape")
    desk.wait_for("the end of the help", lambda: not titles(), titles)
    desk.click("frmMenu1", "cmdSettings")
    desk.wait(r"screen: frmSettings activate")
    desk.click("frmSettings", "cmdHelp")
    desk.wait_for("the help", titles)
    left, top, _, _ = desk.place("frmSettings", "lblHead")
    desk.click_at(left // 2, top // 2)
    desk.key("alt+b")
    desk.wait(r"screen: frmSettings unload")
    desk.wait_for("the end of the help", lambda: not titles(), titles)
    print("help closes with the screen behind it")


def run(application, failures):
    lists = {"One": ["sun", "star"]}
    return run_each(application, failures, [
        (name, test, dict(sound=sound, lists=lists))
        for name, sound, test in (("idle", True, idle), ("helped", False, helped), ("talking", True, talking),
                                  ("handled", True, handled), ("leaned on", True, leaned_on), ("silent", False, silent))
    ])


if __name__ == "__main__":
    sys.exit(run(Path(sys.argv[1]), Path(sys.argv[2])))
