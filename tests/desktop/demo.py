#!/usr/bin/python3
"""Lets the game play by itself for a minute and leaves pictures and a film: demo.py APPLICATION-FOLDER OUTPUT-FOLDER."""

import sys
import time
from pathlib import Path

from desk import Desktop

LIST = {"Bright Words": ["sun", "knight_nite", "star", "moon"]}


def asked_word(desk, since):
    """Waits until a word is asked and gives the index behind it, and the word."""
    index, match = desk.wait(r'how do you spell: \\map="(\w+)"="\*+"\\\?" -> running', since, 60)
    spoken = match.group(1)
    return index + 1, {"nite": "knight"}.get(spoken, spoken)


def play(application, output):
    output.mkdir(parents=True, exist_ok=True)
    with Desktop(application, lists=LIST) as desk:
        desk.wait(r"screen: frmMenu1 activate")
        time.sleep(1)
        desk.film(output / "demo.mp4")
        time.sleep(1.5)
        desk.picture(output / "1-menu.png")
        desk.set_up("s", ["Ann", "Bob"], 0)
        desk.wait(r'Speak "Here we go\. .*-> running')
        time.sleep(1.5)
        desk.picture(output / "2-opening.png")
        end, word = asked_word(desk, 0)
        time.sleep(1.5)
        desk.picture(output / "3-question.png")
        for letter in word:
            desk.type(letter)
            time.sleep(0.25)
        desk.picture(output / "4-answer.png")
        desk.key("Return")
        desk.wait(r"Play \"Congratulate", end)
        time.sleep(0.7)
        desk.picture(output / "5-cheer.png")
        desk.wait(r'Speak ".*  Ann\." -> running', end)
        time.sleep(1)
        desk.picture(output / "6-praise.png")
        end, word = asked_word(desk, end)
        time.sleep(2.5)
        desk.type(word[::-1] + "x")
        desk.click("frmSpell1", "cmdGo")
        desk.wait(r'Speak "Sorry Bob\." -> running', end)
        desk.wait(r'Speak "\\map=.*-> running', end)
        time.sleep(1)
        desk.picture(output / "7-spelled-out.png")
        end, word = asked_word(desk, end)
        time.sleep(2.5)
        desk.picture(output / "8-scores.png")
        desk.click("frmSpell1", "cmdExit")
        desk.wait(r'Speak "See you next time\." -> running', end)
        time.sleep(0.6)
        desk.picture(output / "9-farewell.png")
        code = desk.wait_end()
        desk.stop_film()
        for who, text, begin, stop in desk.said():
            if stop is not None:
                print("%-7s %s" % (who, text))
        return code


if __name__ == "__main__":
    sys.exit(play(Path(sys.argv[1]), Path(sys.argv[2])))
