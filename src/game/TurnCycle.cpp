#include "game/frmSpell1.h"

#include "ui_frmSpell1.h"

#include "game/Hints.h"
#include "lists/SpellingLine.h"
#include "platform/Services.h"
#include "platform/system/Chance.h"
#include "platform/system/Clock.h"
#include "platform/system/Events.h"
#include "platform/system/Process.h"
#include "shell/HelpTopics.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "stage/SpeechLines.h"
#include "stage/Waits.h"

#include <chrono>
#include <cmath>

namespace tumblewick {

using platform::The;

namespace {

// The answers come up this many seconds into a long question.
constexpr int kRevealSeconds = 4;
// How often the wait for a question looks at the clock when nothing else wakes it, until they are there.
constexpr std::chrono::milliseconds kRevealCheck{ 250 };

} // namespace

void frmSpell1::AskSpellingQuestion()
{
    m_ui->txtAnswer->setText(QString());
    m_ui->txtAnswer->setFocus();
    if (m_turns.ListDone())
        return EndList();
    NextTurn();
    Speaker()->Play(QStringLiteral("Read"));
    const QString line = FirstQuestionLine(PlayerName(), SplitSpellingRecord());
    CountAsAsked();
    // Not even the stars that stand for the word are to be seen.
    Speaker()->WordBalloon().SetVisible(false);
    Speaker()->Speak(line);
    Speaker()->WordBalloon().SetVisible(false);
    EnableAnswering(true);
}

void frmSpell1::AskQuizQuestion()
{
    m_ui->lvwAnswer->setVisible(false);
    if (m_turns.ListDone())
        return EndList();
    NextTurn();
    Speaker()->Play(QStringLiteral("Read"));
    m_ui->lvwAnswer->clear();
    ParseQuizRecord();
    CountAsAsked();
    StageRequest = Speaker()->Speak(QuizQuestionLine(PlayerName(), m_quiz.question));
    WaitAndRevealAnswers();
    m_ui->cmdHint->setVisible(false);
    m_ui->cmdPass->setVisible(false);
    m_ui->cmdReplay->setEnabled(true);
    m_ui->cmdGo->setEnabled(true);
    m_ui->cmdGo->setFocus();
}

// Draws the next question and gives it to the next speaker and the next player.
void frmSpell1::NextTurn()
{
    CurrentQuestion = Questions.Draw(The().chance);
    m_turns.Advance(State().NumPlayers);
    HintLetters = 0;
}

// The question counts from here on, whatever the player then does.
void frmSpell1::CountAsAsked()
{
    Questions.MarkUsed(CurrentQuestion);
    m_turns.QuestionsAsked += 1;
    State().Players.AddOne(m_turns.CurrentPlayer, Players::kAsked);
}

void frmSpell1::EnableAnswering(bool enabled)
{
    for (QPushButton *button : { m_ui->cmdGo, m_ui->cmdHint, m_ui->cmdPass, m_ui->cmdReplay })
        button->setEnabled(enabled);
}

// A plain wait for the question, with the answers coming up when it is a long one. Past midnight the clock
// reads less than the start, and only Timer1 brings them up.
void frmSpell1::WaitAndRevealAnswers()
{
    std::unique_ptr<platform::PendingCall> wakeUp;
    const std::function<void()> wakeAgain = [&] {
        if (m_ui->lvwAnswer->isHidden())
            wakeUp = The().events.After(kRevealCheck, wakeAgain);
    };
    wakeAgain();
    const double start = std::nearbyint(The().clock.SecondsSinceMidnight());
    while (StageRequest->Status() != platform::kRequestDone) {
        if (The().clock.SecondsSinceMidnight() > start + kRevealSeconds && m_ui->lvwAnswer->isHidden())
            m_ui->lvwAnswer->setVisible(true);
        The().events.Pump();
    }
}

// Sets CorrectWord and gives the pronunciation.
QString frmSpell1::SplitSpellingRecord()
{
    const SpellingLine line = SpellingLine::ForPlay(Questions.Line(CurrentQuestion));
    CorrectWord = line.word;
    return line.pronunciation;
}

void frmSpell1::ParseQuizRecord()
{
    m_quiz = QuizLine::ForPlay(Questions.Line(CurrentQuestion));
    for (std::size_t index = 0; index < m_quiz.answers.size(); ++index) {
        const QIcon badge(QStringLiteral(":/answers/%1.svg").arg(index + 1));
        new QListWidgetItem(badge, m_quiz.answers[index], m_ui->lvwAnswer); // owned by the list
    }
}

void frmSpell1::SpellOutAnswer(const QString &word)
{
    Speaker()->Speak(CorrectSpellingLine(word));
    // The word stays in view until the next one is spelled out; the list's name does not come back before the
    // next game.
    m_ui->lblListName->setText(word);
    State().CurrentRequest = Speaker()->Speak(SpelledOutLine(word));
    WaitRequest(State().CurrentRequest);
}

// Disables nothing, unlike cmdGo: wanted.
void frmSpell1::cmdPass_Click()
{
    State().CurrentRequest = Speaker()->Speak(PassedLine(PlayerName()));
    SpellOutAnswer(CorrectWord);
    ShowScores();
    WaitRequest(State().CurrentRequest);
    AskSpellingQuestion();
}

void frmSpell1::cmdReplay_Click()
{
    if (!IsSpelling()) {
        Speaker()->Speak(m_quiz.question);
        return;
    }
    Speaker()->Speak(QuestionAgainLine(SplitSpellingRecord()));
    m_ui->txtAnswer->setFocus();
}

void frmSpell1::cmdHint_Click()
{
    State().Players.AddOne(m_turns.CurrentPlayer, Players::kHints);
    HintLetters = NextHintLetters(HintLetters, CorrectWord);
    Speaker()->Speak(HintLine(HintLetters, CorrectWord));
    m_ui->txtAnswer->setFocus();
}

void frmSpell1::cmdNew_Click()
{
    ShowScreen(frmMenu1::Shared(), *this);
}

// Hints taken stay counted.
void frmSpell1::cmdAgain_Click()
{
    m_turns.QuestionsAsked = 0;
    m_turns.QuestionTotal = 0;
    for (int player = 0; player < State().NumPlayers; ++player) {
        State().Players.SetText(player, Players::kCorrect, QStringLiteral("0"));
        State().Players.SetText(player, Players::kAsked, QStringLiteral("0"));
    }
    StartGame();
    m_ui->cmdAgain->setEnabled(false);
    m_ui->cmdNew->setEnabled(false);
}

void frmSpell1::cmdExit_Click()
{
    auto &characters = State().Characters;
    characters[kGenie]->Show();
    characters[kPeedy]->Show();
    for (const auto &character : characters)
        character->StopAll();
    StageRequest = characters[kMerlin]->Speak(QStringLiteral("Sorry you have to go. Bye now."));
    WaitRequest(StageRequest);
    characters[kMerlin]->Play(QStringLiteral("Wave"));
    characters[kGenie]->Play(QStringLiteral("Wave"));
    StageRequest = characters[kPeedy]->Play(QStringLiteral("Wave"));
    WaitRequest(StageRequest);
    StageRequest = characters[kPeedy]->Speak(QStringLiteral("See you next time."));
    WaitRequest(StageRequest);
    StageRequest = nullptr;
    characters.fill(nullptr);
    CloseHelp();
    The().process.End();
}

} // namespace tumblewick
