#include "game/frmSpell1.h"

#include "ui_frmSpell1.h"

#include "game/Judging.h"
#include "game/ScorePanel.h"
#include "platform/Services.h"
#include "platform/system/Chance.h"
#include "shell/SharedState.h"
#include "stage/Praise.h"
#include "stage/SpeechLines.h"
#include "stage/Waits.h"

namespace tumblewick {

using platform::The;

namespace {

// After every later question than the first the answers come up this soon behind the speech.
constexpr int kLaterRevealMilliseconds = 100;

} // namespace

void frmSpell1::cmdGo_Click()
{
    // Without an answer there is nothing to judge.
    if (IsQuiz() && SelectedAnswer() == 0) {
        m_ui->lvwAnswer->setFocus();
        return;
    }
    EnableAnswering(false);
    RequestEvents = 0;
    if (IsSpelling())
        JudgeSpelling();
    else if (IsQuiz())
        JudgeQuiz();
    m_ui->txtAnswer->setText(QString());
}

void frmSpell1::JudgeSpelling()
{
    if (IsSpelledRight(m_ui->txtAnswer->text(), CorrectWord)) {
        const int praise = CheerAndPraise();
        if (IsCheckpoint(State().Players, m_turns, praise))
            ReadOutScores();
        return AskSpellingQuestion();
    }
    if (State().NumPlayers != 1) {
        StageRequest = Speaker()->Speak(SorryLine(PlayerName()));
        SpellOutAnswer(CorrectWord);
        ShowScores();
        WaitRequest(StageRequest);
        return AskSpellingQuestion();
    }
    // A lone player tries again, as often as it takes; no counter changes.
    Speaker()->Speak(TryAgainLine(PlayerName()));
    Speaker()->Play(QStringLiteral("Read"));
    Speaker()->WordBalloon().SetVisible(false);
    Speaker()->Speak(QuestionAgainLine(SplitSpellingRecord()));
    EnableAnswering(true);
}

void frmSpell1::JudgeQuiz()
{
    m_ui->lvwAnswer->setFocus();
    if (SelectedAnswer() == m_quiz.correct) {
        const int praise = CheerAndPraise();
        if (IsCheckpoint(State().Players, m_turns, praise))
            ReadOutScores();
    } else {
        Speaker()->Speak(SorryLine(PlayerName()));
        StageRequest = Speaker()->Speak(CorrectAnswerLine(m_quiz.Answer(m_quiz.correct)));
        ShowScores();
        The().chance.Randomize(); // the number is not used
        WaitRequest(StageRequest);
    }
    AskQuizQuestion();
    Timer1->SetInterval(kLaterRevealMilliseconds);
}

// The number of the selected answer, 0 when none is.
int frmSpell1::SelectedAnswer() const
{
    const QList<QListWidgetItem *> selected = m_ui->lvwAnswer->selectedItems();
    return selected.isEmpty() ? 0 : m_ui->lvwAnswer->row(selected.first()) + 1;
}

// All three cheer at once, the point is given, and the speaker praises. Gives the number of the praise.
int frmSpell1::CheerAndPraise()
{
    const std::array<platform::RequestReference *, kCharacterCount> requests = { &StageRequest,
                                                                                 &StageRequest2,
                                                                                 &StageRequest3 };
    for (const Cheer &cheer : CheeringSetFor(Kind(), DrawCheeringSet(The().chance)))
        *requests[cheer.who] = State().Characters[cheer.who]->Play(cheer.animation);
    State().Players.AddOne(m_turns.CurrentPlayer, Players::kCorrect);
    ShowScores();
    const int praise = IsSpelling() ? DrawSpellingPraise(The().chance, LastPraise)
                                    : DrawQuizPraise(The().chance, LastPraise);
    WaitRequests({ &StageRequest, &StageRequest2, &StageRequest3 });
    StageRequest = Speaker()->Speak(PraiseLine(State().PraisePhrases[praise - 1], PlayerName()));
    WaitRequest(StageRequest);
    return praise;
}

// Peedy does all the speaking, whoever asked.
void frmSpell1::ReadOutScores()
{
    auto &peedy = State().Characters[kPeedy];
    StageRequest = peedy->Speak(IsSpelling() ? QStringLiteral("Going well! let me just check your score")
                                             : QStringLiteral("Going well! Let me just check your score"));
    // A quiz does not wait here: wanted.
    if (IsSpelling())
        WaitRequest(StageRequest);
    StageRequest = peedy->Play(QStringLiteral("Process"));
    WaitRequest(StageRequest);
    for (int rank = 0; rank < State().NumPlayers; ++rank) {
        State().SecondRequest = peedy->Speak(ScoreReadOutLine(State().Players, PlayerAtRank(rank)));
        WaitRequest(State().SecondRequest);
    }
}

void frmSpell1::ShowScores()
{
    QString text = ScoreTextForOne(State().Players);
    if (State().NumPlayers > 1) {
        m_rankOrder = Ranked(State().Players);
        text = ScoreTextFor(State().Players, m_rankOrder);
    }
    ShowInPanel(*m_ui->txtScore, text, ScoreFontSize(State().NumPlayers));
}

} // namespace tumblewick
