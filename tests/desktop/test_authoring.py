#!/usr/bin/python3
"""Writes, hears, edits, moves and plays lists in the real program: test_authoring.py APPLICATION FAILURES."""

import re
import sys
import time
from pathlib import Path

from desk import SILENCE, Desktop, Failure

QUESTION = "How many legs has a spider?"
ANSWERS = ["four", "six", "eight", "ten"]


def check(truth, what):
    if not truth:
        raise Failure(what)


def content(desk, folder, name):
    return (desk.application / folder / name).read_bytes()


def expect_content(desk, folder, name, wanted):
    desk.wait_for("%s/%s" % (folder, name), (desk.application / folder / name).exists)
    desk.wait_for("%r in %s/%s" % (wanted, folder, name), lambda: content(desk, folder, name) == wanted,
                  lambda: content(desk, folder, name))


def go(desk, screen, button, target):
    """From one screen to the next by a button."""
    here = desk.mark()
    desk.click(screen, button)
    desk.wait(r"screen: %s activate" % target, here)
    desk.wait_active(target)


def write(desk, screen, box, text):
    desk.click(screen, box)
    desk.wait_control(screen, box, ["focused"])
    desk.type(text)


def answer(desk, text, button):
    """Presses a button of the box that says this."""
    here = desk.mark()
    desk.wait_node(lambda node: node["name"] == text and node["role"] == "label", "the box %r" % text)
    desk.click_node(desk.wait_node(lambda node: node["name"].replace("&", "") == button
                                   and node["role"] == "push button", "the button %s" % button))
    desk.wait(r'box: ".*" "%s" -> ' % re.escape(text), here)


def choose(desk, name):
    """Clicks on the name of a file."""
    desk.click_node(desk.wait_node(lambda node: node["name"] == name and node["role"] == "list item",
                                   "the file %s" % name))


def make_spelling_list(desk):
    go(desk, "frmList", "cmdNewSpell", "frmSpelling1")
    write(desk, "frmSpelling1", "txtName", "Sky")
    for word, pronunciation in (("sun", ""), ("knight", "nite"), ("moon", "")):
        write(desk, "frmSpelling1", "txtNew", word)
        if pronunciation:
            write(desk, "frmSpelling1", "txtPronounce", pronunciation)
        else:
            hear(desk, "frmSpelling1", "cmdTestit", word)
        desk.click("frmSpelling1", "Command1")
        desk.wait_for("an empty box", lambda: desk.text("frmSpelling1", "txtNew") == "")
    desk.click("frmSpelling1", "Command3")
    answer(desk, "Your list has been saved.", "OK")
    expect_content(desk, "Lists", "Sky", b"sun\r\nknight_nite\r\nmoon\r\n")
    go(desk, "frmSpelling1", "cmdback", "frmList")


def hear(desk, screen, button, word):
    """Merlin says the word, and it is heard."""
    here = desk.mark()
    desk.click(screen, button)
    pattern = r'Merlin Speak "\\Map="%s"="%s"\\\." -> ' % (word, word)
    desk.wait(pattern + "running", here)
    begin = time.monotonic()
    desk.wait(pattern + "done", here)
    check(desk.loudness(begin, time.monotonic()) > 4 * SILENCE, "%r is not heard" % word)


def make_quiz(desk):
    go(desk, "frmList", "cmdAddQuiz", "frmQuiz1")
    write(desk, "frmQuiz1", "txtName", "Legs")
    write(desk, "frmQuiz1", "txtQuest", QUESTION)
    for number, text in enumerate(ANSWERS):
        write(desk, "frmQuiz1", "txtAnsw_%d" % number, text)
    write(desk, "frmQuiz1", "txtCorrect", "3")
    desk.click("frmQuiz1", "cmdAdd")
    desk.wait_for("an empty box", lambda: desk.text("frmQuiz1", "txtCorrect") == "")
    desk.click("frmQuiz1", "cmdSave")
    answer(desk, "Your quiz has been saved.", "OK")
    expect_content(desk, "QList", "Legs", (QUESTION + "_four_six_eight_ten_3_\r\n").encode())
    go(desk, "frmQuiz1", "cmdback", "frmList")


