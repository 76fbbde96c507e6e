#include "game/frmSpell1.h"

#include "ui_frmSpell1.h"

#include "platform/Services.h"
#include "platform/media/MediaPlayer.h"
#include "platform/system/Chance.h"
#include "platform/system/Events.h"
#include "shell/SharedState.h"
#include "stage/Fireworks.h"
#include "stage/SpeechLines.h"
#include "stage/Waits.h"

namespace tumblewick {

using platform::The;

void frmSpell1::EndList()
{
    The().chance.Randomize();
    EndingPick = platform::Drawn(The().chance, kEndingCount, 1);
    const Ending &ending = EndingFor(Kind(), EndingPick);
    // The first ending of a quiz keeps the number of the game before: wanted.
    if (ending.number != 0)
        EndingNumber = ending.number;
    Perform(ending.steps);
}

void frmSpell1::Perform(std::span<const EndingStep> steps)
{
    for (const EndingStep &step : steps) {
        const bool forSeveral = step.textForSeveral && State().NumPlayers != 1;
        const QString text = QString::fromLatin1(forSeveral ? step.textForSeveral : step.text);
        switch (step.act) {
        case EndingStep::Speak:
            StageRequest = Performer(step)->Speak(text);
            break;
        case EndingStep::Play:
            StageRequest = Performer(step)->Play(text);
            break;
        case EndingStep::FinishList:
            FinishList();
            break;
        case EndingStep::TakePerch:
            MoveToPerch();
            break;
        case EndingStep::HandleEvents:
            The().events.PumpPending();
            break;
        }
        if (step.waits)
            WaitRequest(StageRequest);
    }
}

platform::CharacterReference frmSpell1::Performer(const EndingStep &step) const
{
    return step.bySpeaker ? Speaker() : State().Characters[step.who];
}

// The buttons stay as they are, so that whatever a live one does runs inside the waits.
void frmSpell1::FinishList()
{
    bool perfect = false;
    for (int rank = 0; rank < State().NumPlayers; ++rank) {
        const int player = PlayerAtRank(rank);
        State().SecondRequest = State().Characters[kMerlin]->Speak(FinalScoreLine(State().Players, player));
        WaitRequest(State().SecondRequest);
        // The texts are compared, so that 0 out of 0 is perfect too.
        if (State().Players.Text(player, Players::kCorrect) == State().Players.Text(player, Players::kAsked))
            perfect = true;
    }
    if (perfect) {
        Perform(PerfectScoreChatter(EndingNumber));
        PlayFireworks();
    } else {
        State().CurrentRequest = State().Characters[kGenie]->Speak(QStringLiteral(
            "If you want to play this list again just click Play Again, or you can play a new game."));
        WaitRequest(State().CurrentRequest);
    }
    m_ui->cmdNew->setEnabled(true);
    m_ui->cmdAgain->setEnabled(true);
}

void frmSpell1::PlayFireworks()
{
    // Else the focus would wander to the last button hidden, and Enter would open the help at the end.
    if (QWidget *focus = m_ui->cmdGo->window()->focusWidget())
        focus->clearFocus();
    for (QWidget *piece : std::initializer_list<QWidget *>{ m_ui->fmeQuiz, m_ui->txtScore, m_ui->Shape2,
                                                            m_ui->Shape3, m_ui->Shape1, m_ui->txtAnswer })
        piece->setVisible(false);
    ShowButtons(false);

    MoveToPerch();
    // The clip goes on behind the last of these: wanted.
    MediaPlayer1->ZOrder(0);
    MediaPlayer1->SetVisible(true);
    MediaPlayer1->Play();
    MediaPlayer1->SetVisible(false);
    ReactToFireworks(StageRequest, StageRequest2, StageRequest3);
    // Peedy may still be at it; nobody waits for him or for the end of the clip.
    WaitRequests({ &StageRequest, &StageRequest2 });
    LeavePerch(StageY, StageRequest);
    StageRequest = State().Characters[kPeedy]->Speak(QStringLiteral("That was spectacular !"));
    WaitRequest(StageRequest);
    State().CurrentRequest = State().Characters[kGenie]->Play(QStringLiteral("Acknowledge"));
    State().CurrentRequest = State().Characters[kGenie]->Speak(
        QStringLiteral("Sure was. If you want to play this list again just click Play Again, or you can play "
                       "a new game."));
    WaitRequest(State().CurrentRequest);

    // What belongs to answering stays away until the next game.
    m_ui->cmdNew->setEnabled(true);
    m_ui->cmdAgain->setEnabled(true);
    for (QWidget *piece :
         std::initializer_list<QWidget *>{ m_ui->txtScore, m_ui->Shape1, m_ui->Shape2, m_ui->Shape3 })
        piece->setVisible(true);
    ShowButtons(true);
}

void frmSpell1::MoveToPerch()
{
    TakePerch(StageY, m_ui->txtScore->y() - m_ui->txtScore->height() + 60, StageRequest);
}

// All of them, so that buttons come back which the game had hidden before: wanted.
void frmSpell1::ShowButtons(bool shown)
{
    for (QPushButton *button :
         m_ui->cmdGo->parentWidget()->findChildren<QPushButton *>(QString(), Qt::FindDirectChildrenOnly))
        button->setVisible(shown);
}

} // namespace tumblewick
