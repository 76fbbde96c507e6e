#!/usr/bin/python3
"""A whole evening with the real program, filmed and checked by its trace.

test_evening.py APPLICATION OUTPUT [WIDTHxHEIGHT]: on a display of 1024x768 unless another size is given.
"""

import re
import sys
import time
from pathlib import Path

from desk import Desktop
from test_games import (
    SPEAKERS, check, expect_board, expect_buttons, expect_opening, expect_praise, expect_spelled_out, expect_spoken, same,
    spoken_next,
)

TRANSCRIPTS = Path(__file__).resolve().parents[1] / "data/transcripts"
WORDS = {"Two Words": ["sun", "moon"]}
QUIZ = {"Two Questions": ["How many legs has a spider?_Four_Six_Eight_Ten_3_",
                          "What colour is a ripe banana?_Yellow_Blue_Pink_Purple_1_"]}
PLAYERS = ["Ann", "Bob"]
OFFER = "If you want to play this list again just click Play Again, or you can play a new game."
CLOSINGS = [
    "That's it. You finished the list. Well Done!", "That was the last question.",
    "That's the end of the list. You did a great job!", "That's the end of the list. Well Done!",
    "You are champions! The list is finished.", "You've finished the list! Good job.",
    "You are a champion! The list is finished.",
]


def without_places(line):
    """Places depend on the display."""
    return re.sub(r"(MoveTo) .*", r"\1", line)


def transcript(name):
    """What the characters and the player of clips are asked, by a transcript of the tests."""
    lines = (TRANSCRIPTS / (name + ".txt")).read_text(encoding="utf-8").splitlines()
    return [without_places(line) for line in lines if line and not line.startswith((". ", "screen "))]


def asked(desk, since):
    """The same of the real program."""
    found = []
    for line in desk.lines(since):
        request = re.match(r"agent: (\d+) (\w+ .*) -> (queued|running|done|failed|interrupted)( -?\d+)?$", line)
        if request and (request.group(1) == "0" or request.group(3) == "queued"):
            found.append(without_places(request.group(2)))
        elif re.match(r"media: (ZOrder|Visible|Play|FileName)", line):
            found.append(line.replace(":", "", 1))
    return found


def expect_asked(desk, since, name):
    """Somewhere behind `since` all of a transcript was asked, one behind the other."""
    wanted, found = transcript(name), asked(desk, since) + [""]
    best = 0
    for begin in range(len(found)):
        same_lines = 0
        while same_lines < len(wanted) and found[begin + same_lines] == wanted[same_lines]:
            same_lines += 1
        if same_lines == len(wanted):
            return
        if same_lines >= best:
            best, instead = same_lines, found[begin + same_lines]
    same(instead, wanted[best], "line %d of %s" % (best + 1, name))


def asked_word(desk, end, turn):
    """Waits until the word of that turn has been asked; gives the index behind it, the player and the word."""
    end, who, said = spoken_next(desk, end)
    same(who, SPEAKERS[turn % 3], "who asks")
    player = PLAYERS[turn % 2]
    match = re.fullmatch(player + r', how do you spell: \\map="(\w+)"="\*\*\*\*\*"\\\?', said)
    check(match, "%r is no question for %s" % (said, player))
    desk.wait(r'%s Speak "%s, how.*-> done' % (who, player), end - 1)
    return end, player, match.group(1)


def expect_closing(desk, end):
    end, _, said = spoken_next(desk, end)
    check(said in CLOSINGS, "%r closes no list" % said)
    return end


def introduction(desk, take):
    desk.wait(r'Merlin Speak "Hello, Merlin is here !" -> running', 0, 60)
    take("introduction")
    desk.wait(r'Peedy Speak "What was that terrible noise!" -> running', 0, 120)
    take("sleepers-awake")
    desk.wait(r'Genie Speak "To play a Quiz, press\. .*-> done', 0, 180)
    expect_asked(desk, 0, "introduction-one")


def perfect_game(desk, take):
    since = desk.mark()
    desk.set_up("s", PLAYERS, 0)
    end = expect_opening(desk, "Two Words", since)
    for turn, score in enumerate(["Ann    1 out of 1 100%\nBob    0 out of 0 0%\n",
                                  "Ann    1 out of 1 100%\nBob    1 out of 1 100%\n"]):
        end, player, word = asked_word(desk, end, turn)
        desk.type(word)
        desk.key("Return")
        desk.wait(r'Merlin Play "Congratulate(_2)?" -> running', end)
        take("cheer-%s" % player)
        end = expect_praise(desk, end, SPEAKERS[turn], player)
        expect_board(desk, score)
    closing = expect_closing(desk, end)
    for player in PLAYERS:
        closing, _ = desk.wait(r'Merlin Speak "%s, you scored 1 out of 1\. " -> running' % player, closing)
    start, _ = desk.wait(r"media: Play", closing, 120)
    began = desk.trace[start][0]
    shown, _ = desk.wait(r"media: .*first picture after", start, 10)
    check(desk.trace[shown][0] - began < 0.3, "the clip is late by %.2f s" % (desk.trace[shown][0] - began))
    for name in ("cmdExit", "cmdHelp", "cmdNew", "txtScore"):
        check(not desk.control("frmSpell1", name), "%s is seen during the fireworks" % name)
    for picture in range(4):
        time.sleep(3)
        take("fireworks-%d" % (picture + 1))
    check(desk.loudness(began + 1, began + 12) > 200, "the fireworks are not heard")
    end, _ = desk.wait(r'Genie Speak "Sure was\. %s" -> done' % re.escape(OFFER), start, 120)
    # Where there is little room, everybody takes another place for them.
    expect_asked(desk, closing, "fireworks-800" if desk.size[0] == 800 else "fireworks")
    expect_buttons(desk, {"cmdNew", "cmdAgain"})
    expect_board(desk, "Ann    1 out of 1 100%\nBob    1 out of 1 100%\n")
    take("the-stage-is-back")


