#!/usr/bin/python3
"""Walks every way from screen to screen of the real program, by its trace: test_journeys.py APPLICATION FAILURES [JOURNEY...].

WAYS is the whole graph. A way counts as walked when the program was seen to go it; one that no journey goes fails the
test, and so does one that a journey goes and the graph does not know."""

import concurrent.futures
import re
import sys
import threading
import time
from pathlib import Path

from desk import Desktop
from walk import ENDS, HELPS, STAYS, Walk, check

AT_ONCE = 6  # journeys, which mostly listen
QUICKLY = 10  # the rate of speech, the most that a user can choose, for games that are played to their end
LISTS = "Adding, Editing and Deleting Lists.htm"
PLAYING = "Playing the Game.htm"
TRANSFER = "Exporting and Importing Lists.htm"
TIPS = "Tips on Pronunciation.htm"
DIFFERENT = "The 2 passwords are different. Please check your passwords and try again. "

# Screen, control, under which condition or with which page, and where it leads. The frame stands for closing the
# window. What is not walked here stands with the test that walks it, in ELSEWHERE.
WAYS = {
    ("frmSplash", "", "", "frmMenu1"),

    ("frmMenu1", "cmdPlay", "", "frmNumPlayers1"),
    ("frmMenu1", "cmdPlay", "behind the settings", "frmNumPlayers1"),
    ("frmMenu1", "cmdPlay", "introduction awaited", "frmNumPlayers1"),
    ("frmMenu1", "cmdPlay", "introduction", "frmNumPlayers1"),
    ("frmMenu1", "Command3", "", "frmNumPlayers1"),
    ("frmMenu1", "Command3", "introduction", "frmNumPlayers1"),
    ("frmMenu1", "cmdCreate", "no password", "frmList"),
    ("frmMenu1", "cmdCreate", "right password", "frmList"),
    ("frmMenu1", "cmdCreate", "wrong password", STAYS),
    ("frmMenu1", "cmdCreate", "empty password", STAYS),
    ("frmMenu1", "cmdCreate", "password cancelled", STAYS),
    ("frmMenu1", "cmdCreate", "introduction", "frmList"),
    ("frmMenu1", "cmdSettings", "", "frmSettings"),
    ("frmMenu1", "cmdSettings", "introduction", "frmSettings"),
    ("frmMenu1", "cmdAbout", "", "frmAbout"),
    ("frmMenu1", "cmdAbout", "introduction", "frmAbout"),
    ("frmMenu1", "cmdHelp", "Introduction.htm", HELPS),
    ("frmMenu1", "Command1", "", ENDS),
    ("frmMenu1", "Command1", "About is open", ENDS),
    ("frmMenu1", "Command1", "introduction", ENDS),
    ("frmMenu1", "frame", "", ENDS),
    ("frmMenu1", "frame", "introduction", ENDS),
    ("frmAbout", "cmdOK", "", "frmMenu1"),
    ("frmAbout", "frame", "", "frmMenu1"),

    ("frmNumPlayers1", "cmdNext", "", "frmPlayerNames1"),
    ("frmNumPlayers1", "cmdback", "", "frmMenu1"),
    ("frmNumPlayers1", "cmdHelp", PLAYING, HELPS),
    ("frmPlayerNames1", "cmdNext", "all names", "frmChooseList1"),
    ("frmPlayerNames1", "cmdNext", "list screen is loaded", "frmChooseList1"),
    ("frmPlayerNames1", "cmdNext", "a name is missing", STAYS),
    ("frmPlayerNames1", "cmdback", "", "frmNumPlayers1"),
    ("frmPlayerNames1", "cmdMenu", "", "frmMenu1"),
    ("frmPlayerNames1", "cmdHelp", PLAYING, HELPS),
    ("frmPlayerNames1", "frame", "list screen is loaded", "frmChooseList1"),
    ("frmChooseList1", "cmdNext", "a list", "frmSpell1"),
    ("frmChooseList1", "cmdNext", "a quiz", "frmSpell1"),
    ("frmChooseList1", "cmdNext", "nothing chosen", STAYS),
    ("frmChooseList1", "cmdback", "", "frmPlayerNames1"),
    ("frmChooseList1", "cmdMenu", "", "frmMenu1"),
    ("frmChooseList1", "cmdHelp", PLAYING, HELPS),

    ("frmSpell1", "", "more players than questions", "frmNumPlayers1"),
    ("frmSpell1", "", "no sound", "frmMenu1"),
    ("frmSpell1", "cmdNew", "end of the list", "frmMenu1"),
    ("frmSpell1", "cmdAgain", "end of the list", STAYS),
    ("frmSpell1", "cmdExit", "opening", ENDS),
    ("frmSpell1", "cmdExit", "question", ENDS),
    ("frmSpell1", "cmdExit", "praise", ENDS),
    ("frmSpell1", "cmdExit", "closing lines", ENDS),
    ("frmSpell1", "cmdExit", "scores are read", ENDS),
    ("frmSpell1", "cmdExit", "end of the list", ENDS),
    ("frmSpell1", "frame", "opening", ENDS),
    ("frmSpell1", "frame", "closing lines", ENDS),
    ("frmSpell1", "frame", "fireworks", ENDS),
    ("frmSpell1", "frame", "farewell", ENDS),
    ("frmSpell1", "cmdHelp", PLAYING, HELPS),

    ("frmSettings", "cmdback", "unchanged", "frmMenu1"),
    ("frmSettings", "cmdback", "Yes", "frmMenu1"),
    ("frmSettings", "cmdback", "Yes, refused", STAYS),
    ("frmSettings", "cmdback", "No", "frmMenu1"),
    ("frmSettings", "cmdback", "Cancel", STAYS),
    ("frmSettings", "cmdSave", "", STAYS),
    ("frmSettings", "cmdSave", "refused", STAYS),
    ("frmSettings", "cmdProperties", "", STAYS),
    ("frmSettings", "cmdHelp", "Settings1.htm", HELPS),
    ("frmSettings", "frame", "changed", ENDS),

    ("frmList", "cmdNewSpell", "", "frmSpelling1"),
    ("frmList", "cmdEditSpell", "Spell", "frmEdit"),
    ("frmList", "cdmDeleteSpell", "Spell", "frmDelete"),
    ("frmList", "cmdImportSpell", "Spell", "frmImpList"),
    ("frmList", "cmdExportSpell", "Spell", "frmExpList"),
    ("frmList", "cmdAddQuiz", "", "frmQuiz1"),
    ("frmList", "cmdEditQuiz", "Quiz", "frmEdit"),
    ("frmList", "cmdDeleteQuiz", "Quiz", "frmDelete"),
    ("frmList", "cmdImportQuiz", "Quiz", "frmImpList"),
    ("frmList", "cmdExportQuiz", "Quiz", "frmExpList"),
    ("frmList", "cmdMenu", "", "frmMenu1"),
    ("frmList", "cmdHelp", LISTS, HELPS),

    ("frmEdit", "cmdOK", "Spell", "frmEditSpell"),
    ("frmEdit", "cmdOK", "Quiz", "frmEditQuiz"),
    ("frmEdit", "cmdOK", "Spell, nothing chosen", STAYS),
    ("frmEdit", "cmdOK", "Quiz, nothing chosen", STAYS),
    ("frmSpelling1", "cmdHelp", "Add a New Spelling List.htm", HELPS),
    ("frmSpelling1", "Command5", TIPS, HELPS),
    ("frmEditSpell", "cmdHelp", "Edit a Spelling List.htm", HELPS),
    ("frmEditSpell", "cmdTips", TIPS, HELPS),
    ("frmQuiz1", "cmdHelp", "Add a New Quiz.htm", HELPS),
    ("frmEditQuiz", "cmdHelp", "Edit a Quiz.htm", HELPS),
    ("frmSpelling1", "cmdback", "the word is being said", "frmList"),
    ("frmEditSpell", "cmdMenu", "the word is being said", "frmMenu1"),
}
for _screen, _back, _home in (("frmEdit", "cmdback", "cmdMenu"), ("frmDelete", "cmdback", "cmdExit"),
                              ("frmExpList", "cmdback", "cmdExit"), ("frmImpList", "cmdback", "cmdExit")):
    _topic = TRANSFER if _screen in ("frmExpList", "frmImpList") else LISTS
    WAYS |= {(_screen, "cmdHelp", _topic, HELPS)}
    for _kind in ("Spell", "Quiz"):
        WAYS |= {(_screen, _back, _kind, "frmList"), (_screen, _home, _kind, "frmMenu1")}
