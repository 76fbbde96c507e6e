"""Runs the real program on a display and a sound sink of its own, plays it with mouse and keyboard, and reads its trace."""

import array
import concurrent.futures
import functools
import json
import math
import os
import re
import shutil
import signal
import subprocess
import tempfile
import threading
import time
import xml.etree.ElementTree as ElementTree
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2] / "src"
FORMS = {form.stem: form for form in SOURCE.glob("*/frm*.ui")}
TITLES = {
    "frmMenu1": "Menu", "frmNumPlayers1": "Number of Players", "frmPlayerNames1": "Players",
    "frmChooseList1": "Choose a List", "frmSpell1": "The Game", "frmList": "Maintenance",
    "frmQuiz1": "Create a Quiz", "frmEditQuiz": "Edit Quiz", "frmSpelling1": "Create a Spell List",
    "frmEditSpell": "Edit Spelling List", "frmEdit": "Select a List", "frmDelete": "Delete a List",
    "frmExpList": "Lists", "frmImpList": "Import List", "frmSettings": "Settings", "frmAbout": "About Tumblewick",
}
ROLES = {
    "QLabel": "label", "QPushButton": "push button", "QRadioButton": "radio button", "QCheckBox": "check box",
    "QLineEdit": "text", "QTextEdit": "text", "platform::MultiLineBox": "text", "QListWidget": "list", "QGroupBox": "panel",
}
# What the program itself calls a control at times.
RENAMED = {("frmPlayerNames1", "txtPlayer_0"): "Enter your name"}
SILENCE = 60.0  # loudness of samples below which nothing is heard


class Failure(Exception):
    """Something that should have been seen was not."""


def _die_with_parent():
    import ctypes

    ctypes.CDLL("libc.so.6").prctl(1, signal.SIGTERM)


