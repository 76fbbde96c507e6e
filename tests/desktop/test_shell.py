#!/usr/bin/python3
"""The real program's frame on real displays: by the keyboard alone, on small displays, its ways out, and twice at once.

    test_shell.py APPLICATION FAILURES
"""

import os
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from desk import TITLES, Failure, run_each

UNUSABLE = r"Your current display settings \\n cannot be used by a graphical interface such as this program\."
NOTE = "NOTE: Consider changing your display mode to 1024 X 768. The program will  perform better and certainly look better"


def check(truth, what):
    print(what)
    if not truth:
        raise Failure(what)


def focused(desk):
    """The names of what has the keyboard, as a screen reader would say them: a list has one, and its entry too."""
    return [node["name"] for node in desk.tree() if "focused" in node["states"]]


def wait_focus(desk, name):
    desk.wait_for("the keyboard on %r" % name, lambda: name in focused(desk), lambda: focused(desk))


def keyboard(desk):
    """Everything between the start and a game, without a mouse."""
    desk.wait(r"screen: frmMenu1 activate")
    desk.wait_active("frmMenu1")
    wait_focus(desk, "Play Spelling")
    round_trip = ["Play a Quiz", "Add or Edit List", "Settings", "Help", "About Tumble Wick", "Quit", "Play Spelling"]
    for name in round_trip:
        desk.key("Tab")
        wait_focus(desk, name)
    for name in reversed(round_trip[:-1]):
        desk.key("shift+Tab")
        wait_focus(desk, name)
    print("Tab goes round the menu, in both directions")

    for _ in range(4):
        desk.key("Tab")
    wait_focus(desk, "About Tumble Wick")
    desk.key("Return")
    desk.wait(r"screen: frmAbout activate")
    wait_focus(desk, "OK")
    end = desk.mark()
    desk.key("Escape")
    desk.wait(r"screen: frmAbout unload", end)
    desk.wait_active("frmMenu1")
    wait_focus(desk, "About Tumble Wick")
    print("the About box comes by Enter, goes by Escape, and leaves the keyboard where it was")

    desk.key("alt+h")
    desk.wait_for("the help", lambda: [line for line in desk.windows() if "Tumblewick Help" in line])
    desk.wait_node(lambda node: node["role"] in ("document", "document frame", "label", "text")
                   and "focused" in node["states"], "the page with the keyboard")
    desk.key("ctrl+k")
    wait_focus(desk, "Search all pages")
    desk.type("underscore")
    desk.key("Return")
    desk.wait_for("the page that has the word",
                  lambda: [line for line in desk.windows() if "Tips on Pronunciation \u2013 Tumblewick Help" in line],
                  lambda: [line for line in desk.windows() if "Tumblewick Help" in line])
    desk.key("Escape")
    desk.wait_for("the end of the help", lambda: not [line for line in desk.windows() if "Tumblewick Help" in line])
    desk.wait_active("frmMenu1")
    print("help is searched and left by keys")

    end = desk.mark()
    while "Settings" not in focused(desk):
        desk.key("alt+s")  # two captions have this letter
        time.sleep(0.3)
    desk.key("Return")
    desk.wait(r"screen: frmSettings activate", end)
    wait_focus(desk, "Don't play introductions")
    desk.key("Up")
    wait_focus(desk, "Play introductions")
    desk.key("Tab")
    wait_focus(desk, "Password for accessing add / edit list functionality (optional)")
    desk.type("owl")
    desk.key("Tab")
    wait_focus(desk, "Repeat password")
    desk.type("owl")
    desk.key("alt+c")
    desk.wait_node(lambda node: node["name"] == "Speak aloud", "the properties")
    desk.key("Escape")
    desk.wait_for("the end of the properties", lambda: not desk.node(lambda node: node["name"] == "Speak aloud"))
    desk.key("alt+s")
    desk.wait_node(lambda node: node["name"] == "OK", "the box")
    desk.key("Return")
    desk.wait(r'box: "Tumblewick" "Save successful" -> Ok', end)
    check((desk.application / "Set").read_bytes() == b"Intro\r\nowl\r\n", "the settings are written by keys")
    desk.key("alt+b")
    desk.wait(r"screen: frmMenu1 activate", end)
    desk.wait_active("frmMenu1")

    end = desk.mark()
    desk.key("alt+a")
    desk.wait_node(lambda node: node["name"] == "OK", "the question for the password")
    desk.type("owl")
    desk.key("Return")
    desk.wait(r"screen: frmList activate", end)
    desk.wait_active("frmList")
    wait_focus(desk, "Add Spelling List")
    names = ["Edit Spelling List", "Delete Spelling List", "Import Spelling List", "Export Spelling List", "Add Quiz",
             "Edit Quiz", "Delete Quiz", "Import Quiz", "Export Quiz", "Main Menu", "Help"]
    for name in names:
        desk.key("Tab")
        wait_focus(desk, name)
    print("Tab goes round the hub")
    desk.key("shift+Tab")
    wait_focus(desk, "Main Menu")
    desk.key("Return")
    desk.wait(r"screen: frmMenu1 activate", end)
    desk.wait_active("frmMenu1")

    end = desk.mark()
    desk.key("alt+q")
    desk.wait(r"screen: frmNumPlayers1 activate", end)
    desk.wait_active("frmNumPlayers1")
    wait_focus(desk, "One player")
    desk.key("Down")
    wait_focus(desk, "Two players")
    desk.key("Return")
    desk.wait(r"screen: frmPlayerNames1 activate", end)
    desk.wait_active("frmPlayerNames1")
    wait_focus(desk, "First player's name")
    desk.type("Ann")
    desk.key("Tab")
    wait_focus(desk, "Second player's name")
    desk.type("Ben")
    desk.key("Return")
    desk.wait(r"screen: frmChooseList1 activate", end)
    desk.wait_active("frmChooseList1")
    desk.key("Down")
    desk.key("Return")
    desk.wait(r"screen: frmSpell1 activate", end)
    print("a quiz for two is set up by keys")
    desk.wait(r'Speak "\w+, .*-> done', end, 120)
    desk.wait_control("frmSpell1", "cmdGo", ["enabled"], 30)
    end = desk.mark()
    desk.key("alt+e")
    desk.wait(r'Speak "See you next time\."', end, 60)
    check(desk.wait_end() == 0, "Exit Game ends the program by its key")