for _screen, _back, _home in (("frmSpelling1", "frmList", "Command4"), ("frmQuiz1", "frmList", "Command2"),
                              ("frmEditSpell", "frmEdit", "cmdMenu"), ("frmEditQuiz", "frmEdit", "cmdMenu")):
    for _button, _target in (("cmdback", _back), (_home, "frmMenu1")):
        WAYS |= {(_screen, _button, "clean", _target), (_screen, _button, "Cancel", STAYS),
                 (_screen, _button, "Yes, refused", STAYS), (_screen, _button, "Yes", _target),
                 (_screen, _button, "No", _target)}
ELSEWHERE = {
    ("frmSpell1", "", "no sound", "frmMenu1"): "test_manners.py, silent",
    ("frmMenu1", "frame", "", ENDS): "test_manners.py, idle",
    ("frmSpell1", "cmdExit", "end of the list", ENDS): "test_games.py, spelling and quiz",
}

QUESTION = "How many legs has a spider?"
QUIZ_LINE = QUESTION + "_four_six_eight_ten_3_"
REFUSED_WORD = "The spelling for the word cannot contain an underscore. "
REFUSED_NUMBER = "The number of the correct answer must be 1,2,3 or 4. "


# Menu, settings, the lock

def settings(walk):
    desk = walk.desk
    kept = (desk.application / "Set").read_bytes()
    walk.start()
    walk.help("frmMenu1", "cmdHelp", "Introduction.htm")
    ask = "Enter Password"
    walk.go("frmMenu1", "cmdCreate", STAYS, "wrong password", [(ask, "OK", "sesame"), ("Incorrect password", "OK")])
    walk.go("frmMenu1", "cmdCreate", STAYS, "empty password", [(ask, "OK")])
    walk.go("frmMenu1", "cmdCreate", STAYS, "password cancelled", [(ask, "Cancel", "Sesame")])
    walk.go("frmMenu1", "cmdCreate", "frmList", "right password", [(ask, "OK", "Sesame")])
    walk.go("frmList", "cmdMenu", "frmMenu1")
    walk.go("frmMenu1", "cmdSettings", "frmSettings")
    walk.help("frmSettings", "cmdHelp", "Settings1.htm")
    walk.go("frmSettings", "cmdback", "frmMenu1", "unchanged")
    walk.go("frmMenu1", "cmdSettings", "frmSettings")
    check(desk.text("frmSettings", "txtPassword") == "****", "the password is not masked")
    write(desk, "frmSettings", "txtPassword", "x")
    walk.go("frmSettings", "cmdSave", STAYS, "refused", [(DIFFERENT, "OK")])
    walk.go("frmSettings", "cmdback", STAYS, "Cancel", [("Save changes?", "Cancel")])
    walk.go("frmSettings", "cmdback", STAYS, "Yes, refused", [("Save changes?", "Yes"), (DIFFERENT, "OK")])
    walk.go("frmSettings", "cmdback", "frmMenu1", "No", [("Save changes?", "No")])
    check((desk.application / "Set").read_bytes() == kept, "the settings were written")
    walk.go("frmMenu1", "cmdSettings", "frmSettings")
    for box in ("txtPassword", "txtpassword2"):
        desk.click("frmSettings", box)
        desk.wait_control("frmSettings", box, ["focused"])
        desk.key("ctrl+a", "Delete")
    walk.go("frmSettings", "cmdSave", STAYS, "", [("Save successful", "OK")])
    check((desk.application / "Set").read_bytes() == b"No Intro\r\n\r\n", "the password was not taken away")
    walk.go("frmSettings", "cmdback", "frmMenu1", "unchanged")
    walk.go("frmMenu1", "cmdPlay", "frmNumPlayers1", "behind the settings")
    walk.go("frmNumPlayers1", "cmdback", "frmMenu1")
    walk.go("frmMenu1", "cmdCreate", "frmList", "no password")
    walk.go("frmList", "cmdMenu", "frmMenu1")
    walk.go("frmMenu1", "cmdSettings", "frmSettings")
    desk.click("frmSettings", "optIntro")
    walk.go("frmSettings", "cmdback", "frmMenu1", "Yes", [("Save changes?", "Yes"), ("Save successful", "OK")])
    check((desk.application / "Set").read_bytes() == b"Intro\r\n\r\n", "the introductions were not switched on")
    walk.go("frmMenu1", "cmdSettings", "frmSettings")
    check("checked" in desk.wait_control("frmSettings", "optNoIntro")["states"], "this run has changed its mind")
    desk.click("frmSettings", "cmdProperties")
    desk.wait_for("the keyboard in the characters' sheet", lambda: desk.call(
        "xdotool", "getactivewindow", "getwindowname").stdout.strip() == "Character Properties")
    desk.key("alt+F4")
    desk.wait_active("frmSettings")
    walk.seen("frmSettings", "cmdProperties", "", STAYS)
    walk.go("frmSettings", "cmdback", "frmMenu1", "unchanged")