def game_with_mistakes(desk, take):
    since = desk.mark()
    desk.click("frmSpell1", "cmdAgain")
    end = expect_opening(desk, "Two Words", since)
    expect_board(desk, "")
    end, player, word = asked_word(desk, end, 0)
    desk.type(word[::-1])
    desk.key("Return")
    end = expect_spoken(desk, end, "Merlin", "Sorry %s." % player)
    end = expect_spelled_out(desk, end, "Merlin", word)
    end, player, word = asked_word(desk, end, 1)
    desk.click("frmSpell1", "cmdPass")
    end = expect_spoken(desk, end, "Genie", "You passed on that one %s" % player)
    end = expect_spelled_out(desk, end, "Genie", word)
    expect_board(desk, "Ann    0 out of 1 0%\nBob    0 out of 1 0%\n")
    desk.wait(r'Genie Speak "%s" -> done' % re.escape(OFFER), expect_closing(desk, end), 120)
    take("offer")


def quiz_with_mistakes(desk, take):
    since = desk.mark()
    desk.click("frmSpell1", "cmdNew")
    desk.wait(r"screen: frmSpell1 unload", since)
    desk.set_up("q", ["Eve"], 0, since)
    end = expect_opening(desk, "Two Questions", since)
    lines = {line.split("_")[0]: line.split("_") for line in QUIZ["Two Questions"]}
    for turn in range(2):
        end, who, said = spoken_next(desk, end)
        same(who, SPEAKERS[turn], "who asks")
        fields = lines[said.removeprefix("Eve, ")]
        desk.wait(r'%s Speak "Eve, .*-> done' % who, end - 1)
        right = int(fields[5])
        chosen = right % 4 + 1 if turn == 0 else right
        desk.click_node(desk.wait_node(lambda node: node["role"] == "list item" and node["name"] == fields[chosen],
                                       "the answer %r" % fields[chosen]))
        take("quiz-%d" % (turn + 1))
        desk.click("frmSpell1", "cmdGo")
        if turn == 0:
            end = expect_spoken(desk, end, who, "Sorry Eve.")
            end = expect_spoken(desk, end, who, "The correct answer was %s." % fields[right])
        else:
            end = expect_praise(desk, end, who, "Eve")
    end = expect_closing(desk, end)
    desk.wait(r'Merlin Speak "Eve, you scored 1 out of 2\. " -> running', end, 60)
    desk.wait(r'Genie Speak "%s" -> done' % re.escape(OFFER), end, 120)


def going_home(desk, take):
    since = desk.mark()
    desk.click("frmSpell1", "cmdNew")
    desk.wait(r"screen: frmMenu1 activate", since)
    take("menu")
    time.sleep(6)  # longer than the menu waits for an introduction
    check(not desk.said(since), "something is said at the menu")
    desk.click("frmMenu1", "Command1")
    same(desk.wait_end(), 0, "the exit code")


def run(application, output, size="1024x768"):
    output.mkdir(parents=True, exist_ok=True)
    for old in output.iterdir():
        old.unlink()
    # Without effects, so that only speech and clip are heard.
    desk = Desktop(application, tuple(map(int, size.split("x"))), effects=False, lists=WORDS, quizzes=QUIZ, settings=("Intro", ""))
    # The other introduction came last.
    (desk.application / "Lintro").write_bytes(b"0")
    taken = []

    def take(name):
        time.sleep(0.6)
        taken.append(name)
        desk.picture(output / ("%02d-%s.png" % (len(taken), name)))

    with desk:
        desk.film(output / "evening.mp4")
        try:
            for part in (introduction, perfect_game, game_with_mistakes, quiz_with_mistakes, going_home):
                begin = time.monotonic()
                part(desk, take)
                print("passed: %s, %.0f s" % (part.__name__.replace("_", " "), time.monotonic() - begin), flush=True)
            return 0
        except Exception as failure:  # pylint: disable=broad-except
            print("FAILED: %s: %s" % (part.__name__.replace("_", " "), failure), flush=True)
            take("failure")
            return 1
        finally:
            desk.stop_film()
            (output / "trace.txt").write_text("\n".join(desk.lines()), encoding="utf-8")


if __name__ == "__main__":
    sys.exit(run(Path(sys.argv[1]), Path(sys.argv[2]), *sys.argv[3:]))
