#!/usr/bin/python3
"""Uses the real program as somebody who has never seen a computer: monkey.py APPLICATION FAILURES MINUTES SEED.

Clicks on whatever can be seen, types, drags, opens menus, closes windows and changes their size. The same seed does the
same as long as the program is as quick. Whatever ends the program by itself, or keeps it from answering, fails."""

import collections
import json
import random
import re
import select
import signal
import statistics
import sys
import time
from pathlib import Path

from desk import Desktop, Failure

ANSWER_LIMIT = 20.0  # seconds within which the program has to answer a screen reader
MEMORY_LIMIT = 450  # MiB; the sanitizers want most of it
LEAKS_EVERY = 200  # steps from one look for leaks to the next
SETTINGS = ("No Intro", "Intro")  # of the starts, in turn
GAME_EVERY = 3  # of so many starts one goes into a game first, which is seldom found by chance
BLANK_LOOKS = 12  # after so many in a row that found nothing to press, nothing will come
SILENT_LOOKS = 200  # after so many in a row without a line of the trace it starts anew
LEAVES = re.compile("Exit|Quit")  # what such a button ends would be seen too seldom after hours of use
PRESSED = ("push button", "radio button", "check box", "list item", "menu item", "combo box", "table cell", "page tab")
TYPED = ["cat", "knight_nite", "Ann", "3", "1", "01", "new list", "a/b", "con", "?", "\\map=\"x\"=\"y\"\\", "<b>big</b>", "%s%n",
         "Zoë", "ß", "''\"\"", " ", "x" * 60, "How many?"]
KEYS = ["Return", "Tab", "shift+Tab", "Escape", "Delete", "BackSpace", "Down", "Up", "Home", "End", "space", "alt+n", "alt+b",
        "ctrl+a", "ctrl+v", "F1", "alt"]
# The screens that make lists trap nothing: deleting with nothing chosen ends the program with the default report, and so
# does a name that the disk refuses; and so does a later line of a quiz that is none. That is wanted.
ENDED_BY = {"frmSpelling1": (91, 52, 53, 70, 75, 76), "frmQuiz1": (91, 52, 53, 70, 75, 76), "frmSpell1": (5, 13)}
# The sheet of the character properties belongs to the game's screen, which so is loaded; whoever then closes the menu by
# its frame leaves that one, hidden. That is wanted, too.
HIDDEN = {"frmSpell1"}
SANITIZER = re.compile(r"AddressSanitizer|LeakSanitizer|runtime error:|SUMMARY: ")