def about(walk):
    desk = walk.desk
    walk.start()
    for way_out in ("cmdOK", "frame"):
        here = desk.mark()
        walk.go("frmMenu1", "cmdAbout", "frmAbout", stays_loaded=True)
        walk.go("frmAbout", way_out, "frmMenu1")
        check("screen: frmMenu1 unload" not in desk.lines(here), "the menu went with About")
    walk.go("frmMenu1", "cmdAbout", "frmAbout", stays_loaded=True)
    walk.to_front("frmMenu1")
    walk.go("frmMenu1", "Command1", ENDS, "About is open")
    walk.start_again()
    walk.go("frmMenu1", "cmdSettings", "frmSettings")
    write(desk, "frmSettings", "txtPassword", "x")
    walk.go("frmSettings", "frame", ENDS, "changed")
    check((desk.application / "Set").read_bytes() == b"No Intro\r\n\r\n", "the settings were written")
    walk.start_again()
    walk.go("frmMenu1", "Command1", ENDS)


# Setting up a game

def set_up(walk):
    desk = walk.desk
    missing = ("You haven't entered names for all of the players. If you have less than 2 players, click Back and change"
               " the number of players. Otherwise enter a name for each player.")
    walk.start()
    for control in ("cmdPlay", "Command3"):
        walk.go("frmMenu1", control, "frmNumPlayers1")
        walk.go("frmNumPlayers1", "cmdback", "frmMenu1")
    walk.go("frmMenu1", "cmdPlay", "frmNumPlayers1")
    walk.help("frmNumPlayers1", "cmdHelp", PLAYING)
    desk.click("frmNumPlayers1", "opt2")
    walk.go("frmNumPlayers1", "cmdNext", "frmPlayerNames1")
    walk.help("frmPlayerNames1", "cmdHelp", PLAYING)
    write(desk, "frmPlayerNames1", "txtPlayer_0", "Ann")
    walk.go("frmPlayerNames1", "cmdNext", STAYS, "a name is missing", [(missing, "OK")])
    walk.go("frmPlayerNames1", "cmdback", "frmNumPlayers1")
    check("checked" in desk.wait_control("frmNumPlayers1", "opt1")["states"], "one player is not offered again")
    walk.go("frmNumPlayers1", "cmdNext", "frmPlayerNames1")
    walk.go("frmPlayerNames1", "cmdMenu", "frmMenu1")
    walk.go("frmMenu1", "Command3", "frmNumPlayers1")
    walk.go("frmNumPlayers1", "cmdNext", "frmPlayerNames1")
    write(desk, "frmPlayerNames1", "txtPlayer_0", "Ann")
    walk.go("frmPlayerNames1", "cmdNext", "frmChooseList1", "all names")
    walk.help("frmChooseList1", "cmdHelp", PLAYING)
    walk.go("frmChooseList1", "cmdNext", STAYS, "nothing chosen", [("Please choose a spelling list", "OK")])
    here = desk.mark()
    walk.go("frmChooseList1", "cmdback", "frmPlayerNames1", stays_loaded=True)
    check(desk.text("frmPlayerNames1", "txtPlayer_0") == "", "the name is still there")
    write(desk, "frmPlayerNames1", "txtPlayer_0", "Bob")
    walk.go("frmPlayerNames1", "cmdNext", "frmChooseList1", "list screen is loaded")
    check(not [line for line in desk.lines(here) if re.match("screen: frmChooseList1 (un)?load", line)],
          "the list screen was loaded anew")
    walk.go("frmChooseList1", "cmdback", "frmPlayerNames1", stays_loaded=True)
    walk.go("frmPlayerNames1", "frame", "frmChooseList1", "list screen is loaded")
    walk.help_goes("frmChooseList1", "cmdHelp", PLAYING, lambda: walk.go("frmChooseList1", "cmdMenu", "frmMenu1"))