def small(desk):
    """A display that is too small: told, told that it closes, and closed."""
    desk.wait_node(lambda node: node["name"] == "OK", "the box")
    time.sleep(0.5)
    box = desk.node(lambda node: node["role"] in ("dialog", "alert", "frame") and "active" in node["states"])
    left, top, width, height = box["place"]
    check(left >= 0 and top >= 0 and left + width <= 640 and top + height <= 480,
          "the box stands whole on the display, at %r" % box["place"])
    desk.key("Return")
    desk.wait(r'box: "Tumblewick" "%s.*Min Settings: 800 by 600 256 Color" -> Ok' % UNUSABLE)
    time.sleep(0.5)
    desk.key("Return")
    desk.wait(r'box: "Tumblewick" "The program must close now" -> Ok')
    check(desk.wait_end() == 0, "the program ends")
    check(not [line for line in desk.lines() if "frmMenu1" in line], "the menu never came")


def least(desk):
    """The smallest display: a note, and the menu all the same."""
    desk.wait_node(lambda node: node["name"] == NOTE, "the note on the splash")
    desk.wait(r"screen: frmMenu1 activate")
    for name in ("cmdPlay", "Command3", "cmdCreate", "cmdSettings", "cmdHelp", "cmdAbout", "Command1"):
        left, top, width, height = desk.place("frmMenu1", name)
        check(0 <= left and left + width <= 800 and 0 <= top and top + height <= 600, "%s stands on the display" % name)


def fake_programs(folder):
    """A folder for PATH with the tools that the About box starts; they write down how they were called.

    What the game has chosen for itself, the window system and the scale, is not for them.
    """
    for name in ("hardinfo", "xdg-open"):
        program = folder / name
        program.write_text('#!/bin/sh\necho "${0##*/}${1:+ }$*$QT_QPA_PLATFORM$QT_SCALE_FACTOR" >> "%s"\n' % (folder / "calls"))
        program.chmod(0o755)


def outward(desk, programs):
    """The two ways out of the About box: the tool of the desktop, and the browser."""
    fake_programs(programs)
    calls = programs / "calls"
    desk.wait(r"screen: frmMenu1 activate")
    desk.click("frmMenu1", "cmdAbout")
    desk.wait(r"screen: frmAbout activate")
    desk.wait_control("frmAbout", "Command1", ["enabled"])
    desk.click("frmAbout", "Command1")
    desk.wait_for("the information tool", lambda: calls.exists() and calls.read_text() == "hardinfo\n")
    desk.click("frmAbout", "Label1")
    desk.wait_for("the browser", lambda: calls.read_text() == "hardinfo\nxdg-open https://www.tumblewick.example/\n",
                  calls.read_text)
    (programs / "hardinfo").unlink()
    end = desk.mark()
    desk.key("alt+s")
    desk.wait_node(lambda node: node["name"] == "System Information Is Unavailable At This Time", "the box")
    desk.key("Return")
    desk.wait(r'box: "Tumblewick" "System Information Is Unavailable At This Time" -> Ok', end)
    desk.click("frmAbout", "cmdOK")
    desk.wait(r"screen: frmAbout unload", end)
    check(desk.program.poll() is None, "both ways out are found, and their lack is told")


