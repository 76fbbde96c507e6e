"""Walks from screen to screen of the real program, and keeps which ways have been walked."""

import re
import time
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from desk import FORMS, TITLES, Failure

HELP = Path(__file__).resolve().parents[2] / "help"
STAYS, ENDS, HELPS = "stays", "ends", "helps"


def check(truth, what):
    if not truth:
        raise Failure(what)


class Walk:
    """Ways through the program on one desktop. `ways` gets each way that was walked and found right."""

    def __init__(self, desk, ways):
        self.desk = desk
        self._ways = ways
        self._pressed = set()

    # Coming in

    def start(self, since=0):
        """Waits until the menu can be used."""
        self.desk.wait(r"screen: frmMenu1 activate", since)
        self.desk.wait(r"screen: frmSplash unload", since)
        self.desk.wait_control("frmMenu1", "cmdPlay", ["enabled"])
        self.desk.wait_active("frmMenu1")
        self._ways.add(("frmSplash", "", "", "frmMenu1"))

    def start_again(self):
        """Starts the program anew when it has ended; gives where its trace begins."""
        self.desk.wait_end()
        time.sleep(0.2)
        here = self.desk.mark()
        self.desk.start_program()
        self.start(here)
        return here

    # Ways

    def go(self, screen, control, target, condition="", answers=(), order="show first", stays_loaded=False, limit=15.0):
        """Presses a control, answers the boxes that come, and sees that the way leads to the target.

        A control with a key of its own is pressed by mouse and by key in turn. `control` "frame" closes the window.
        """
        desk = self.desk
        here = desk.mark()
        self._press(screen, control)
        for answer in answers:
            self.answer(*answer)
        if target == ENDS:
            check(desk.wait_end(limit) == 0, "the exit code is %d" % desk.program.returncode)
        elif target == STAYS:
            self._expect_stay(screen, here)
        else:
            desk.wait(r"screen: %s activate" % target, here, limit)
            if not stays_loaded:
                unloaded, _ = desk.wait(r"screen: %s unload" % screen, here, limit)
                self._expect_order(screen, target, here, unloaded, order)
            desk.wait_active(target)
        self._ways.add((screen, control, condition, target))

    def help(self, screen, control, topic):
        """Opens the help of a screen, which stays, by its button; sees which page it is and puts it away."""
        page = title_of(topic)
        here = self.desk.mark()
        self._press(screen, control)
        self.desk.wait_for("the help on %s" % topic, lambda: self._help_titles() == [page + " \u2013 Tumblewick Help"],
                           self._help_titles)
        self.desk.wait_for("the keyboard in the help",
                           lambda: "Tumblewick Help" in self.desk.call("xdotool", "getactivewindow", "getwindowname").stdout)
        self.desk.key("Escape")
        self.desk.wait_for("the end of the help", lambda: not self._help_titles(), self._help_titles)
        self.desk.wait_active(screen)
        check(not [line for line in self.desk.lines(here) if re.match(r"screen: %s (activate|unload)" % screen, line)],
              "help has moved %s" % screen)
        self._ways.add((screen, control, topic, HELPS))

    def help_goes(self, screen, control, topic, leave):
        """Opens the help of a screen and leaves the screen, which takes the help with it."""
        page = title_of(topic)
        self._press(screen, control)
        self.desk.wait_for("the help on %s" % topic, lambda: self._help_titles() == [page + " \u2013 Tumblewick Help"],
                           self._help_titles)
        self.to_front(screen)
        leave()
        self.desk.wait_for("the end of the help", lambda: not self._help_titles(), self._help_titles)

    def to_front(self, screen):
        """Brings a screen's window to the front, as a click on it does."""
        self.desk.call("xdotool", "search", "--onlyvisible", "--name", "^%s$" % re.escape(TITLES[screen]), "windowactivate",
                       "--sync")
        self.desk.wait_active(screen)

    def seen(self, screen, control, condition, target):
        """A way that was seen to be walked by itself."""
        self._ways.add((screen, control, condition, target))

    def close(self, screen):
        """Closes a screen's window as its frame does.

        The window manager takes the key and tells the program to close the window that has the keyboard. A key that it
        misses on a busy machine is pressed once more; one that reached the program counts.
        """
        here = self.desk.mark()
        closed = "screen: %s close" % screen
        self.desk.wait_active(screen)
        self.desk.key("alt+F4")
        try:
            self.desk.wait(closed, here, 5)
        except Failure as failure:
            print("pressed once more: %s" % failure, flush=True)
            self.desk.wait_active(screen)
            self.desk.key("alt+F4")
            self.desk.wait(closed, here, 5)

    # Boxes

    def answer(self, text, button, typed=None):
        """Presses a button of the box that says this, after typing when it asks for something."""
        desk = self.desk
        here = desk.mark()
        pressed = desk.wait_for("the box %r with %s" % (text, button), lambda: self._button_of(text, button))
        if typed is not None:
            desk.type(typed)
        desk.click_node(pressed)
        shown = text.replace("\n", "\\n")
        desk.wait(r'box: ".*" "%s" -> %s' % (re.escape(shown), "Ok" if button == "OK" else button), here)

    def _button_of(self, text, button):
        """The button of the box that says this, not one of a screen behind it."""
        nodes = self.desk.tree()
        boxes = [self.desk.window(nodes, node) for node in nodes
                 if node["name"] == text and node["role"] == "label"]
        return next((node for node in nodes if node["name"].replace("&", "") == button and node["role"] == "push button"
                     and self.desk.window(nodes, node) in boxes), None)

    # What it sees

    def _press(self, screen, control):
        if control == "frame":
            self.close(screen)
            return
        key = key_of(screen, control)
        if key and (screen, control) in self._pressed:
            self._pressed.discard((screen, control))
            self.desk.wait_control(screen, control, ["enabled"])
            self.desk.wait_active(screen)
            self.desk.key("alt+" + key)
        else:
            self._pressed.add((screen, control))
            self.desk.click(screen, control)

    def _expect_stay(self, screen, here):
        self.desk.wait_active(screen)
        time.sleep(0.4)
        moved = [line for line in self.desk.lines(here) if re.match(r"screen: \w+ (load|unload)", line)]
        check(not moved, "%s should stay, but there is %r" % (screen, moved))
        check(self.desk.program.poll() is None, "the program has ended")

    def _expect_order(self, screen, target, here, unloaded, order):
        """The target is shown before the other goes, with the exceptions that the hub makes."""
        loads = [index for index, line in enumerate(self.desk.lines(here), here) if line == "screen: %s load" % target]
        # What was loaded all the time only comes to the front.
        check(not loads or (loads[0] < unloaded) == (order == "show first"),
              "%s and %s do not go in the order: %s" % (screen, target, order))

    def _help_titles(self):
        return [window.split('"')[1] for window in self.desk.windows() if "Tumblewick Help" in window]


def title_of(topic):
    return re.search(r"<title>(.*?)</title>", (HELP / topic).read_text(encoding="utf-8"), re.S).group(1).strip()


def key_of(screen, control):
    """The letter that presses a button together with Alt, or None when it has none for itself."""
    root = ElementTree.parse(FORMS[screen]).getroot().find("widget")
    letters = {}
    for widget in root.iter("widget"):
        text = widget.find("./property[@name='text']/string")
        letter = re.search(r"&(\w)", text.text or "") if text is not None else None
        if letter:
            letters[widget.get("name")] = letter.group(1).lower()
    own = letters.get(control)
    return own if list(letters.values()).count(own) == 1 else None