def too_many_players(walk):
    desk = walk.desk
    desk.set_up("s", ["Ann", "Bob", "Cid"], 0)
    end, _ = desk.wait(r'Merlin Speak "Hold it! We have a problem\. There are more players than we have questions', 0, 60)
    desk.wait(r'Genie Speak "Select a new list or select fewer players\.  You could also .*-> done', end, 60)
    desk.wait(r"screen: frmNumPlayers1 activate", end)
    desk.wait(r"screen: frmSpell1 unload", end)
    walk.seen("frmSpell1", "", "more players than questions", "frmNumPlayers1")
    desk.wait_active("frmNumPlayers1")
    time.sleep(1.5)
    check(not [said for said in desk.said(end) if "how do you spell" in said[1]], "a question was asked all the same")
    walk.go("frmNumPlayers1", "cmdback", "frmMenu1")


# Lists

HUB = [
    ("frmEdit", "cmdback", "cmdMenu", {"Spell": "cmdEditSpell", "Quiz": "cmdEditQuiz"}, LISTS),
    ("frmDelete", "cmdback", "cmdExit", {"Spell": "cdmDeleteSpell", "Quiz": "cmdDeleteQuiz"}, LISTS),
    ("frmExpList", "cmdback", "cmdExit", {"Spell": "cmdExportSpell", "Quiz": "cmdExportQuiz"}, TRANSFER),
    ("frmImpList", "cmdback", "cmdExit", {"Spell": "cmdImportSpell", "Quiz": "cmdImportQuiz"}, TRANSFER),
]


def hub(walk):
    desk = walk.desk
    walk.start()
    walk.go("frmMenu1", "cmdCreate", "frmList", "no password")
    walk.help("frmList", "cmdHelp", LISTS)
    for screen, back, home, buttons, topic in HUB:
        order = "unload first" if screen == "frmEdit" else "show first"
        for kind, button in buttons.items():
            walk.go("frmList", button, screen, kind, order=order)
            if kind == "Spell":
                walk.help(screen, "cmdHelp", topic)
            if screen in ("frmEdit", "frmDelete", "frmExpList"):
                name = {"Spell": "Sky", "Quiz": "Legs"}[kind]
                desk.wait_node(lambda node, name=name: node["name"] == name and node["role"] == "list item", name)
            walk.go(screen, back, "frmList", kind)
            walk.go("frmList", button, screen, kind, order=order)
            walk.go(screen, home, "frmMenu1", kind)
            walk.go("frmMenu1", "cmdCreate", "frmList", "no password")
    walk.go("frmList", "cmdMenu", "frmMenu1")


def enter(walk, screen):
    """From the hub to one of the four screens that make lists."""
    if screen in ("frmSpelling1", "frmQuiz1"):
        walk.go("frmList", {"frmSpelling1": "cmdNewSpell", "frmQuiz1": "cmdAddQuiz"}[screen], screen)
        return
    kind, button, name = {"frmEditSpell": ("Spell", "cmdEditSpell", "Sky"),
                          "frmEditQuiz": ("Quiz", "cmdEditQuiz", "Legs")}[screen]
    walk.go("frmList", button, "frmEdit", kind, order="unload first")
    choose_and_edit(walk, kind, screen, name)


def choose_and_edit(walk, kind, screen, name):
    desk = walk.desk
    desk.click_node(desk.wait_node(lambda node: node["name"] == name and node["role"] == "list item", name))
    walk.go("frmEdit", "cmdOK", screen, kind)