class Monkey:
    def __init__(self, desk, seed):
        self.desk = desk
        self.random = random.Random(seed)
        self.done = []
        self.begun = 0  # the line of the trace at which the present run begins
        self.nodes = []
        self.screen = ""  # the last that came to the front
        self.blank = 0  # looks in a row that found nothing
        self.hidden = 0  # programs that went on without a window
        self.told = 0  # how long the trace was when it last grew
        self.silent = 0  # looks in a row since then
        self.silences = []  # the screens on which it was given up
        self.sizes = [[]]  # what each run of the program took, in MiB, from look to look
        self.pressed = collections.Counter()

    def run(self, seconds):
        end = time.monotonic() + seconds
        steps = 0
        self.desk.wait(r"screen: frmMenu1 activate", limit=120)
        while time.monotonic() < end:
            if self.desk.program.poll() is not None:
                self.start_again()
            if steps % 4 == 0:
                self.look()
            if steps % LEAKS_EVERY == 0:
                self.desk.program.send_signal(signal.SIGUSR2)
            action = self.random.choices(
                (self.press, self.type, self.key, self.click, self.drag, self.menu, self.resize, self.bring, self.close),
                (80, 28, 28, 12, 10, 6, 4, 3, 1))[0]
            action()
            steps += 1
            time.sleep(self.random.choice((0.02, 0.05, 0.2, 0.6)))
        return steps

    # What it watches

    def look(self):
        """Reads what is there, which the program has to tell in time."""
        reader = self.desk._reader  # pylint: disable=protected-access
        reader.stdin.write("read\n")
        reader.stdin.flush()
        if not select.select([reader.stdout], [], [], ANSWER_LIMIT)[0]:
            raise Failure("the program did not answer within %.0f s" % ANSWER_LIMIT)
        line = reader.stdout.readline()
        if not line:
            self.note("the reader ended")
            self.desk.open_reader()
            line = "[]"
        self.nodes = [node for node in json.loads(line) if node["place"]]
        self.blank = 0 if self.nodes else self.blank + 1
        if self.blank == BLANK_LOOKS and self.desk.program.poll() is None:
            self.leave_hidden()
        self.silent = self.silent + 1 if self.desk.mark() == self.told else 0
        self.told = self.desk.mark()
        if self.silent == SILENT_LOOKS and self.desk.program.poll() is None:
            self.silences.append(self.screen)
            self.end("what tells nothing")
        for line in self.desk.lines()[-200:]:
            if SANITIZER.search(line):
                raise Failure("the program complains: " + line)
            match = re.match(r"screen: (\w+) activate", line)
            if match:
                self.screen = match.group(1)
        status = Path("/proc/%d/status" % self.desk.program.pid)
        if status.exists():
            match = re.search(r"VmRSS:\s+(\d+)", status.read_text())
            if match:
                self.sizes[-1].append(int(match.group(1)) // 1024)
                if self.sizes[-1][-1] > MEMORY_LIMIT:
                    raise Failure("the program has grown to %d MiB" % self.sizes[-1][-1])

    def leave_hidden(self):
        """Ends a program that runs without a window."""
        loaded = set()
        for line in self.desk.lines(self.begun):
            match = re.match(r"screen: (\w+) (load|unload)$", line)
            if match:
                (loaded.add if match.group(2) == "load" else loaded.discard)(match.group(1))
        if loaded != HIDDEN:
            raise Failure("the program runs but shows nothing; loaded: %s" % (", ".join(sorted(loaded)) or "nothing"))
        self.hidden += 1
        self.end("what is hidden")

    def end(self, what):
        self.note("end", what)
        self.desk.program.kill()
        self.desk.program.wait()
        self.run_again()

    def start_again(self):
        code = self.desk.program.returncode
        report = re.search(r"Run-time error '(\d+)'", "\n".join(self.desk.lines(self.begun)))
        screens = re.findall(r"screen: (\w+) activate", "\n".join(self.desk.lines(self.begun)))
        wanted = report and code == 1 and int(report.group(1)) in ENDED_BY.get(screens[-1], ())
        if not wanted and (code != 0 or report):
            raise Failure("the program ended with %d, %s" % (code, report.group(0) if report else "without a report"))
        self.run_again()

    def run_again(self):
        self.blank = self.silent = 0
        self.begun = self.desk.mark()
        # A password that it has set would keep it from the lists; introductions are for every second start.
        self.desk.keep_settings((SETTINGS[len(self.sizes) % 2], ""))
        self.desk.start_program()
        self.desk.wait(r"screen: frmMenu1 activate", self.begun, limit=120)
        self.sizes.append([])
        if len(self.sizes) % GAME_EVERY == 0:
            self.play()

    def play(self):
        """Goes from the menu into a game of one of the lists."""
        kind, players, row = self.random.choice("sq"), self.random.choice((1, 2)), self.random.choice((0, 1))
        self.note("play", kind, players, row)
        self.desk.set_up(kind, ["Ann", "Bob"][:players], row, self.begun)

    def note(self, *what):
        self.done.append(" ".join(str(word) for word in what))

    def summary(self, seed, steps):
        screens = sorted({match.group(1) for match in (re.match(r"screen: (\w+) activate", line) for line in self.desk.lines())
                          if match})
        text = "seed %d: %d steps, %d starts, %d of them ended hidden, %d silent%s, %d screens (%s)" % (
            seed, steps, len(self.sizes), self.hidden, len(self.silences),
            " on " + ", ".join(self.silences) if self.silences else "", len(screens), ", ".join(screens))
        longest = max(self.sizes, key=len)
        if len(longest) >= 10:
            tenth = len(longest) // 10
            text += "\nmemory in MiB: %d at most; in the longest run, of %d looks, %s" % (
                max(map(max, filter(None, self.sizes))), len(longest),
                ", ".join("%d" % statistics.median(longest[at:at + tenth]) for at in range(0, tenth * 10, tenth)))
        return text

    # What it does

    def somewhere(self):
        width, height = self.desk.size
        return self.random.randrange(width), self.random.randrange(height)

    def press(self):
        live = [node for node in self.nodes if node["role"] in PRESSED and "enabled" in node["states"]]
        if not live:
            return
        # What it has seldom pressed draws it most, so that it comes deep into the program.
        node = self.random.choices(live, [self.liking(each) for each in live])[0]
        self.pressed[self.screen, node["name"]] += 1
        self.note("press", node["role"], node["name"])
        self.desk.click_node(node)

    def liking(self, node):
        return (0.05 if LEAVES.search(node["name"]) else 1) / (1 + self.pressed[self.screen, node["name"]])

    def type(self):
        text = self.random.choice(TYPED)
        self.note("type", text)
        self.desk.call("xdotool", "type", "--delay", "5", text)

    def key(self):
        name = self.random.choice(KEYS)
        self.note("key", name)
        self.desk.key(name)

    def click(self):
        x, y = self.somewhere()
        self.note("click", x, y)
        self.desk.click_at(x, y)

    def drag(self):
        start, end = self.somewhere(), self.somewhere()
        self.note("drag", start, end)
        self.desk.drag(start, end)

    def menu(self):
        x, y = self.somewhere()
        self.note("menu", x, y)
        self.desk.click_at(x, y, 3)
        self.desk.key(self.random.choice(("Down", "Escape")), self.random.choice(("Return", "Escape")))

    def resize(self):
        width, height = self.random.randrange(200, 1200), self.random.randrange(150, 900)
        self.note("resize", width, height)
        self.desk.call("xdotool", "getactivewindow", "windowsize", str(width), str(height))

    def bring(self):
        """Brings a window to the front as the desktop's list of windows does; somebody may have put it away."""
        windows = re.findall("0x[0-9a-f]+", self.desk.call("xprop", "-root", "_NET_CLIENT_LIST").stdout)
        if windows:
            at = self.random.randrange(len(windows))
            self.note("bring", at)
            self.desk.call("xdotool", "windowactivate", windows[at])

    def close(self):
        self.note("close")
        self.desk.key("alt+F4")


def main(application, failures, minutes, seed):
    # Little of what is freed is kept, so that growth is the program's own; leaks are looked for when a signal comes.
    environment = {"ASAN_OPTIONS": "detect_leaks=1:exitcode=99:quarantine_size_mb=8:malloc_context_size=8",
                   "LSAN_OPTIONS": "print_suppressions=0:suppressions=" + str(Path(__file__).with_name("leaks.supp")),
                   "UBSAN_OPTIONS": "print_stacktrace=1"}
    lists = {"Two": ["sun", "star"], "Odd": ["knight_nite", "", "_x", "caf\u00e9"]}
    quizzes = {"Legs": ["How many legs has a spider?_Four_Six_Eight_Ten_3_"], "Broken": ["no separators", "Q_1_2_3_4_x_"]}
    with Desktop(application, lists=lists, quizzes=quizzes, environment=environment) as desk:
        monkey = Monkey(desk, seed)
        try:
            steps = monkey.run(minutes * 60)
        except Exception as failure:  # pylint: disable=broad-except
            failures.mkdir(parents=True, exist_ok=True)
            desk.picture(failures / "monkey.png")
            (failures / "monkey.txt").write_text("\n".join(desk.lines()))
            (failures / "monkey-steps.txt").write_text("\n".join(monkey.done))
            print("FAILED after %d steps with seed %d: %s" % (len(monkey.done), seed, failure))
            print(monkey.summary(seed, len(monkey.done)))
            print("the last steps: " + "; ".join(monkey.done[-8:]))
            return 1
        print(monkey.summary(seed, steps))
        return 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]), Path(sys.argv[2]), float(sys.argv[3]), int(sys.argv[4])))