def edit_spelling_list(desk):
    go(desk, "frmList", "cmdEditSpell", "frmEdit")
    choose(desk, "Sky")
    go(desk, "frmEdit", "cmdOK", "frmEditSpell")
    desk.key("Delete")  # the first word is selected
    answer(desk, "Are you sure you want to delete sun from the list?", "Yes")
    expect_content(desk, "Lists", "Sky", b"knight_nite\r\nmoon_\r\n")
    desk.wait_active("frmEditSpell")
    desk.key("Down")
    desk.key("Return")
    desk.wait_for("the word in the box", lambda: desk.text("frmEditSpell", "txtESpell") == "moon")
    write(desk, "frmEditSpell", "txtESpell", "s")
    hear(desk, "frmEditSpell", "cmdETest", "moons")
    desk.click("frmEditSpell", "cmdSave")
    expect_content(desk, "Lists", "Sky", b"knight_nite\r\nmoons\r\n")
    go(desk, "frmEditSpell", "cmdback", "frmEdit")
    go(desk, "frmEdit", "cmdback", "frmList")


def move_spelling_list(desk):
    """Out into the home folder, away, and in again under another name."""
    go(desk, "frmList", "cmdExportSpell", "frmExpList")
    choose(desk, "Sky")
    desk.click("frmExpList", "cmdExport")
    answer(desk, "Export Successful", "OK")
    go(desk, "frmExpList", "cmdback", "frmList")
    go(desk, "frmList", "cdmDeleteSpell", "frmDelete")
    choose(desk, "Sky")
    desk.click("frmDelete", "cmdDel")
    answer(desk, "Are you sure you want to delete Sky?", "Yes")
    desk.wait_for("the list to go", lambda: not (desk.application / "Lists/Sky").exists())
    go(desk, "frmDelete", "cmdback", "frmList")
    go(desk, "frmList", "cmdImportSpell", "frmImpList")
    choose(desk, "Sky")
    desk.click("frmImpList", "txtName")
    desk.key("ctrl+a")
    desk.type("Stars")
    desk.click("frmImpList", "cmdImport")
    answer(desk, "Import Successful", "OK")
    expect_content(desk, "Lists", "Stars", b"knight_nite\r\nmoons\r\n")


def play_spelling(desk, since):
    desk.set_up("s", ["Ann"], 0, since)
    desk.wait(r'Merlin Speak "Here we go\. Get ready to play Stars\."', since)
    end, match = desk.wait(r'Speak "Ann, how do you spell: \\map="(\w+)"=.* -> done', since)
    desk.type({"nite": "knight"}.get(match.group(1), match.group(1)))
    desk.key("Return")
    desk.wait(r'Merlin Play "Congratulate(_2)?" -> running', end)


def play_quiz(desk):
    desk.set_up("q", ["Eve"], 0)
    end, _ = desk.wait(r'Speak "Eve, %s" -> done' % re.escape(QUESTION))
    choose(desk, "eight")
    desk.click("frmSpell1", "cmdGo")
    desk.wait(r'Merlin Play "Congratulate(_2)?" -> running', end)


def author(desk):
    desk.wait(r"screen: frmMenu1 activate")
    desk.wait_control("frmMenu1", "cmdPlay", ["enabled"])
    desk.wait_active("frmMenu1")
    go(desk, "frmMenu1", "cmdCreate", "frmList")
    make_spelling_list(desk)
    make_quiz(desk)
    edit_spelling_list(desk)
    move_spelling_list(desk)
    here = desk.mark()
    go(desk, "frmImpList", "cmdExit", "frmMenu1")
    play_spelling(desk, here)
    # The other game in a program of its own, from the folder as it is now: the first game is not over.
    with Desktop(desk.application, (1024, 768), effects=False) as second:
        play_quiz(second)


def main(application, failures):
    start = time.monotonic()
    with Desktop(application, (1024, 768), effects=False, lists={}, quizzes={}) as desk:
        try:
            author(desk)
        except Exception as failure:  # pylint: disable=broad-except
            folder = Path(failures)
            folder.mkdir(parents=True, exist_ok=True)
            desk.picture(folder / "authoring.png")
            (folder / "authoring.txt").write_text("\n".join(desk.lines()))
            print("FAILED: authoring: %s" % failure)
            return 1
    print("passed: authoring, in %.0f s" % (time.monotonic() - start))
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