def home_to_hub(walk, target):
    """Back to the hub from where a way has led."""
    if target == "frmEdit":
        walk.desk.click("frmEdit", "cmdback")
    elif target == "frmMenu1":
        walk.desk.click("frmMenu1", "cmdCreate")
    walk.desk.wait_active("frmList")
    walk.desk.wait_control("frmList", "cmdMenu", ["enabled"])


def change(desk, screen, is_good):
    """Leaves something to be saved on a screen; when it is not good, saving is refused."""
    if screen == "frmSpelling1":
        write(desk, screen, "txtNew", "sun")
        desk.click(screen, "Command1")
        desk.wait_for("an empty box", lambda: desk.text(screen, "txtNew") == "")
    elif screen == "frmEditSpell":
        write(desk, screen, "txtASpell", "star" if is_good else "a_b")
    else:
        question, answers, correct = {"frmQuiz1": ("txtQuest", "txtAnsw_%d", "txtCorrect"),
                                      "frmEditQuiz": ("txtAQuestion", "txtAAnsw_%d", "txtACorrect")}[screen]
        write(desk, screen, question, "q")
        for number in range(4):
            write(desk, screen, answers % number, "abcd"[number])
        write(desk, screen, correct, "1" if is_good or screen == "frmQuiz1" else "7")
        if screen == "frmQuiz1":
            desk.click(screen, "cmdAdd")
            desk.wait_for("an empty box", lambda: desk.text(screen, "txtCorrect") == "")


def improve(desk, screen):
    """What was refused becomes good."""
    if screen in ("frmSpelling1", "frmQuiz1"):
        write(desk, screen, "txtName", "New")
        return
    box = {"frmEditSpell": "txtASpell", "frmEditQuiz": "txtACorrect"}[screen]
    desk.click(screen, box)
    desk.wait_control(screen, box, ["focused"])
    desk.key("ctrl+a")
    desk.type({"frmEditSpell": "star", "frmEditQuiz": "1"}[screen])


def writing(screen):
    """The journey through all ways out of one of the four screens that make lists."""
    home = {"frmSpelling1": "Command4", "frmQuiz1": "Command2"}.get(screen, "cmdMenu")
    back = {"frmSpelling1": "frmList", "frmQuiz1": "frmList"}.get(screen, "frmEdit")
    is_new = back == "frmList"
    ask = "Save list?" if is_new else "Save Changes?"
    refusal = {"frmSpelling1": "Please enter a name for this Quiz list", "frmQuiz1": "Please enter a name for this Quiz.",
               "frmEditSpell": REFUSED_WORD, "frmEditQuiz": REFUSED_NUMBER}[screen]
    saved = {"frmSpelling1": "Your list has been saved.", "frmQuiz1": "Your quiz has been saved."}.get(screen)
    taken = "There is already a list called New. Do you want to overwrite it with this list?"
    path = {"frmSpelling1": "Lists/New", "frmQuiz1": "QList/New", "frmEditSpell": "Lists/Sky", "frmEditQuiz": "QList/Legs"}[screen]
    help_pages = {key: page for name, key, page, leads in WAYS if name == screen and leads == HELPS}

    def journey(walk):
        desk = walk.desk
        file = desk.application / path
        walk.start()
        walk.go("frmMenu1", "cmdCreate", "frmList", "no password")
        for number, (button, target) in enumerate((("cmdback", back), (home, "frmMenu1"))):
            enter(walk, screen)
            if number == 0:
                for control, page in sorted(help_pages.items()):
                    walk.help(screen, control, page)
            walk.go(screen, button, target, "clean")
            home_to_hub(walk, target)

            enter(walk, screen)
            before = file.read_bytes() if file.exists() else None
            change(desk, screen, False)
            walk.go(screen, button, STAYS, "Cancel", [(ask, "Cancel")])
            walk.go(screen, button, STAYS, "Yes, refused", [(ask, "Yes"), (refusal, "OK")])
            check((file.read_bytes() if file.exists() else None) == before, "%s was written" % path)
            improve(desk, screen)
            answers = [(ask, "Yes")]
            if is_new and number == 1:
                walk.go(screen, button, STAYS, "Yes, refused", answers + [(taken, "No")])
                answers.append((taken, "Yes"))
            if saved:
                answers.append((saved, "OK"))
            walk.go(screen, button, target, "Yes", answers)
            check(file.read_bytes() == EXPECTED[screen][number], "%s holds %r" % (path, file.read_bytes()))
            home_to_hub(walk, target)

            enter(walk, screen)
            change(desk, screen, True)
            walk.go(screen, button, target, "No", [(ask, "No")])
            check(file.read_bytes() == EXPECTED[screen][number], "%s was written at No" % path)
            home_to_hub(walk, target)

    return journey


SKY, LEGS, ADDED = b"sun\r\nmoon\r\n", (QUIZ_LINE + "\r\n").encode(), b"q_a_b_c_d_1_\r\n"
EXPECTED = {
    "frmSpelling1": [b"sun\r\n", b"sun\r\n"],
    "frmQuiz1": [ADDED, ADDED],
    "frmEditSpell": [SKY + b"star\r\n", SKY + b"star\r\nstar\r\n"],
    "frmEditQuiz": [LEGS + ADDED, LEGS + ADDED + ADDED],
}