class Desktop:
    """A display, a window manager, a compositor, a sound sink and the program on them, as long as it is open."""

    def __init__(self, application, size=(1024, 768), sound=True, readable=True, lists=None, quizzes=None,
                 settings=("No Intro", ""), effects=True, speaking_rate=0, environment=None):
        self.size = size
        # The program scales itself up in quarters, and tells a screen reader the units it reckons in.
        self._scale = max(4, min(size[0] * 4 // 1024, size[1] * 4 // 768)) / 4
        self._readable = readable
        self._choices = "[Output]\nSoundEffects=%s\nSpeakingRate=%d\n" % (str(effects).lower(), speaking_rate)
        self._more_environment = environment or {}
        self.trace = []
        self._seen = threading.Condition()
        self._processes = []
        self._visits = {}
        self._sound = sound
        self._folder = Path(tempfile.mkdtemp(prefix="tumblewick-desk-"))
        self.application = self._folder / "Tumblewick"
        shutil.copytree(application, self.application)
        self.keep_settings(settings)
        for folder, files in (("Lists", lists), ("QList", quizzes)):
            if files is not None:
                shutil.rmtree(self.application / folder)
                (self.application / folder).mkdir()
                for name, lines in files.items():
                    text = "".join(line + "\r\n" for line in lines)
                    (self.application / folder / name).write_bytes(text.encode("utf-8"))

    def keep_settings(self, lines):
        """Writes the file of the settings, for the next start: whether introductions are played, and the password."""
        (self.application / "Set").write_bytes("".join(line + "\r\n" for line in lines).encode("utf-8"))

    # Life

    def __enter__(self):
        try:
            self._open()
        except BaseException:
            self._close()
            raise
        return self

    def __exit__(self, *_):
        self._close()

    def _start(self, *command, **options):
        for stream in ("stdin", "stdout", "stderr"):
            options.setdefault(stream, subprocess.DEVNULL)
        process = subprocess.Popen(command, env=self.environment, preexec_fn=_die_with_parent, **options)
        self._processes.append(process)
        return process

    def _open(self):
        runtime = self._folder / "run"
        runtime.mkdir(mode=0o700)
        choices = runtime / ".config/Tumblewick/Characters.conf"
        choices.parent.mkdir(parents=True)
        choices.write_text(self._choices)
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(runtime),
            "XDG_RUNTIME_DIR": str(runtime),
            "PULSE_RUNTIME_PATH": str(runtime),
            "LANG": "C.UTF-8",
        }
        read_end, write_end = os.pipe()
        self._start(
            "Xvfb", "-displayfd", str(write_end), "-screen", "0", "%dx%dx24" % self.size, "-nolisten", "tcp", "-noreset",
            pass_fds=(write_end,),
        )
        os.close(write_end)
        with os.fdopen(read_end) as numbers:
            self.environment["DISPLAY"] = ":" + numbers.readline().strip()
        self._start("openbox")
        self._until(lambda: "window id" in self.call("xprop", "-root", "_NET_SUPPORTING_WM_CHECK").stdout, "openbox")
        self._start("picom", "--backend", "xrender")
        self._until(lambda: '"picom"' in self.call("xwininfo", "-root", "-tree").stdout, "picom")
        if self._readable:
            self._open_tree()
        if self._sound:
            self._start(
                "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "-L", "module-native-protocol-unix",
                "-L", "module-null-sink sink_name=nul norewinds=1 rate=44100 channels=2",
            )
            self._until(lambda: self.call("pactl", "info").returncode == 0, "the sound server")
            self._recording = runtime / "sound.raw"
            self._recorder = self._start(
                "parec", "-d", "nul.monitor", "--raw", "--format=s16le", "--rate=44100", "--channels=1",
                "--latency-msec=20", stdout=open(self._recording, "wb"),
            )
            self._until(lambda: self._recording.stat().st_size > 0, "the recording")
            self._recording_start = time.monotonic() - self._recording.stat().st_size / 88200
        self.start_program()

    def start_program(self):
        """Starts the program, once more when it has ended; the trace goes on."""
        environment = dict(self.environment, QT_LOGGING_RULES="tumblewick.*.debug=true", **self._more_environment)
        self.program = subprocess.Popen(
            [str(self.application / "tumblewick")], env=environment, stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, errors="replace",
            preexec_fn=_die_with_parent,
        )
        self._processes.append(self.program)
        threading.Thread(target=self._read_trace, args=(self.program.stderr,), daemon=True).start()

    def _read_trace(self, output):
        for line in output:
            line = re.sub(r"^tumblewick\.\w+: ", "", line.rstrip("\n"))
            with self._seen:
                self.trace.append((time.monotonic(), line))
                self._seen.notify_all()
        with self._seen:
            self._seen.notify_all()

    def _close(self):
        for process in reversed(self._processes):
            if process.poll() is None:
                process.terminate()
        for process in reversed(self._processes):
            try:
                process.wait(timeout=3)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        shutil.rmtree(self._folder, ignore_errors=True)

    def call(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True, check=False)

    @staticmethod
    def _until(reached, what, limit=15.0):
        end = time.monotonic() + limit
        while not reached():
            if time.monotonic() > end:
                raise Failure("%s did not come" % what)
            time.sleep(0.02)

    def _open_tree(self):
        """The buses through which a screen reader would follow the program."""
        address = self._folder / "run" / "bus"
        self._start("dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=unix:path=%s" % address)
        self._until(address.exists, "the session bus")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=%s" % address
        self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        self.open_reader()

    def open_reader(self):
        """Starts what reads the tree, once more when it has ended with a program that went while it was read."""
        self._reader = self._start(
            "/usr/bin/python3", str(Path(__file__).with_name("tree.py")), stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, text=True,
        )

    # The trace

    def lines(self, since=0):
        with self._seen:
            return [line for _, line in self.trace[since:]]

    def mark(self):
        """Where the trace ends now, for `since`."""
        with self._seen:
            return len(self.trace)

    def wait(self, pattern, since=0, limit=60.0):
        """Waits for a line that the pattern matches; gives its index and the match."""
        wanted = re.compile(pattern)
        end = time.monotonic() + limit
        index = since
        with self._seen:
            while True:
                while index < len(self.trace):
                    match = wanted.search(self.trace[index][1])
                    if match:
                        return index, match
                    index += 1
                left = end - time.monotonic()
                if left <= 0:
                    raise Failure("no line like %r within %.0f s; %s" % (pattern, limit, self.state()))
                self._seen.wait(min(left, 0.5))

    def wait_end(self, limit=30.0):
        """Waits until the program has ended and gives its exit code."""
        try:
            return self.program.wait(timeout=limit)
        except subprocess.TimeoutExpired:
            raise Failure("the program goes on after %.0f s; %s" % (limit, self.state())) from None

    def state(self):
        """What can be told from outside about a program that does not do what it should."""
        threads = []
        for task in sorted(Path("/proc/%d/task" % self.program.pid).glob("*"), key=lambda task: int(task.name)):
            try:
                state = (task / "stat").read_text().rsplit(")", 1)[1].split()[0]
                threads.append("%s %s %s" % ((task / "comm").read_text().strip(), state, (task / "wchan").read_text()))
            except OSError:  # ended meanwhile
                pass
        with self._seen:
            last = [line for _, line in self.trace[-12:]]
        keyboard = self.call("xdotool", "getactivewindow", "getwindowname").stdout.strip()
        return "the keyboard is in %r, the threads are %s, the last lines:\n    %s" % (
            keyboard, ", ".join(threads) or "gone", "\n    ".join(last))

    def said(self, since=0):
        """The lines that have been spoken or are being spoken: (speaker, text, begin, end or None)."""
        speeches = {}
        with self._seen:
            for moment, line in self.trace[since:]:
                match = re.match(r'agent: (\d+) (\w+) Speak "(.*)" -> (running|done|failed|interrupted)', line)
                if not match:
                    continue
                number, who, text, status = match.groups()
                if status == "running":
                    speeches[number] = [who, text, moment, None]
                elif number in speeches:
                    speeches[number][3] = moment
        return [tuple(speech) for speech in speeches.values()]

    # The controls, as a screen reader knows them

    def tree(self):
        """Every node of the program that can be seen now: role, name, description, place on the display, text, states, index of the parent."""
        self._reader.stdin.write("read\n")
        self._reader.stdin.flush()
        nodes = json.loads(self._reader.stdout.readline())
        for node in nodes:
            if node["place"]:
                node["place"] = [round(measure * self._scale) for measure in node["place"]]
        return nodes

    @staticmethod
    @functools.lru_cache(maxsize=None)
    def _names(screen):
        """The roles and the accessible names of a screen's controls, by control name."""
        root = ElementTree.parse(FORMS[screen]).getroot().find("widget")
        names = {}
        for widget in root.iter("widget"):
            for wanted in ("accessibleName", "text", "title"):
                text = widget.find("./property[@name='%s']/string" % wanted)
                if text is not None and text.text:
                    name = text.text if wanted == "accessibleName" else text.text.replace("&", "")
                    names[widget.get("name")] = (ROLES.get(widget.get("class")), name)
                    break
        return names

    def node(self, wanted):
        """The first node that can be seen now and is the wanted one, or None."""
        return next((node for node in self.tree() if wanted(node)), None)

    def control(self, screen, name):
        """The node of a control that can be seen now, or None."""
        role, known = self._names(screen)[name]
        names = (known, RENAMED.get((screen, name), known))
        nodes = self.tree()
        found = [node for node in nodes if node["name"] in names and node["role"] == role]
        # Another screen that is loaded may have a control of that name.
        own = [node for node in found if self.window(nodes, node)["name"] == TITLES.get(screen)]
        return (own or found or [None])[0]

    @staticmethod
    def window(nodes, node):
        """The window among the nodes of a tree in which a node is."""
        while node["parent"] is not None and nodes[node["parent"]]["role"] != "application":
            node = nodes[node["parent"]]
        return node

    def wait_for(self, what, reached, found=lambda: "nothing of the kind", limit=15.0):
        """Waits until `reached` gives something true, and gives it; `found` tells what was there instead."""
        end = time.monotonic() + limit
        while True:
            result = reached()
            if result:
                return result
            if time.monotonic() > end:
                raise Failure("%s did not come; there is %r" % (what, found()))
            time.sleep(0.1)

    def wait_node(self, wanted, what, limit=15.0):
        """Waits until the wanted node can be seen; gives it."""
        return self.wait_for(what, lambda: self.node(wanted), limit=limit)

    def wait_control(self, screen, name, states=(), limit=15.0):
        """Waits until a control can be seen and has these states; gives its node."""
        def seen():
            node = self.control(screen, name)
            return node if node and all(state in node["states"] for state in states) else None

        return self.wait_for("%s.%s with %s" % (screen, name, list(states)), seen,
                             lambda: self.control(screen, name), limit)

    def is_live(self, screen, name):
        """Whether a control can be seen and used now."""
        node = self.control(screen, name)
        return node is not None and "enabled" in node["states"]

    def text(self, screen, name):
        """What stands in a box or a panel."""
        return self.wait_control(screen, name)["text"]

    def wait_active(self, screen, limit=15.0):
        """Waits until the window of that screen has the keyboard."""
        def owner():
            return self.call("xdotool", "getactivewindow", "getwindowname").stdout.strip()

        self.wait_for("the keyboard in %s" % screen, lambda: owner() == TITLES[screen], owner, limit)

    def windows(self):
        """All windows of the display, a line each, as xwininfo writes them."""
        return self.call("xwininfo", "-root", "-tree").stdout.splitlines()

    # Mouse and keyboard

    def place(self, screen, control):
        """The rectangle of a control on the display: left, top, width, height."""
        return tuple(self.wait_control(screen, control)["place"])

    def click(self, screen, control):
        """Clicks on a control as soon as it can be seen and is live."""
        self.click_node(self.wait_control(screen, control, ["enabled"]))

    def click_node(self, node):
        left, top, width, height = node["place"]
        self.click_at(left + width // 2, top + height // 2)

    def click_at(self, x, y, button=1):
        self.call("xdotool", "mousemove", str(x), str(y), "click", str(button))

    def drag(self, start, end):
        """Drags with the left button from one place to another, in steps as a hand does."""
        self.call("xdotool", "mousemove", str(start[0]), str(start[1]), "mousedown", "1")
        for step in range(1, 11):
            x, y = (round(a + (b - a) * step / 10) for a, b in zip(start, end))
            self.call("xdotool", "mousemove", str(x), str(y))
            time.sleep(0.02)
        self.call("xdotool", "mouseup", "1")

    def type(self, text):
        self.call("xdotool", "type", "--delay", "60", text)

    def key(self, *names):
        self.call("xdotool", "key", *names)

    def hold(self, seconds, *names):
        """Holds keys down together for a while."""
        for name in names:
            self.call("xdotool", "keydown", name)
        time.sleep(seconds)
        for name in reversed(names):
            self.call("xdotool", "keyup", name)

    # What is seen and heard

    def picture(self, path):
        self.call("import", "-window", "root", str(path))

    def loudness(self, begin, end):
        """The level of what was heard between two moments of time.monotonic(), as the root of the mean square."""
        first = max(0, int((begin - self._recording_start) * 44100))
        count = int((end - begin) * 44100)
        with open(self._recording, "rb") as sound:
            sound.seek(first * 2)
            samples = array.array("h", sound.read(count * 2)[: count * 2 // 2 * 2])
        return math.sqrt(sum(value * value for value in samples) / len(samples)) if samples else 0.0

    def film(self, path):
        """Films display and sound until stop_film."""
        self._film = self._start(
            "ffmpeg", "-y", "-loglevel", "error", "-f", "x11grab", "-framerate", "20", "-video_size",
            "%dx%d" % self.size, "-i", self.environment["DISPLAY"], "-f", "pulse", "-i", "nul.monitor",
            "-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-c:a", "aac", str(path),
        )

    def stop_film(self):
        self._film.send_signal(signal.SIGINT)
        self._film.wait(timeout=20)

    def processor_share(self, seconds):
        """How much of one core the program uses, over that time."""
        def spent():
            fields = Path("/proc/%d/stat" % self.program.pid).read_text().rsplit(")", 1)[1].split()
            return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

        before, start = spent(), time.monotonic()
        time.sleep(seconds)
        return (spent() - before) / (time.monotonic() - start)

    # The way into a game

    def before(self, screen, work):
        """Has set_up call `work` when it has filled in that screen, before it goes on."""
        self._visits[screen] = work

    def _visit(self, screen):
        self._visits.get(screen, lambda: None)()

    def set_up(self, kind, players, row, since=0):
        """From the menu to the game screen: `kind` is "s" or "q", `row` the place of the list, counted from 0.

        The menu has become active behind `since`.
        """
        self.wait(r"screen: frmMenu1 activate", since)
        self.wait_control("frmMenu1", "cmdPlay", ["enabled"])
        self.wait_active("frmMenu1")
        self.click("frmMenu1", {"s": "cmdPlay", "q": "Command3"}[kind])
        self.wait(r"screen: frmNumPlayers1 activate", since)
        self.click("frmNumPlayers1", "opt%d" % len(players))
        self.wait_active("frmNumPlayers1")
        self._visit("frmNumPlayers1")
        self.key("alt+n")
        self.wait(r"screen: frmPlayerNames1 activate", since)
        self.wait_control("frmPlayerNames1", "txtPlayer_0", ["focused"])
        self.wait_active("frmPlayerNames1")
        for index, name in enumerate(players):
            if index:
                self.key("Tab")
            self.type(name)
        self._visit("frmPlayerNames1")
        self.key("Return")
        self.wait(r"screen: frmChooseList1 activate", since)
        self.wait_control("frmChooseList1", "cmdNext")
        self.wait_active("frmChooseList1")
        for _ in range(row + 1):
            self.key("Down")
        self._visit("frmChooseList1")
        self.click("frmChooseList1", "cmdNext")
        self.wait(r"screen: frmSpell1 activate", since)


def run_each(application, failures, cases, at_once=1):
    """Runs tests, each given as a name, the test and what its Desktop holds, on a desk of their own, some `at_once`.

    What a test that failed has left is put into the folder `failures`. Gives the exit code of the program.
    """
    def run(case):
        name, test, content = case
        with Desktop(application, **content) as desk:
            try:
                test(desk)
                print("passed: %s" % name, flush=True)
                return 0
            except Exception as failure:  # pylint: disable=broad-except
                print("FAILED: %s: %s" % (name, failure), flush=True)
                failures.mkdir(parents=True, exist_ok=True)
                desk.picture(failures / (name + ".png"))
                (failures / (name + ".txt")).write_text("\n".join(desk.lines()))
                return 1

    with concurrent.futures.ThreadPoolExecutor(at_once) as pool:
        return max(pool.map(run, cases))
