#!/usr/bin/python3
"""Plays both games in the real program with mouse and keyboard, by its trace: test_games.py APPLICATION FAILURES."""

import re
import sys
import time
from pathlib import Path

from desk import SILENCE, Failure, run_each

SPEAKERS = ["Merlin", "Genie", "Peedy"]
PRAISES = [
    "Good answer ", "Difficult, I didn't know that one myself ", "Very good ", "You got that one right ", "Excellent ",
    "That's correct ", "What a good answer ", "You're so clever. That was a hard one ",
    "That's correct. You made that one look easy ", "Correct. You're too good ", "That's another point to you ",
    "Well done ", "That's right ", "You're right ", "You're so smart ", "Congratulations ",
    "You're not just a pretty face ", "Cute and clever too ",
]
WORDS = {"Four Words": ["sun", "knight_nite", "star", "moon"]}
QUIZ = {
    "Three Questions": [
        "How many legs has a spider?_Four_Six_Eight_Ten_3_",
        "What colour is a ripe banana?_Yellow_Blue_Pink_Purple_1_",
        "How many days are there in a week?_Five_Six_Eight_Seven_4_",
    ]
}


def check(truth, what):
    if not truth:
        raise Failure(what)


def same(actual, expected, what):
    check(actual == expected, "%s is %r, expected %r" % (what, actual, expected))


def spoken_next(desk, since):
    """The next line that begins to be said behind `since`: the index behind it, the speaker, the text."""
    index, match = desk.wait(r'agent: \d+ (\w+) Speak "(.*)" -> running', since, 60)
    return index + 1, match.group(1), match.group(2)


def expect_spoken(desk, since, who, text):
    index, speaker, said = spoken_next(desk, since)
    same((speaker, said), (who, text), "what is said")
    return index


def expect_praise(desk, since, who, name):
    index, speaker, said = spoken_next(desk, since)
    same(speaker, who, "who praises")
    check(said in ["%s %s." % (phrase, name) for phrase in PRAISES], "%r is no praise" % said)
    return index


def expect_buttons(desk, live):
    """Compares which answer and game buttons are live, as a screen reader finds them."""
    for name in ("cmdGo", "cmdReplay", "cmdPass", "cmdNew", "cmdAgain"):
        desk.wait_for("%s is %s" % (name, "live" if name in live else "dead"),
                      lambda name=name: desk.is_live("frmSpell1", name) == (name in live))


def expect_board(desk, text):
    """Compares the score panel, line by line."""
    desk.wait_for("the board %r" % text, lambda: desk.text("frmSpell1", "txtScore") == text,
                  lambda: desk.text("frmSpell1", "txtScore"))


def board(scores):
    """The board of several players, the best rate first."""
    def rate(name):
        right, asked = scores[name]
        return round(100 * right / asked) if asked else 0

    names = sorted(scores, key=lambda name: -rate(name))
    return "".join("%s    %d out of %d %d%%\n" % (name, *scores[name], rate(name)) for name in names)


def expect_opening(desk, name, since=0):
    end = expect_spoken(desk, since, "Merlin", "Here we go. Get ready to play %s." % name)
    return expect_spoken(desk, end, "Merlin", "Good luck!")


def expect_sound(desk):
    """Speech is heard while the trace says so, and the sink is silent while nothing is said."""
    speeches = [speech for speech in desk.said() if speech[3] is not None]
    check(len(speeches) >= 5, "too few lines were said")
    for who, text, begin, end in speeches:
        check(desk.loudness(begin + 0.1, end) > 4 * SILENCE, "%s is not heard saying %r" % (who, text))
    for (_, text, _, end), (_, _, begin, _) in zip(speeches, speeches[1:]):
        if begin - end > 0.7:
            check(desk.loudness(end + 0.3, begin - 0.1) < SILENCE, "there is sound behind %r" % text)


def expect_farewell(desk, since):
    desk.click("frmSpell1", "cmdExit")
    end, _ = desk.wait(r'Merlin Speak "Sorry you have to go\. Bye now\." -> running', since)
    for who in SPEAKERS:
        desk.wait(r'%s Play "Wave" -> running' % who, end)
    desk.wait(r'Peedy Speak "See you next time\." -> done', end)
    same(desk.wait_end(), 0, "the exit code")