def choosing(walk):
    """What to edit has to be chosen; and leaving while Merlin says a word."""
    desk = walk.desk
    walk.start()
    walk.go("frmMenu1", "cmdCreate", "frmList", "no password")
    for kind, button, message in (
            ("Spell", "cmdEditSpell", "Select a spelling list by clicking on the name of the list."),
            ("Quiz", "cmdEditQuiz", "Select a quiz by clicking on the name of the list.")):
        walk.go("frmList", button, "frmEdit", kind, order="unload first")
        walk.go("frmEdit", "cmdOK", STAYS, kind + ", nothing chosen", [(message, "OK")])
        walk.go("frmEdit", "cmdback", "frmList", kind)
    walk.go("frmList", "cmdNewSpell", "frmSpelling1")
    write(desk, "frmSpelling1", "txtNew", "encyclopaedia and more")
    leave_while_said(walk, "frmSpelling1", "cmdTestit", "cmdback", "frmList")
    walk.go("frmList", "cmdEditSpell", "frmEdit", "Spell", order="unload first")
    choose_and_edit(walk, "Spell", "frmEditSpell", "Sky")
    row = desk.wait_node(lambda node: node["role"] == "table cell" and node["name"] == "sun", "sun")
    desk.click_node(row)
    desk.click_node(row)
    desk.wait_for("sun in the box", lambda: desk.text("frmEditSpell", "txtESpell") == "sun")
    leave_while_said(walk, "frmEditSpell", "cmdETest", "cmdMenu", "frmMenu1")


def leave_while_said(walk, screen, test, button, target):
    desk = walk.desk
    here = desk.mark()
    desk.click(screen, test)
    desk.wait(r'Merlin Speak "\\Map=.*-> running', here, 40)
    walk.go(screen, button, target, "the word is being said")
    expect_silence(desk, here)


# Introductions

FIRST = ('Merlin Speak "Hello, Merlin is here !" -> running', 'Merlin Speak "I don\'t know where Genie and Peedy are right')
SECOND = ('Merlin Speak "Hello there, it\'s Merlin here" -> running', 'Merlin Speak "And its a lot a fun!" -> running')


def introduction(last, moments):
    """The journey that leaves one of the introductions by several ways, each at a moment of its own."""
    def journey(walk):
        desk = walk.desk
        begin = 0
        for number, (control, target, moment) in enumerate(moments):
            (desk.application / "Lintro").write_bytes(last)
            if number == 0:
                walk.start()
            else:
                begin = walk.start_again()
            condition = "introduction" if moment else "introduction awaited"
            if moment:
                desk.wait(re.escape(moment) if "->" in moment else re.escape(moment) + ".* -> running", begin, 90)
            here = desk.mark()
            if control == "cmdAbout":
                walk.go("frmMenu1", control, target, condition, stays_loaded=True)
                desk.wait(r"agent: \d+ Merlin Speak .* -> running", here, 30)
                walk.go("frmAbout", "cmdOK", "frmMenu1")
                walk.go("frmMenu1", "Command1", ENDS, "introduction")
                continue
            walk.go("frmMenu1", control, target, condition)
            if target == ENDS:
                continue
            expect_silence(desk, here)
            if not moment:
                check(not desk.said(begin), "the introduction began all the same")
            walk.close(target)
    return journey


def expect_silence(desk, since):
    """Nobody says or does anything any more."""
    time.sleep(1)
    here = desk.mark()
    time.sleep(1.2)
    moving = [line for line in desk.lines(here) if line.startswith(("agent:", "mouth:"))]
    check(not moving, "somebody goes on: %r" % moving)
    check(all(end is not None for *_, end in desk.said(since)), "somebody is still speaking")


# Games

def five_spellers(walk):
    """Five children spell, most of them well, and somebody closes the window during the fireworks."""
    desk = walk.desk
    names = ["Ann", "Bob", "Cid", "Dot", "Eve"]
    desk.set_up("s", names, 0)
    walk.seen("frmChooseList1", "cmdNext", "a list", "frmSpell1")
    end = 0
    for turn, name in enumerate(names):
        end, match = desk.wait(r'agent: \d+ (\w+) Speak "%s, how do you spell: \\map="(\w+)".* -> running' % name, end, 60)
        check(match.group(1) == ("Merlin", "Genie", "Peedy")[turn % 3], "%s asks out of turn" % match.group(1))
        desk.wait_control("frmSpell1", "cmdGo", ["enabled"])
        if turn == 0:
            walk.help("frmSpell1", "cmdHelp", PLAYING)
            desk.click("frmSpell1", "txtAnswer")
        if name == "Bob":
            desk.type("x")
        else:
            desk.type(match.group(2))
        desk.key("Return")
        if name == "Bob":
            end, _ = desk.wait(r'Speak "Sorry Bob\." -> running', end)
        else:
            end, _ = desk.wait(r'Speak "[^"]* %s\." -> running' % name, end, 60)
    board = "".join("%s    %d out of 1 %d%%\n" % (name, right, 100 * right)
                    for name, right in (("Ann", 1), ("Cid", 1), ("Dot", 1), ("Eve", 1), ("Bob", 0)))
    desk.wait_for("the board", lambda: desk.text("frmSpell1", "txtScore") == board, lambda: desk.text("frmSpell1", "txtScore"))
    for name, right in (("Ann", 1), ("Cid", 1), ("Dot", 1), ("Eve", 1), ("Bob", 0)):
        end, _ = desk.wait(r'Merlin Speak "%s, you scored %d out of 1\. " -> running' % (name, right), end, 60)
    desk.wait(r"media: Play", end, 90)
    time.sleep(2)
    check(not desk.control("frmSpell1", "cmdExit"), "there is a button in the fireworks")
    walk.go("frmSpell1", "frame", ENDS, "fireworks")


