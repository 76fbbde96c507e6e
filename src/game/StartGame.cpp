#include "game/frmSpell1.h"

#include "ui_frmSpell1.h"

#include "platform/Retry.h"
#include "platform/Services.h"
#include "platform/media/MediaPlayer.h"
#include "platform/system/Process.h"
#include "setup/frmNumPlayers1.h"
#include "shell/ErrorBoxes.h"
#include "shell/SharedState.h"
#include "stage/Characters.h"
#include "stage/Praise.h"
#include "stage/SpeechLines.h"
#include "stage/Waits.h"

namespace tumblewick {

using platform::The;

namespace {

// The answers of the first question come up this long after it has begun to be asked, at the latest.
constexpr int kFirstRevealMilliseconds = 6000;

struct Place {
    int x;
    int belowStage; // units below StageY
};

// clang-format off
constexpr Place kPlacesAt800[kCharacterCount] = { { 10, -20 }, { 130, 10 }, { 250, -20 } };
constexpr Place kPlaces[kCharacterCount]      = { { 50,  20 }, { 200, 60 }, { 350,  20 } };
// clang-format on

} // namespace

void frmSpell1::StartGame()
{
    try {
        if (!OpenGame())
            return;
        if (Questions.TooFewFor(State().NumPlayers))
            RefuseTooManyPlayers();
        // Also after a refusal: no question is asked then, because the game has been abandoned.
        m_turns.Begin(Questions.LineCount(), State().NumPlayers);
        BeginAsking();
        GameAbandoned = false;
    } catch (const platform::Error &error) {
        ErrorReport(error);
    }
}

// Runs one statement of the opening. A lost connection shows itself as 91: then the characters are taken from
// this screen's own control and the statement is run again.
void frmSpell1::Do(const std::function<void()> &statement)
{
    platform::Retry(platform::kObjectNotSet, statement, [this] { ConnectCharacters(m_agent1); });
}

// From the empty screen to the list in memory. False when there is no sound: the screen has gone then.
bool frmSpell1::OpenGame()
{
    m_ui->cmdExit->setFocus();
    m_ui->txtScore->setPlainText(QString());
    Do([this] {
        if (!State().AgentControl->Connected())
            ConnectCharacters(m_agent1);
    });
    if (IsQuiz())
        m_ui->txtAnswer->setText(QString());
    MediaPlayer1->SetFileName(The().process.ApplicationFolder() + QStringLiteral("\\fireworks.mpg"));
    MediaPlayer1->SetVisible(false);
    m_ui->cmdNew->setEnabled(false);
    State().PraisePhrases = PraisePhrases();
    m_ui->lblListName->setText(State().ListName);
    Do([this] {
        StageY = m_ui->txtScore->y() - m_ui->txtScore->height() - State().Characters[kMerlin]->Height() / 3;
    });
    if (State().NumPlayers > 1)
        m_ui->cmdHint->setVisible(false);

    Do([] { State().Characters[kMerlin]->Show(true); });
    Do([] { State().Characters[kMerlin]->Play(QStringLiteral("Pleased")); });
    MoveToPlace(kMerlin);
    Do([] { State().Characters[kGenie]->Show(true); });
    MoveToPlace(kGenie);
    Do([] { State().Characters[kPeedy]->Show(true); });
    MoveToPlace(kPeedy);

    Do([] { State().Characters[kMerlin]->Play(QStringLiteral("GetAttention")); });
    Do([this] { StageRequest = State().Characters[kMerlin]->Speak(OpeningLine(State().ListName)); });
    if (!WaitWithSoundCheck())
        return false;
    Do([] { State().Characters[kMerlin]->Play(QStringLiteral("Alert")); });
    Do([this] { StageRequest = State().Characters[kMerlin]->Speak(QStringLiteral("Good luck!")); });
    // The list is read while that is being said, so that no pause is heard.
    Do([this] { Questions.Read(The().files, State().ListPath); });
    return WaitWithSoundCheck();
}

void frmSpell1::MoveToPlace(CharacterIndex who)
{
    const Place &place = State().DisplayWidth == 800 ? kPlacesAt800[who] : kPlaces[who];
    Do([&] { StageRequest = State().Characters[who]->MoveTo(place.x, StageY + place.belowStage); });
    Do([this] { WaitRequest(StageRequest); });
}

bool frmSpell1::WaitWithSoundCheck()
{
    bool heard = false;
    Do([&] { heard = WaitRequestSound(StageRequest, *this); });
    return heard;
}

void frmSpell1::RefuseTooManyPlayers()
{
    Do([this] {
        StageRequest = State().Characters[kMerlin]->Speak(QStringLiteral(
            "Hold it! We have a problem. There are more players than we have questions in the list."));
    });
    Do([this] { WaitRequest(StageRequest); });
    Do([this] {
        StageRequest = State().Characters[kGenie]->Speak(
            QStringLiteral("Select a new list or select fewer players.  You could also create a larger list "
                           "and then start again."));
    });
    Do([this] { WaitRequest(StageRequest); });
    Do([this] { StopCharacters(); });
    Do([this] { ShowScreen(frmNumPlayers1::Shared(), *this); });
}

void frmSpell1::StopCharacters()
{
    for (const auto &character : State().Characters)
        character->StopAll();
    GameAbandoned = true;
}

void frmSpell1::BeginAsking()
{
    m_ui->txtScore->setTextColor(Qt::white);
    if (IsSpelling()) {
        m_ui->txtAnswer->setVisible(true);
        if (!GameAbandoned)
            Do([this] { AskSpellingQuestion(); });
    } else {
        m_ui->fmeQuiz->setVisible(true);
        Timer1->SetInterval(kFirstRevealMilliseconds);
        if (!GameAbandoned)
            Do([this] { AskQuizQuestion(); });
    }
}

} // namespace tumblewick