def spelling(desk):
    names = ["Ann", "Bob"]
    desk.set_up("s", names, 0)
    end = expect_opening(desk, "Four Words")
    scores = {name: [0, 0] for name in names}
    expect_board(desk, "")
    for turn in range(4):
        who, name = SPEAKERS[turn % 3], names[turn % 2]
        end, speaker, said = spoken_next(desk, end)
        same(speaker, who, "who asks")
        match = re.fullmatch(re.escape(name) + r', how do you spell: \\map="(\w+)"="\*\*\*\*\*"\\\?', said)
        check(match, "%r is no question for %s" % (said, name))
        word = {"nite": "knight"}.get(match.group(1), match.group(1))
        scores[name][1] += 1
        check(("agent: 0 %s Balloon.Visible False -> done" % who) in desk.lines(), "the balloon was not kept off")
        desk.wait(r'%s Speak "%s, how.*-> done' % (who, name), end - 1)
        expect_buttons(desk, {"cmdGo", "cmdReplay", "cmdPass"})
        if turn in (0, 3):  # right
            scores[name][0] += 1
            desk.type(word.upper() if turn else word)
            same(desk.text("frmSpell1", "txtAnswer"), word.upper() if turn else word, "the answer box")
            desk.key("Return")
            desk.wait(r'Merlin Play "Congratulate(_2)?" -> running', end)
            expect_buttons(desk, set())
            end = expect_praise(desk, end, who, name)
        elif turn == 1:  # wrong
            desk.type(word + "x")
            desk.click("frmSpell1", "cmdGo")
            end = expect_spoken(desk, end, who, "Sorry %s." % name)
            end = expect_spelled_out(desk, end, who, word)
        else:  # passed
            desk.click("frmSpell1", "cmdPass")
            end = expect_spoken(desk, end, who, "You passed on that one %s" % name)
            end = expect_spelled_out(desk, end, who, word)
        expect_board(desk, board(scores))
    desk.wait(r'Genie Speak "If you want to play this list again.*-> done', end, 60)
    expect_buttons(desk, {"cmdNew", "cmdAgain"})
    same(scores, {"Ann": [1, 2], "Bob": [1, 2]}, "the scores")
    expect_sound(desk)
    expect_farewell(desk, desk.mark())


def expect_spelled_out(desk, end, who, word):
    end = expect_spoken(desk, end, who, "The correct spelling for %s is" % word)
    letters = "".join(letter + ", ," for letter in word.upper())
    return expect_spoken(desk, end, who, '\\map="%s"="%s"\\' % (letters, word))


def quiz(desk):
    lines = {line.split("_")[0]: line.split("_") for line in QUIZ["Three Questions"]}
    desk.set_up("q", ["Eve"], 0)
    end = expect_opening(desk, "Three Questions")
    correct = 0
    for turn in range(3):
        who = SPEAKERS[turn]
        end, speaker, said = spoken_next(desk, end)
        same(speaker, who, "who asks")
        fields = lines.get(said.removeprefix("Eve, "))
        check(fields, "%r is no question" % said)
        desk.wait(r'%s Speak "Eve, .*-> done' % who, end - 1)
        right = int(fields[5])
        chosen = right if turn != 1 else right % 4 + 1
        desk.click_node(desk.wait_node(lambda node: node["role"] == "list item" and node["name"] == fields[chosen],
                                       "the answer %r" % fields[chosen]))
        if turn == 0:
            desk.click("frmSpell1", "cmdGo")
        else:
            desk.key("Return")
        if chosen == right:
            desk.wait(r'Merlin Play "Congratulate(_2)?" -> running', end)
            correct += 1
            end = expect_praise(desk, end, who, "Eve")
        else:
            end = expect_spoken(desk, end, who, "Sorry Eve.")
            end = expect_spoken(desk, end, who, "The correct answer was %s." % fields[right])
        expect_board(desk, "Eve    %d out of %d\n" % (correct, turn + 1))
    desk.wait(r'Genie Speak "If you want to play this list again.*-> done', end, 60)
    expect_sound(desk)
    expect_farewell(desk, desk.mark())


def run(application, failures):
    # Without effects, so that only speech is heard.
    return run_each(application, failures, [
        ("spelling", spelling, dict(size=(1024, 768), effects=False, lists=WORDS)),
        ("quiz", quiz, dict(size=(800, 600), effects=False, quizzes=QUIZ)),
    ], at_once=2)


if __name__ == "__main__":
    sys.exit(run(Path(sys.argv[1]), Path(sys.argv[2])))