class Pair:
    """Two programs on one desk that share a folder, worked with by keys."""

    def __init__(self, desk):
        self.desk = desk
        desk.wait(r"screen: frmMenu1 activate")
        self.first = desk.program
        middle = desk.mark()
        desk.start_program()
        self.second = desk.program
        desk.wait(r"screen: frmMenu1 activate", middle)

    def _ask(self, *command):
        return subprocess.run(("xdotool",) + command, env=self.desk.environment, capture_output=True, text=True,
                              check=False).stdout.split()

    def front(self, program):
        """Brings the screen of one of them to the front."""
        titles = "^(%s)$" % "|".join(TITLES.values())
        windows = self._ask("search", "--onlyvisible", "--all", "--pid", str(program.pid), "--name", titles)
        if not windows:
            raise Failure("a program without a window")
        self._ask("windowactivate", "--sync", windows[-1])
        self.desk.wait_for("the keyboard", lambda: self._ask("getactivewindow", "getwindowpid") == [str(program.pid)],
                           lambda: self._ask("getactivewindow", "getwindowname"))
        time.sleep(1.2)  # a change of the window in front that comes by itself is taken back for a second

    def press(self, *keys, until=None):
        """Presses keys and waits for the line of the trace that the last of them brings."""
        for key in keys[:-1]:
            self.desk.key(key)
            time.sleep(0.25)
        end = self.desk.mark()
        self.desk.key(keys[-1])
        if until:
            self.desk.wait(until, end)
        time.sleep(0.6)


def together(desk):
    """Two programs that share a folder: each goes its way, and no file is hurt."""
    lists = desk.application / "Lists"
    pair = Pair(desk)
    check((desk.application / "Lintro").read_bytes() in (b"0", b"1"), "the record of the introductions is whole")

    pair.front(pair.second)
    pair.press("Tab", "Tab", "Tab", "Return", until=r"screen: frmSettings activate")
    pair.press("Tab")
    desk.type("owl")
    pair.press("Tab")
    desk.type("owl")
    pair.press("alt+s")
    pair.press("Return", until=r'"Save successful"')
    check((desk.application / "Set").read_bytes() == b"Intro\r\nowl\r\n", "the second one sets a password")
    pair.press("alt+b", until=r"screen: frmMenu1 activate")

    pair.front(pair.first)
    time.sleep(1)
    pair.press("alt+a", until=r"screen: frmList activate")
    print("the first one goes on with the settings that it was started with")
    pair.press("Tab", "Return", until=r"screen: frmEdit activate")

    pair.front(pair.second)
    pair.press("alt+a")
    desk.type("owl")
    pair.press("Return", until=r"screen: frmList activate")
    pair.press("Tab", "Tab", "Return", until=r"screen: frmDelete activate")
    pair.press("Down", "Delete")
    pair.press("y", until=r'box: .* -> Yes')
    check(not (lists / "Birds").exists() and (lists / "Trees").exists(), "the second one deletes a list")

    pair.front(pair.first)
    pair.press("Down", "Return", until=r"screen: frmEditSpell activate")
    pair.press("Return", until=r'box: .*53 File not found')
    check(not (lists / "Birds").exists(), "the first one, which still showed it, is told that it has gone")
    pair.press("alt+b", until=r"screen: frmEdit activate")
    pair.press("Down", "Return", until=r"screen: frmEditSpell activate")
    desk.wait_node(lambda node: "oak" in node["name"], "the words of the other list")
    print("it goes on with the list that is left")
    pair.press("alt+m", until=r"screen: frmMenu1 activate")
    pair.press("alt+u")
    check(pair.first.wait(timeout=10) == 0, "the first one ends")
    check(pair.second.poll() is None, "the second one goes on")
    pair.front(pair.second)
    pair.press("alt+m", until=r"screen: frmMenu1 activate")
    pair.press("alt+u")
    check(pair.second.wait(timeout=10) == 0, "and ends by itself")
    check((lists / "Trees").read_bytes() == b"oak\r\nelm\r\n", "no file is hurt")


def run(application, failures):
    with tempfile.TemporaryDirectory() as programs:
        cases = (
            ("keyboard", keyboard, dict(quizzes={"Legs": ["How many legs has a spider?_Four_Six_Eight_Ten_3_"] * 4})),
            ("small", small, dict(size=(640, 480), sound=False)),
            ("least", least, dict(size=(800, 600), sound=False)),
            ("outward", lambda desk: outward(desk, Path(programs)), dict(size=(1280, 960), sound=False, environment={"PATH": "%s:%s" % (programs, os.environ["PATH"])})),
            ("together", together, dict(settings=("Intro", ""),
                                        lists={"Birds": ["owl", "wren"], "Trees": ["oak", "elm"]})),
        )
        return run_each(application, failures, cases, at_once=2)


if __name__ == "__main__":
    sys.exit(run(Path(sys.argv[1]), Path(sys.argv[2])))