def five_guessers(walk):
    """Five children answer wrong, play again, and leave in the opening."""
    desk = walk.desk
    names = ["Ann", "Bob", "Cid", "Dot", "Eve"]
    desk.set_up("q", names, 0)
    walk.seen("frmChooseList1", "cmdNext", "a quiz", "frmSpell1")
    end = 0
    for name in names:
        end, match = desk.wait(r'agent: \d+ \w+ Speak "%s, Which is (\d)\?" -> done' % name, end, 60)
        desk.wait_control("frmSpell1", "cmdGo", ["enabled"])
        wrong = {"1": "2"}.get(match.group(1), "1")
        desk.click_node(desk.wait_node(lambda node, wrong=wrong: node["role"] == "list item" and node["name"] == "n" + wrong,
                                       "an answer"))
        desk.key("Return")
        end, _ = desk.wait(r'Speak "The correct answer was n%s\." -> running' % match.group(1), end)
    for name in names:
        end, _ = desk.wait(r'Merlin Speak "%s, you scored 0 out of 1\. " -> running' % name, end, 60)
    desk.wait(r'Genie Speak "If you want to play this list again.*-> done', end, 60)
    check(not [line for line in desk.lines() if line.startswith("media: Play")], "fireworks for nothing")
    desk.wait_control("frmSpell1", "cmdAgain", ["enabled"])
    here = desk.mark()
    walk.go("frmSpell1", "cmdAgain", STAYS, "end of the list")
    desk.wait(r'Merlin Speak "Here we go\. Get ready to play Five\." -> running', here)
    exit_game(walk, "opening")


def exit_game(walk, condition):
    """Leaves a game by its button: everybody says good-bye whatever was going on."""
    desk = walk.desk
    here = desk.mark()
    walk.go("frmSpell1", "cmdExit", ENDS, condition, limit=60)
    spoken = [text for _, text, _, _ in desk.said(here)]
    check(spoken == ["Sorry you have to go. Bye now.", "See you next time."], "the farewell is %r" % spoken)


def lone_speller(walk):
    """One child tries again, takes a hint, passes, hears the list to its end and goes home."""
    desk = walk.desk
    desk.set_up("s", ["Ann"], 0)
    end, match = desk.wait(r'Speak "Ann, how do you spell: \\map="(\w+)".* -> running', 0, 60)
    desk.wait_control("frmSpell1", "cmdGo", ["enabled"])
    desk.type("x")
    desk.key("Return")
    end, _ = desk.wait(r'Speak "Sorry Ann\. Try again" -> running', end, 30)
    desk.click("frmSpell1", "cmdHint")
    end, _ = desk.wait(r'Speak "The first letter of \\map="%s"="\*\*\*\*\*"\\ is: %s\." -> running'
                       % (match.group(1), match.group(1)[0].upper()), end, 30)
    desk.type(match.group(1))
    desk.key("Return")
    end, _ = desk.wait(r'Merlin Play "Congratulate(_2)?" -> running', end, 30)
    end, _ = desk.wait(r'Speak "Ann, how do you spell: .* -> running', end, 60)
    desk.wait_control("frmSpell1", "cmdPass", ["enabled"])
    desk.click("frmSpell1", "cmdPass")
    end, _ = desk.wait(r'Merlin Speak "Ann, you scored 1 out of 2\. " -> running', end, 60)
    desk.wait(r'Genie Speak "If you want to play this list again.*-> done', end, 60)
    desk.wait_control("frmSpell1", "cmdNew", ["enabled"])
    walk.go("frmSpell1", "cmdNew", "frmMenu1", "end of the list")
    here = desk.mark()
    time.sleep(5)
    check(not desk.said(here), "something is said at the menu")


def leaving(control, condition, moment):
    """The journey that leaves a game of one word at the moment of that line, by the button or by closing the window."""
    def journey(walk):
        desk = walk.desk
        desk.set_up("s", ["Ann"], 0)
        if condition in ("opening", "question", "farewell"):
            desk.wait(moment, 0, 60)
        else:
            end, _ = desk.wait(r'Speak "Ann, how do you spell: .* -> running', 0, 60)
            desk.wait_control("frmSpell1", "cmdGo", ["enabled"])
            if condition == "praise":
                desk.type("sun")
                desk.key("Return")
            else:
                desk.click("frmSpell1", "cmdPass")
            desk.wait(moment, end, 60)
        if condition == "farewell":
            here = desk.mark()
            desk.click("frmSpell1", "cmdExit")
            desk.wait(r'Merlin Speak "Sorry you have to go\. Bye now\." -> running', here)
        if control == "cmdExit":
            exit_game(walk, condition)
        else:
            walk.go("frmSpell1", "frame", ENDS, condition)
    return journey


def write(desk, screen, box, text):
    desk.click(screen, box)
    desk.wait_control(screen, box, ["focused"])
    desk.type(text)


WORD = {"lists": {"One": ["sun"]}}
SPELL = {"lists": {"Sky": ["sun", "moon"]}, "quizzes": {"Legs": [QUIZ_LINE]}}
CLOSING = (r'agent: \d+ \w+ Speak "(That\'s it\. You finished|That was the last|That\'s the end|You are a champion).*'
           r'-> running')
QUESTIONS = ["Which is %d?_n1_n2_n3_n4_%d_" % (number % 4 + 1, number % 4 + 1) for number in range(5)]
INTRO = {"settings": ("Intro", ""), "lists": {"Sky": ["sun"]}}

# The longest first.
JOURNEYS = {
    "five spellers": (five_spellers, {"lists": {"Five": ["sun", "moon", "star", "sky", "wind"]}, "speaking_rate": QUICKLY}),
    "five guessers": (five_guessers, {"quizzes": {"Five": QUESTIONS}, "speaking_rate": QUICKLY}),
    "first introduction": (introduction(b"0", [
        ("cmdSettings", "frmSettings", FIRST[1]), ("cmdPlay", "frmNumPlayers1", FIRST[0]), ("cmdAbout", "frmAbout", FIRST[0]),
        ("cmdPlay", "frmNumPlayers1", "")]), INTRO),
    "second introduction": (introduction(b"1", [
        ("cmdCreate", "frmList", SECOND[1]), ("Command3", "frmNumPlayers1", SECOND[0]), ("frame", ENDS, SECOND[0])]), INTRO),
    "lone speller": (lone_speller, {"lists": {"Two": ["sun", "moon"]}, "speaking_rate": QUICKLY}),
    "editing a quiz": (writing("frmEditQuiz"), dict(SPELL, sound=False)),
    "a new quiz": (writing("frmQuiz1"), dict(SPELL, sound=False)),
    "hub": (hub, dict(SPELL, sound=False)),
    "settings": (settings, {"settings": ("No Intro", "Sesame"), "sound": False}),
    "leaving the scores": (leaving("cmdExit", "scores are read", r'Merlin Speak "Ann, you scored .*-> running'), WORD),
    "leaving the praise": (leaving("cmdExit", "praise", r'Speak "[^"]* Ann\." -> running'), WORD),
    "leaving the closing lines": (leaving("cmdExit", "closing lines", CLOSING), WORD),
    "closing the closing lines": (leaving("frame", "closing lines", CLOSING), WORD),
    "leaving a question": (leaving("cmdExit", "question", r'Speak "Ann, how do you spell: .* -> running'), WORD),
    "closing the farewell": (leaving("frame", "farewell", r'Speak "Ann, how do you spell: .* -> running'), WORD),
    "too many players": (too_many_players, {"lists": {"Two": ["sun", "moon"]}, "speaking_rate": QUICKLY}),
    "editing a list": (writing("frmEditSpell"), dict(SPELL, sound=False)),
    "a new list": (writing("frmSpelling1"), dict(SPELL, sound=False)),
    "set-up": (set_up, {"quizzes": {"Legs": [QUIZ_LINE]}, "sound": False}),
    "choosing": (choosing, SPELL),
    "about": (about, {"sound": False}),
    "closing the opening": (leaving("frame", "opening", r'Merlin Speak "Good luck!" -> running'), WORD),
}


def run(application, failures, wanted):
    ways, said, failed = set(), threading.Lock(), []

    def journey(name):
        work, content = JOURNEYS[name]
        begin = time.monotonic()
        outcome = "passed: %s" % name
        try:
            with Desktop(application, effects=False, **content) as desk:
                try:
                    work(Walk(desk, ways))
                except Exception:
                    failures.mkdir(parents=True, exist_ok=True)
                    file = failures / ("journey-" + name.replace(" ", "-"))
                    desk.picture(file.with_suffix(".png"))
                    file.with_suffix(".txt").write_text("\n".join(desk.lines()))
                    raise
        except Exception as failure:  # pylint: disable=broad-except
            outcome = "FAILED: %s: %s" % (name, failure)
            failed.append(name)
        with said:
            print("%s, %.0f s" % (outcome, time.monotonic() - begin), flush=True)

    with concurrent.futures.ThreadPoolExecutor(AT_ONCE) as pool:
        list(pool.map(journey, wanted or JOURNEYS))
    if wanted:
        return 1 if failed else 0
    missing = WAYS - ways - set(ELSEWHERE)
    unknown = ways - WAYS
    for text, found in (("not walked", missing), ("not in the graph", unknown)):
        for screen, control, condition, target in sorted(found):
            print("%s: %s.%s (%s) -> %s" % (text, screen, control, condition, target))
    print("%d of %d ways walked, %d in other tests" % (len(WAYS & ways), len(WAYS), len(ELSEWHERE)))
    return 1 if failed or missing or unknown else 0


if __name__ == "__main__":
    sys.exit(run(Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3:]))
